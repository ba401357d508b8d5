// Runs the built vel and says what came out.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include <gtest/gtest.h>

namespace vel_test {

struct outcome {
    int status; // 128 + signal when killed
    std::string out;
    std::string err;
};

inline std::string read_file(const std::string &path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

inline void write_file(const std::string &path, const std::string &text) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream(path, std::ios::binary) << text;
}

inline std::string shell_word(const std::string &word) {
    std::string result = "'";
    for (char c : word) result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return result + "'";
}

inline std::string repeated(const std::string &text, size_t times) {
    std::string result;
    result.reserve(text.size() * times);
    while (times-- > 0) result += text;
    return result;
}

// A folder of its own for each test, and the tool with nothing of the caller's environment.
class vel_tool_test : public testing::Test {
protected:
    void SetUp() override {
        std::string name = testing::TempDir() + "vel.XXXXXX";
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        folder_ = name;
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    std::string in_folder(const std::string &name) const { return folder_ + "/" + name; }

    // A shell command in which "vel" is the tool; `variables` are words like NAME=value.
    outcome shell(const std::string &command, const std::vector<std::string> &variables = {}) {
        std::string script =
            "vel() { env -i LC_ALL=C.UTF-8 CORVANEDIR=" + shell_word(VELS_TEST_DATA_ROOT);
        for (const std::string &variable : variables) script += " " + shell_word(variable);
        script += " " VELS_VEL_PATH " \"$@\"; }\n" + command;
        write_file(in_folder("script"), script);
        std::string out = in_folder("stdout"), err = in_folder("stderr");
        int raw = system(("sh " + shell_word(in_folder("script")) + " > " + shell_word(out) +
                          " 2> " + shell_word(err) + " < /dev/null")
                             .c_str());
        int status = WIFEXITED(raw) ? WEXITSTATUS(raw) : 128 + WTERMSIG(raw);
        return {status, read_file(out), read_file(err)};
    }

    outcome vel(const std::vector<std::string> &arguments,
                const std::vector<std::string> &variables = {}) {
        std::string command = "vel";
        for (const std::string &word : arguments) command += " " + shell_word(word);
        return shell(command, variables);
    }

    // The same with `text` in a file, whose path is the last argument.
    outcome vel_on(const std::string &text, std::vector<std::string> arguments) {
        write_file(in_folder("text"), text);
        arguments.push_back(in_folder("text"));
        return vel(arguments);
    }

private:
    std::string folder_;
};

} // namespace vel_test

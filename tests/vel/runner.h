// Runs the built vel and says what came out.
#pragma once

#include <cstdlib>
#include <pty.h>
#include <span>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include <gtest/gtest.h>

#include "support/scratch.h"

namespace vel_test {

struct outcome {
    int status; // 128 + signal when killed
    std::string out;
    std::string err;
};

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

// Every part has to stand in the text.
inline void expect_parts(const std::string &text, const std::vector<std::string> &parts) {
    for (const std::string &part : parts)
        EXPECT_NE(text.find(part), text.npos) << part << " in " << text;
}

// The exit status of a command, and what it says on standard error.
struct telling {
    int status;
    std::vector<std::string> arguments;
    std::vector<std::string> parts;
};

// A folder of its own for each test, and the tool with nothing of the caller's environment.
class vel_tool_test : public testing::Test {
protected:
    std::string in_folder(const std::string &name) const { return (folder_ / name).string(); }

    std::string put(const std::string &name, const std::string &text) const {
        return folder_.put(name, text).string();
    }

    // A shell command in which "vel" is the tool; `variables` are words like NAME=value.
    outcome shell(const std::string &command, const std::vector<std::string> &variables = {}) {
        std::string out = in_folder("stdout"), err = in_folder("stderr");
        int raw = system(("sh " + shell_word(script(command, variables)) + " > " + shell_word(out) +
                          " 2> " + shell_word(err) + " < /dev/null")
                             .c_str());
        int status = WIFEXITED(raw) ? WEXITSTATUS(raw) : 128 + WTERMSIG(raw);
        return {status, content_of(out), content_of(err)};
    }

    outcome vel(const std::vector<std::string> &arguments,
                const std::vector<std::string> &variables = {}) {
        std::string command = "vel";
        for (const std::string &word : arguments) command += " " + shell_word(word);
        return shell(command, variables);
    }

    // The same with `text` in a file, whose path is the last argument.
    outcome vel_on(const std::string &text, std::vector<std::string> arguments) {
        arguments.push_back(put("text", text));
        return vel(arguments);
    }

    // `before` stands in front of the arguments of each.
    void expect_told(const std::vector<std::string> &before, std::span<const telling> cases) {
        for (const telling &row : cases) {
            std::vector<std::string> arguments = before;
            arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
            outcome got = vel(arguments);
            EXPECT_EQ(got.status, row.status) << testing::PrintToString(arguments) << got.out;
            expect_parts(got.err, row.parts);
        }
    }

    // What a terminal shows of a command; it has to succeed.
    std::string on_terminal(const std::string &command,
                            const std::vector<std::string> &variables = {}) {
        std::string path = script(command, variables), text;
        int primary = -1, status = -1;
        pid_t child = forkpty(&primary, nullptr, nullptr, nullptr);
        if (child == 0) {
            execl("/bin/sh", "sh", path.c_str(), nullptr);
            _exit(127);
        }
        char block[4096];
        for (ssize_t got; (got = read(primary, block, sizeof block)) > 0;)
            text.append(block, static_cast<size_t>(got));
        close(primary);
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0) << text;
        return text;
    }

private:
    std::string script(const std::string &command, const std::vector<std::string> &variables) {
        std::string text =
            "vel() { env -i LC_ALL=C.UTF-8 CORVANEDIR=" + shell_word(VELS_TEST_DATA_ROOT);
        for (const std::string &variable : variables) text += " " + shell_word(variable);
        return put("script", text + " " VELS_VEL_PATH " \"$@\"; }\n" + command);
    }

    scratch_directory folder_;
};

} // namespace vel_test

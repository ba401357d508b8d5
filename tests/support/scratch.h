// A directory of the file system that lives as long as the test. A child process that a death test
// starts finds the directory of its parent.
#pragma once

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace vel_test {

class scratch_directory {
public:
    scratch_directory() {
        const char *parents = getenv(variable);
        if (parents) path_ = parents;
        if (parents) return;
        std::string name = (std::filesystem::temp_directory_path() / "vels-XXXXXX").string();
        if (!mkdtemp(name.data())) abort();
        path_ = name;
        setenv(variable, name.c_str(), 1);
        owned_ = true;
    }
    ~scratch_directory() {
        if (!owned_) return;
        unsetenv(variable);
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    scratch_directory(const scratch_directory &) = delete;
    scratch_directory &operator=(const scratch_directory &) = delete;

    const std::string &path() const { return path_; }
    std::string read(const std::string &name) const {
        std::ifstream file(path_ + "/" + name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    void write(const std::string &name, const std::string &text) const {
        std::filesystem::path file = path_ + "/" + name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << text;
    }

private:
    static constexpr char variable[] = "VELS_TEST_SCRATCH";

    std::string path_;
    bool owned_ = false;
};

} // namespace vel_test

// A directory of the file system that lives as long as the test. A child process that a death test
// starts finds the directory of its parent.
#pragma once

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <string_view>

namespace vel_test {

inline std::string content_of(const std::filesystem::path &path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

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

    std::string path() const { return path_.string(); }
    std::filesystem::path operator/(const std::filesystem::path &name) const {
        return path_ / name;
    }

    // Writes a file, with the directories above it.
    std::filesystem::path put(const std::filesystem::path &name, std::string_view content) const {
        std::filesystem::create_directories((path_ / name).parent_path());
        std::ofstream(path_ / name, std::ios::binary) << content;
        return path_ / name;
    }

    // Every file beneath a directory in it, hidden ones too, with its content.
    std::map<std::string, std::string> files(const std::filesystem::path &below = "") const {
        std::map<std::string, std::string> files;
        for (const auto &entry : std::filesystem::recursive_directory_iterator(path_ / below))
            if (entry.is_regular_file())
                files[std::filesystem::relative(entry.path(), path_ / below).generic_string()] =
                    content_of(entry.path());
        return files;
    }

private:
    static constexpr char variable[] = "VELS_TEST_SCRATCH";

    std::filesystem::path path_;
    bool owned_ = false;
};

} // namespace vel_test

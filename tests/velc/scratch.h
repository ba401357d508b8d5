#pragma once

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>

#include <gtest/gtest.h>

// A directory of its own for one test, gone again at its end.
class scratch {
public:
    scratch() {
        const auto *test = testing::UnitTest::GetInstance()->current_test_info();
        path_ = std::filesystem::temp_directory_path() /
                (std::string("velc-") + test->test_suite_name() + "-" + test->name());
        std::filesystem::remove_all(path_);
        std::filesystem::create_directories(path_);
    }
    scratch(const scratch &) = delete;
    scratch &operator=(const scratch &) = delete;
    ~scratch() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::filesystem::path &path() const { return path_; }
    std::filesystem::path operator/(const std::filesystem::path &name) const {
        return path_ / name;
    }

    // Writes a file, with the directories above it.
    std::filesystem::path put(const std::filesystem::path &name, std::string_view content) const {
        std::filesystem::create_directories((path_ / name).parent_path());
        std::ofstream(path_ / name, std::ios::binary) << content;
        return path_ / name;
    }

private:
    std::filesystem::path path_;
};

inline std::string content_of(const std::filesystem::path &path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

// Every file beneath a directory, hidden ones too, with its content.
inline std::map<std::string, std::string> tree_of(const std::filesystem::path &root) {
    std::map<std::string, std::string> files;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(root))
        if (entry.is_regular_file())
            files[std::filesystem::relative(entry.path(), root).generic_string()] =
                content_of(entry.path());
    return files;
}

// Runs velc in this process, and says what it complains about.
#pragma once

#include <exception>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "velc/commands.h"

namespace vel_test {

struct outcome {
    int code;
    std::string out, err;
};

inline outcome run_velc(const std::vector<std::string> &words) {
    std::vector<const char *> argv = {"velc"};
    for (const std::string &word : words) argv.push_back(word.c_str());
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const int code = velc::run(static_cast<int>(argv.size()), argv.data());
    std::string out = testing::internal::GetCapturedStdout();
    return {code, std::move(out), testing::internal::GetCapturedStderr()};
}

// What it throws has all of these in its message.
template <typename Action>
void expect_complaint(const std::vector<std::string> &parts, Action action) {
    try {
        action();
        ADD_FAILURE() << "not found: " << testing::PrintToString(parts);
    } catch (const std::exception &error) {
        for (const std::string &part : parts)
            EXPECT_NE(std::string(error.what()).find(part), std::string::npos) << error.what();
    }
}

} // namespace vel_test

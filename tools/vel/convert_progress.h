// How far a long conversion is, for whoever waits at the terminal.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vel_tool {

class convert_progress {
public:
    // `files` as on the command line. Unless wanted, nothing is ever shown.
    convert_progress(const std::vector<std::string> &files, bool is_wanted);
    convert_progress(const convert_progress &) = delete;
    convert_progress &operator=(const convert_progress &) = delete;
    ~convert_progress() { clear(); }

    void add(size_t bytes);
    // Makes room for other messages.
    void clear();

private:
    using clock = std::chrono::steady_clock;
    void show(clock::time_point now);

    std::optional<uint64_t> total_; // known when all files are regular
    bool is_wanted_;
    bool is_shown_ = false;
    uint64_t done_ = 0;
    clock::time_point begin_, next_;
};

} // namespace vel_tool

// Telling about invalid sequences while text streams by.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "vel/invocation.h"

namespace vel_tool {

// Counts the invalid sequences of one file, and reports the first of them on standard error.
class invalid_report {
public:
    invalid_report(const invocation &run, std::string file, std::string codeset, uint64_t most)
        : run_(run), file_(std::move(file)), codeset_(std::move(codeset)), most_(most) {}

    void add(std::string_view text, uint64_t offset);
    // The same in a line, counted from 1; the offset is that in the file.
    void add(std::string_view text, uint64_t offset, uint64_t line);
    // Tells how many were not reported one by one.
    void finish() const;
    uint64_t count() const { return count_; }

private:
    void tell(const std::string &place, std::string_view text);

    const invocation &run_;
    std::string file_;
    std::string codeset_;
    uint64_t most_;
    uint64_t count_ = 0;
};

struct report_options {
    uint64_t list = 10;
    bool all = false;

    uint64_t most() const { return all ? UINT64_MAX : list; }
};

void add_report_options(CLI::App *command, report_options &options);

} // namespace vel_tool

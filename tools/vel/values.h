// The values that a command works on: those of its command line, or else the lines of standard
// input.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "vel/code_set.h"
#include "vel/input.h"
#include "vel/invocation.h"

namespace vel_tool {

constexpr char values_help[] = "; lines of standard input without any";

class value_source {
public:
    // `newline` ends a line of standard input.
    value_source(const std::vector<std::string> &given, std::string newline);

    bool next(std::string &value);

private:
    bool next_line(std::string &line);

    const std::vector<std::string> &given_;
    size_t used_ = 0;
    std::string newline_;
    std::optional<input> lines_;
    std::string buffer_;
    bool at_end_ = false;
};

// Calls `work` with every value. A failure is told, behind the results before it, and does not keep
// the others from their turn.
// Returns the exit status.
int for_each_value(invocation &run, value_source &values,
                   const std::function<void(const std::string &)> &work);

// Numbers as they are written in C: 42, -0x2A; 1234.5, 1e-3, inf. Anything else is a failure.
int64_t integer_value(const std::string &text, int64_t least, int64_t most);
double double_value(const std::string &text);

// A text with zero bytes behind it that end it in every code set, even when its last character is
// cut short.
std::string terminated(std::string_view text);

} // namespace vel_tool

// Reading text line by line, with lines of any length.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "vel/code_set.h"
#include "vel/input.h"

namespace vel_tool {

class line_reader {
public:
    line_reader(input &source, newline_search newline) : source_(source), newline_(newline) {}

    // The next line without its newline, which the last one need not have. It is there until the
    // next call.
    bool next(std::string_view &line);

    uint64_t number() const { return number_; } // of the line that was read last, from 1
    uint64_t offset() const { return offset_; } // of its first byte in the stream, from 0

private:
    void read_more();

    input &source_;
    newline_search newline_;
    std::vector<char> buffer_;
    size_t begin_ = 0, end_ = 0; // of what was read and not given yet
    bool at_end_ = false;
    uint64_t number_ = 0, offset_ = 0, next_offset_ = 0;
};

} // namespace vel_tool

// Text of a charmap as symbolic names, and names as text.
#pragma once

#include <string>
#include <string_view>

#include "vel/charmap_handle.h"
#include "vel/output.h"

namespace vel_tool {

// Where text comes from and what it is measured by, for messages.
struct symbols_source {
    vel_charmap *charmap;
    std::string codeset;
    std::string file; // empty for text of the command line
    output &out;
};

// Each takes text that may be the beginning of more, unless it is at the end, and returns how many
// bytes of it are done.

// Writes a name for each character, and a line for each line.
class name_writer {
public:
    // With `all`, a line for each character with all its names, behind its bytes.
    name_writer(const symbols_source &source, bool all);
    size_t take(std::string_view text, bool at_end);

private:
    size_t line_bytes(std::string_view text) const;
    void write_names(std::string_view characters);
    void write_list(std::string_view characters);
    [[noreturn]] void refuse(std::string_view rest, bool is_cut_off) const;

    const symbols_source &source_;
    bool all_;
    std::string newline_;
    uint64_t offset_ = 0;
    bool in_line_ = false;
};

// Writes a character for each name. Blanks and line ends between names are passed over.
class name_reader {
public:
    explicit name_reader(const symbols_source &source);
    size_t take(std::string_view text, bool at_end);

private:
    void write_character(const std::string &item);
    [[noreturn]] void refuse(const std::string &what) const;

    const symbols_source &source_;
    size_t terminator_bytes_;
    uint64_t offset_ = 0;
};

// The bytes of a line feed, empty when the charmap has no such name.
std::string newline_of(vel_charmap *charmap);

} // namespace vel_tool

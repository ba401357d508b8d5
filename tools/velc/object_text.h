#pragma once

// The pieces that objects are written in.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace velc {

// Eight hexadecimal digits.
void append_wide(std::string &text, std::uint32_t value);
// Four hexadecimal digits.
void append_hex16(std::string &text, std::uint16_t value);
// Its length in decimal, and when that is not 0 a blank and two hexadecimal digits for each byte.
void append_string(std::string &text, std::string_view bytes);
// Count and sizes.
void append_grouping(std::string &text, const std::vector<int> &sizes);

struct object_header {
    std::string_view type; // "locale_object"
    int version = 0;
    std::vector<std::string> lines; // "NAME=value", beyond the three that every object has
};

// The most characters of a header line: readers take 127 bytes with the line break.
inline constexpr std::size_t longest_header_line = 126;

// The object: its header with a hash of the body as last line, then the body.
std::string with_header(const object_header &header, std::string_view body);

// The value of the CONTENT_HASH line for a body.
std::string content_hash(std::string_view body);

} // namespace velc

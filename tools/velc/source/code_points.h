#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velc {

inline constexpr char32_t last_code_point = 0x10FFFF;

constexpr bool is_scalar_value(char32_t code) {
    return code <= last_code_point && (code < 0xD800 || code > 0xDFFF);
}

// Both ends included.
struct code_range {
    char32_t first = 0;
    char32_t last = 0;
    bool operator==(const code_range &) const = default;
};

// Disjoint ranges in rising order, never adjacent: [a,b] and [b+1,c] are one range.
using code_ranges = std::vector<code_range>;

struct code_pair {
    char32_t from = 0;
    char32_t to = 0;
    bool operator==(const code_pair &) const = default;
};

// Sorts, joins what overlaps or touches.
code_ranges normalised(code_ranges ranges);
code_ranges united(const code_ranges &a, const code_ranges &b);
bool contains(const code_ranges &ranges, char32_t code);
std::size_t count_of(const code_ranges &ranges);

// "U00E9" or "U0001F600" -> code point. 4 to 8 hexadecimal digits after the U, nothing else.
std::optional<char32_t> code_point_of_name(std::string_view name);

// "<U00E9>", at least four digits, eight beyond the BMP: the way the sources spell it.
std::string code_point_name(char32_t code);

// Decodes one well-formed UTF-8 character at text[at] and moves at past it; nothing if malformed.
std::optional<char32_t> decode_utf8(std::string_view text, std::size_t &at);

std::string to_utf8(std::u32string_view text);

} // namespace velc

// Character tests of the C locale. Names and the registry are the same for every host that shares
// the data files, so the host's own locale, where "I" may lower to a dotless i and bytes above 0x7F
// may be letters, has no say in how they are read.
#pragma once

#include "objfile/text_reader.h"

namespace vel {

constexpr bool is_upper(int32_t c) {
    return c >= 'A' && c <= 'Z';
}
constexpr bool is_lower(int32_t c) {
    return c >= 'a' && c <= 'z';
}
constexpr bool is_letter(int32_t c) {
    return is_upper(c) || is_lower(c);
}
constexpr bool is_letter_or_digit(int32_t c) {
    return is_letter(c) || (c >= '0' && c <= '9');
}
// A letter, a digit or a punctuation character: what code-set names are made of.
constexpr bool is_graph(int32_t c) {
    return c > ' ' && c < 0x7F;
}
constexpr char to_lower(int32_t c) {
    return static_cast<char>(is_upper(c) ? c - 'A' + 'a' : c);
}
constexpr char to_upper(int32_t c) {
    return static_cast<char>(is_lower(c) ? c - 'a' + 'A' : c);
}
// The value of a hexadecimal digit, or -1.
constexpr int32_t hex_value(int32_t c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

} // namespace vel

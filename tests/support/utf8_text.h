// A character in UTF-8.
#pragma once

#include <string>

namespace vel_test {

inline std::string utf8_text(char32_t code) {
    const int following = code < 0x80 ? 0 : code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
    static constexpr char32_t leads[] = {0, 0xC0, 0xE0, 0xF0};
    std::string text(1, static_cast<char>(leads[following] | code >> 6 * following));
    for (int i = following; i-- > 0;) text += static_cast<char>(0x80 | (code >> 6 * i & 0x3F));
    return text;
}

} // namespace vel_test

// Hexadecimal digits in bytes.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

namespace vel {

constexpr unsigned char not_hex = 0xFF;

struct hex_table {
    unsigned char value[256];
};

constexpr hex_table make_hex_table() {
    hex_table table{};
    for (unsigned char &value : table.value) value = not_hex;
    for (int i = 0; i < 10; ++i) table.value['0' + i] = static_cast<unsigned char>(i);
    for (int i = 0; i < 6; ++i) {
        table.value['a' + i] = table.value['A' + i] = static_cast<unsigned char>(10 + i);
    }
    return table;
}

inline constexpr hex_table hex = make_hex_table();

// All digits of a field at once; false when one of them is not a digit.
inline bool decode_hex(const unsigned char *digits, int32_t width, uint32_t *value) {
    uint32_t result = 0;
    unsigned char seen = 0;
    for (int32_t i = 0; i < width; ++i) {
        unsigned char digit = hex.value[digits[i]];
        seen |= digit;
        result = result << 4 | (digit & 15u);
    }
    *value = result;
    return seen != not_hex;
}

// Two fields of four digits side by side, all eight at once. False when one of them is not a digit.
inline bool decode_hex16_pair(const unsigned char *digits, uint16_t *values) {
    constexpr uint64_t each = 0x0101010101010101;
    uint64_t bytes;
    memcpy(&bytes, digits, sizeof bytes);
    if constexpr (std::endian::native == std::endian::big) bytes = __builtin_bswap64(bytes);
    uint64_t letters = bytes >> 6 & each;
    uint64_t nibbles = (bytes & each * 0x0F) + letters * 9;
    // What these are the nibbles of, in small letters.
    uint64_t spelled = nibbles + each * '0' + ((nibbles + each * 6) >> 4 & each) * ('a' - '9' - 1);
    if (nibbles & each * 0xF0 || spelled != (bytes | letters << 5)) return false;
    uint64_t pairs = (nibbles << 4 | nibbles >> 8) & 0x00FF00FF00FF00FF;
    uint64_t fields = pairs << 8 | pairs >> 16;
    values[0] = static_cast<uint16_t>(fields);
    values[1] = static_cast<uint16_t>(fields >> 32);
    return true;
}

} // namespace vel

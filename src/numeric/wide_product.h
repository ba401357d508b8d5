// Products of 64-bit numbers in full, on 32-bit machines too.
#pragma once

#include <cstdint>

namespace vel {

struct wide_number {
    uint64_t high, low;
};

inline constexpr wide_number wide_product(uint64_t a, uint64_t b) {
#ifdef __SIZEOF_INT128__
    __extension__ using wide = unsigned __int128;
    wide product = static_cast<wide>(a) * b;
    return {static_cast<uint64_t>(product >> 64), static_cast<uint64_t>(product)};
#else
    uint64_t a_low = a & 0xFFFFFFFF, a_high = a >> 32;
    uint64_t b_low = b & 0xFFFFFFFF, b_high = b >> 32;
    uint64_t low = a_low * b_low;
    uint64_t middle = a_high * b_low + (low >> 32);
    uint64_t other = a_low * b_high + (middle & 0xFFFFFFFF);
    return {a_high * b_high + (middle >> 32) + (other >> 32), other << 32 | (low & 0xFFFFFFFF)};
#endif
}

// The upper two thirds of a * b.
inline constexpr wide_number wide_product(wide_number a, uint64_t b) {
    wide_number upper = wide_product(a.high, b);
    uint64_t low = upper.low + wide_product(a.low, b).high;
    return {upper.high + (low < upper.low), low};
}

// n is 0 to 127.
inline constexpr wide_number shift_right(wide_number a, int32_t n) {
    if (n == 0) return a;
    if (n >= 64) return {0, a.high >> (n - 64)};
    return {a.high >> n, a.high << (64 - n) | a.low >> n};
}

inline constexpr bool operator==(wide_number a, wide_number b) {
    return a.high == b.high && a.low == b.low;
}
inline constexpr bool operator<(wide_number a, wide_number b) {
    return a.high != b.high ? a.high < b.high : a.low < b.low;
}

} // namespace vel

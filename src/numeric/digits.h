// Digits of 64-bit numbers.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

namespace vel {

constexpr int32_t max_u64_digits = 20;

struct power_table {
    uint64_t of_ten[max_u64_digits];
};

inline constexpr power_table powers = [] {
    power_table made = {};
    uint64_t power = 1;
    for (uint64_t &each : made.of_ten) {
        each = power;
        power *= 10;
    }
    return made;
}();

// The decimal digits of a number, 1 for zero.
inline int32_t digit_count(uint64_t value) {
    int32_t bits = 64 - std::countl_zero(value | 1);
    int32_t guess = bits * 1233 >> 12; // log10(2), which is one too low at the most
    return guess + (guess < max_u64_digits && value >= powers.of_ten[guess]) + (value == 0);
}

inline constexpr char digit_pairs[] = "00010203040506070809101112131415161718192021222324"
                                      "25262728293031323334353637383940414243444546474849"
                                      "50515253545556575859606162636465666768697071727374"
                                      "75767778798081828384858687888990919293949596979899";

// Writes the lowest n decimal digits of a number as ASCII.
template <typename Number> inline void put_digits(char *out, Number value, int32_t n) {
    for (; n >= 2; n -= 2) {
        memcpy(out + n - 2, digit_pairs + value % 100 * 2, 2);
        value /= 100;
    }
    if (n) *out = static_cast<char>('0' + value % 10);
}

} // namespace vel

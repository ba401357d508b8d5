// The decimal digits of a double, exact and correctly rounded, whatever the host's locale and
// rounding mode, and the way back.
#pragma once

#include <cstdint>

namespace vel {

constexpr int32_t max_decimal_digits = 800; // a double has 767 at the most

// A value of 0.d1 d2 d3 ... * 10^point; zero has count 0 and point 0.
struct decimal {
    int32_t point;
    int32_t count;                   // without trailing zeros
    char digits[max_decimal_digits]; // '0' to '9'; only `count` of them are set
};

// |value| rounded to `places` digits behind the decimal point, half to even on the exact value.
// The value is finite; `places` is 0 or more and may be huge.
void decimal_fixed(double value, int32_t places, decimal &out);

// |value| rounded to `count` significant digits, 1 or more.
void decimal_significant(double value, int32_t count, decimal &out);

// The double nearest to digits * 10^exponent, where `digits` are n ASCII digits. Stores whether the
// value is out of range: too large, and then the result is infinite, or a subnormal number or zero
// that is not exact.
double nearest_double(const char *digits, int32_t n, int32_t exponent, bool *out_of_range);

// The same for the value digits * 10^exponent.
double nearest_double(uint64_t digits, int32_t exponent, bool *out_of_range);

} // namespace vel

// A double taken apart.
#pragma once

#include <bit>
#include <cstdint>

#include "numeric/decimal.h"

namespace vel {

constexpr int32_t mantissa_bits = 53;
constexpr int32_t least_exponent = -1074;
constexpr int32_t greatest_exponent = 971;

// mantissa * 2^exponent
struct binary {
    uint64_t mantissa;
    int32_t exponent;
};

inline binary binary_of(double magnitude) {
    uint64_t bits = std::bit_cast<uint64_t>(magnitude) & ~(uint64_t{1} << 63);
    uint64_t fraction = bits & ((uint64_t{1} << (mantissa_bits - 1)) - 1);
    int32_t biased = static_cast<int32_t>(bits >> (mantissa_bits - 1));
    if (biased == 0) return {fraction, least_exponent};
    return {fraction | uint64_t{1} << (mantissa_bits - 1), least_exponent + biased - 1};
}

// All the digits of a number of at most 54 bits and an exponent of least_exponent - 1 or more,
// which is enough for the middle between two doubles.
void expand(binary value, decimal &out);

} // namespace vel

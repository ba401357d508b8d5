// Powers of five to 126 bits or more, from -364 to 335.
#pragma once

#include "numeric/wide_product.h"

namespace vel {

// (high:low) * 2^exponent, where the upper half has its top bit set; the true power is less than
// `scaled_power_error` above it.
struct scaled_power {
    wide_number value;
    int32_t exponent;
};

constexpr uint64_t scaled_power_error = 4;
constexpr int32_t least_power = -364;
constexpr int32_t greatest_power = 335;

scaled_power power_of_five(int32_t power);

} // namespace vel

// A power is the product of one of 28 that fit a machine word and one of 25 that are 28 apart. The
// compiler works out both tables.
#include "numeric/powers_of_five.h"

#include <bit>

namespace vel {
namespace {

constexpr int32_t step = 28; // 5^27 is the greatest that fits 64 bits
constexpr int32_t steps_down = -least_power / step;
constexpr int32_t step_count = steps_down + greatest_power / step + 1;

struct coarse_power {
    wide_number value; // the upper 128 bits
    int16_t exponent;
};

struct fine_power {
    uint64_t value; // shifted up to its top bit
    int16_t exponent;
};

struct power_tables {
    coarse_power coarse[step_count];
    fine_power fine[step];
};

// A long number for the compiler, by 32-bit limbs from the lowest.
struct long_number {
    static constexpr int32_t size = 40;
    uint32_t limbs[size] = {};

    constexpr void multiply(uint32_t factor) {
        uint64_t carry = 0;
        for (uint32_t &limb : limbs) {
            carry += static_cast<uint64_t>(limb) * factor;
            limb = static_cast<uint32_t>(carry);
            carry >>= 32;
        }
    }
    constexpr void divide(uint32_t divisor) {
        uint64_t rest = 0;
        for (int32_t i = size - 1; i >= 0; --i) {
            rest = rest << 32 | limbs[i];
            limbs[i] = static_cast<uint32_t>(rest / divisor);
            rest %= divisor;
        }
    }
    constexpr coarse_power top(int32_t exponent) const {
        int32_t highest = size - 1;
        while (limbs[highest] == 0) --highest;
        int32_t shift = std::countl_zero(limbs[highest]);
        uint32_t words[4] = {};
        for (int32_t i = 0; i < 4; ++i) {
            uint64_t two = static_cast<uint64_t>(limb(highest - i)) << 32 | limb(highest - i - 1);
            words[i] = static_cast<uint32_t>(two << shift >> 32);
        }
        exponent += (highest - 3) * 32 - shift;
        return {{static_cast<uint64_t>(words[0]) << 32 | words[1],
                 static_cast<uint64_t>(words[2]) << 32 | words[3]},
                static_cast<int16_t>(exponent)};
    }
    constexpr uint32_t limb(int32_t i) const { return i < 0 ? 0 : limbs[i]; }
};

constexpr uint32_t quarter_step = 78125; // 5^7

constexpr power_tables make_tables() {
    power_tables made = {};
    long_number up = {};
    up.limbs[0] = 1;
    for (int32_t i = steps_down; i < step_count; ++i) {
        made.coarse[i] = up.top(0);
        for (int32_t quarter = 0; quarter < 4; ++quarter) up.multiply(quarter_step);
    }
    // Dividing in steps gives the same as dividing at once: both round down.
    long_number down = {};
    down.limbs[long_number::size - 1] = 1;
    for (int32_t i = steps_down - 1; i >= 0; --i) {
        for (int32_t quarter = 0; quarter < 4; ++quarter) down.divide(quarter_step);
        made.coarse[i] = down.top(-32 * (long_number::size - 1));
    }
    uint64_t power = 1;
    for (fine_power &each : made.fine) {
        int shift = std::countl_zero(power);
        each = {power << shift, static_cast<int16_t>(-shift)};
        power *= 5;
    }
    return made;
}

constexpr power_tables tables = make_tables();

} // namespace

scaled_power power_of_five(int32_t power) {
    int32_t from_least = power - least_power;
    const coarse_power &coarse = tables.coarse[from_least / step];
    const fine_power &fine = tables.fine[from_least % step];
    wide_number product = wide_product(coarse.value, fine.value);
    int32_t exponent = coarse.exponent + fine.exponent + 64;
    if (product.high >> 63) return {product, exponent};
    return {{product.high << 1 | product.low >> 63, product.low << 1}, exponent - 1};
}

} // namespace vel

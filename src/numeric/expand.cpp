// Every digit of a double.
//
// A double with a fraction is an integer times a power of two that is negative, and m / 2^s is
// m * 5^s / 10^s: multiplication alone gives the digits. Limbs of nine digits save the change of
// base at the end.
#include "numeric/binary.h"
#include "numeric/digits.h"

namespace vel {
namespace {

constexpr uint32_t limb_range = 1000000000;
constexpr int32_t limb_digits = 9;
constexpr int32_t max_limbs = (max_decimal_digits + limb_digits - 1) / limb_digits;

class limbs {
public:
    explicit limbs(uint64_t value) {
        for (; value; value /= limb_range)
            limbs_[count_++] = static_cast<uint32_t>(value % limb_range);
    }

    void multiply(uint32_t factor) {
        uint64_t carry = 0;
        for (int32_t i = 0; i < count_; ++i) {
            carry += static_cast<uint64_t>(limbs_[i]) * factor;
            limbs_[i] = static_cast<uint32_t>(carry % limb_range);
            carry /= limb_range;
        }
        for (; carry; carry /= limb_range) {
            limbs_[count_++] = static_cast<uint32_t>(carry % limb_range);
        }
    }

    // Times base^power, `step` factors at once: their product fits 32 bits.
    void multiply_power(uint32_t base, int32_t power, int32_t step) {
        uint32_t together = 1;
        for (int32_t i = 0; i < step; ++i) together *= base;
        for (; power >= step; power -= step) multiply(together);
        if (power == 0) return;
        for (together = 1; power > 0; --power) together *= base;
        multiply(together);
    }

    // Writes the digits without leading zeros and gives their number.
    int32_t write(char *out) const {
        int32_t first = digit_count(limbs_[count_ - 1]);
        put_digits(out, limbs_[count_ - 1], first);
        for (int32_t i = count_ - 2; i >= 0; --i) {
            put_digits(out + first + (count_ - 2 - i) * limb_digits, limbs_[i], limb_digits);
        }
        return first + (count_ - 1) * limb_digits;
    }

private:
    int32_t count_ = 0;
    uint32_t limbs_[max_limbs]; // the lowest first
};

} // namespace

void expand(binary value, decimal &out) {
    out.count = out.point = 0;
    if (value.mantissa == 0) return;
    int32_t even = std::countr_zero(value.mantissa);
    value.mantissa >>= even;
    value.exponent += even;

    limbs number(value.mantissa);
    bool has_fraction = value.exponent < 0;
    if (has_fraction) {
        number.multiply_power(5, -value.exponent, 13);
    } else {
        number.multiply_power(2, value.exponent, 31);
    }
    out.count = number.write(out.digits);
    out.point = out.count + (has_fraction ? value.exponent : 0);
    while (out.digits[out.count - 1] == '0') --out.count;
}

} // namespace vel

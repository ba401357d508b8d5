// Gathering the digits of a number that is read.
#pragma once

#include "numeric/decimal.h"
#include "numeric/digits.h"

namespace vel {

// The digits of a number as they come. Those that no double can depend on are not kept; whether one
// of them is not zero is, as a last digit.
class digit_collector {
public:
    explicit digit_collector(char *buffer) : digits_(buffer) {}

    // The first digits, without zeros in front, are kept as a number.
    bool has_room() const { return leading_ < least_full; }
    void add(int32_t digit) { leading_ = leading_ * 10 + static_cast<uint32_t>(digit); }

    void take(int32_t digit) { has_room() ? add(digit) : add_more(digit); }

    [[gnu::noinline]] void add_more(int32_t digit) {
        if (count_ == 0) put_digits(digits_, leading_, count_ = max_leading);
        if (count_ < max_decimal_digits) {
            digits_[count_++] = static_cast<char>('0' + digit);
            return;
        }
        ++exponent_;
        if (digit != 0) digits_[max_decimal_digits - 1] = '1';
    }
    void add_exponent(int64_t exponent) { exponent_ += exponent; }

    double value(bool *out_of_range) const {
        int64_t within = exponent_ > INT32_MAX ? INT32_MAX : exponent_;
        if (within < INT32_MIN) within = INT32_MIN;
        int32_t exponent = static_cast<int32_t>(within);
        if (count_ == 0) return nearest_double(leading_, exponent, out_of_range);
        return nearest_double(digits_, count_, exponent, out_of_range);
    }

private:
    static constexpr int32_t max_leading = 19; // fit 64 bits
    static constexpr uint64_t least_full = powers.of_ten[max_leading - 1];

    uint64_t leading_ = 0;
    int32_t count_ = 0;    // of digits_, 0 while leading_ holds all
    int64_t exponent_ = 0; // of the last digit
    char *digits_;         // max_decimal_digits of room
};

} // namespace vel

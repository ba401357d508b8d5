// Doubles to digits.
//
// The numbers that people write have an integer part of one machine word, and their fraction times
// the wanted power of ten is an exact product of two words. All others are expanded to their last
// digit and rounded there.
#include "numeric/decimal.h"

#include "numeric/binary.h"
#include "numeric/digits.h"
#include "numeric/wide_product.h"

namespace vel {
namespace {

constexpr int32_t max_places = max_u64_digits - 1; // 10^places is a machine word
constexpr int32_t max_fraction_bits = 127;

void drop_trailing_zeros(decimal &out) {
    while (out.count > 0 && out.digits[out.count - 1] == '0') --out.count;
    if (out.count == 0) out.point = 0;
}

// Rounds an exact value to its first `kept` digits; none of them are left when kept is below 0.
void round_digits(decimal &out, int64_t kept) {
    if (kept >= out.count) return;
    if (kept < 0) {
        out.count = out.point = 0;
        return;
    }
    char next = out.digits[kept];
    bool is_tie = next == '5' && kept + 1 == out.count;
    bool is_odd = kept > 0 && (out.digits[kept - 1] & 1);
    bool up = is_tie ? is_odd : next >= '5';
    out.count = static_cast<int32_t>(kept);
    if (up) {
        while (out.count > 0 && out.digits[out.count - 1] == '9') --out.count;
        if (out.count == 0) {
            out.digits[out.count++] = '1';
            ++out.point;
        } else {
            ++out.digits[out.count - 1];
        }
    }
    drop_trailing_zeros(out);
}

// A value of at most 64 bits before the point and 127 behind it.
struct split {
    uint64_t whole;
    uint64_t fraction; // of 2^bits
    int32_t bits;
};

bool split_at_point(binary value, split &out) {
    constexpr int32_t spare_bits = 64 - mantissa_bits;
    if (value.exponent > spare_bits || value.exponent < -max_fraction_bits) return false;
    if (value.exponent >= 0) {
        out = {value.mantissa << value.exponent, 0, 0};
        return true;
    }
    out.bits = -value.exponent;
    out.whole = out.bits < mantissa_bits ? value.mantissa >> out.bits : 0;
    out.fraction = value.mantissa - (out.bits < mantissa_bits ? out.whole << out.bits : 0);
    return true;
}

// fraction * 10^places, rounded to a whole number.
uint64_t scale_fraction(const split &value, int32_t places) {
    if (value.bits == 0) return 0;
    wide_number product = wide_product(value.fraction, powers.of_ten[places]);
    uint64_t whole = shift_right(product, value.bits).low;
    // The bits that were shifted out, moved to the top, against a half.
    int32_t left = 128 - value.bits;
    wide_number rest = left >= 64 ? wide_number{product.low << (left - 64), 0}
                                  : wide_number{product.high << left | product.low >> (64 - left),
                                                product.low << left};
    constexpr wide_number half = {uint64_t{1} << 63, 0};
    bool is_odd = places == 0 ? value.whole & 1 : whole & 1;
    return whole + (rest == half ? is_odd : half < rest);
}

// The digits of whole + scaled / 10^places.
void put_parts(uint64_t whole, uint64_t scaled, int32_t places, decimal &out) {
    if (scaled >= powers.of_ten[places]) { // rounded up to one
        scaled -= powers.of_ten[places];
        ++whole;
    }
    if (whole == 0) {
        out.count = digit_count(scaled);
        out.point = out.count - places;
        put_digits(out.digits, scaled, out.count);
    } else {
        out.point = digit_count(whole);
        out.count = out.point + places;
        put_digits(out.digits, whole, out.point);
        put_digits(out.digits + out.point, scaled, places);
    }
    drop_trailing_zeros(out);
}

// Rounds the integer part itself, to a multiple of 10^dropped.
void put_rounded_whole(const split &value, int32_t dropped, decimal &out) {
    uint64_t unit = powers.of_ten[dropped];
    uint64_t kept = value.whole / unit, rest = value.whole % unit;
    bool is_tie = rest == unit / 2 && value.fraction == 0;
    bool up = is_tie ? kept & 1 : rest >= unit / 2;
    put_parts(kept + up, 0, 0, out);
    if (out.count) out.point += dropped;
}

// The count of zeros behind the point of a value below 1, or one more.
int32_t many_leading_zeros(const split &value) {
    int32_t below = value.bits - (64 - std::countl_zero(value.fraction)); // value < 2^-below
    return (below + 1) * 1233 >> 12;                                      // log10(2)
}

bool put_significant(const split &value, int32_t count, decimal &out) {
    if (count > max_places) return false;
    if (value.whole) {
        int32_t places = count - digit_count(value.whole);
        if (places < 0) {
            put_rounded_whole(value, -places, out);
        } else {
            put_parts(value.whole, scale_fraction(value, places), places, out);
        }
        return true;
    }
    int32_t places = count + many_leading_zeros(value);
    if (places > max_places) return false;
    uint64_t scaled = scale_fraction(value, places);
    if (scaled >= powers.of_ten[count]) scaled = scale_fraction(value, --places);
    put_parts(0, scaled, places, out);
    return true;
}

} // namespace

void decimal_fixed(double value, int32_t places, decimal &out) {
    binary exact = binary_of(value);
    split parts;
    if (places <= max_places && split_at_point(exact, parts)) [[likely]] {
        return put_parts(parts.whole, scale_fraction(parts, places), places, out);
    }
    expand(exact, out);
    round_digits(out, static_cast<int64_t>(out.point) + places);
}

void decimal_significant(double value, int32_t count, decimal &out) {
    binary exact = binary_of(value);
    split parts;
    if (split_at_point(exact, parts) && put_significant(parts, count, out)) [[likely]]
        return;
    expand(exact, out);
    round_digits(out, count);
}

} // namespace vel

// Digits to doubles.
//
// A short number is one division. Of others the first 19 digits times a power of ten are worked out
// to 128 bits with a bound on the error. Nearly always that decides how the value is rounded. When
// the middle between two doubles lies within the error, its digits are compared with those of the
// text, all of them.
#include <cfloat>
#include <cmath>

#include "numeric/binary.h"
#include "numeric/decimal.h"
#include "numeric/digits.h"
#include "numeric/powers_of_five.h"

namespace vel {
namespace {

constexpr int32_t max_leading = max_u64_digits - 1;
// A value of 0.d1 d2 ... * 10^point is zero or infinite beyond these.
constexpr int32_t least_point = -323;
constexpr int32_t greatest_point = 309;

// The digits of a value 0.d1 d2 ... * 10^point, without zeros at either end.
struct significant {
    const char *digits;
    int32_t count;
    int64_t point;
};

significant trim(const char *digits, int32_t n, int32_t exponent) {
    const char *end = digits + n;
    int64_t point = static_cast<int64_t>(exponent) + n;
    while (digits < end && *digits == '0') {
        ++digits;
        --point;
    }
    while (digits < end && end[-1] == '0') --end;
    return {digits, static_cast<int32_t>(end - digits), point};
}

uint64_t leading_digits(const significant &text) {
    uint64_t value = 0;
    for (int32_t i = 0; i < text.count && i < max_leading; ++i) {
        value = value * 10 + static_cast<uint64_t>(text.digits[i] - '0');
    }
    return value;
}

// The text against the exact value of a binary number: below 0, 0 or above 0.
int compare(const significant &text, binary with) {
    decimal exact;
    expand(with, exact);
    if (exact.count == 0) return 1;
    if (text.point != exact.point) return text.point < exact.point ? -1 : 1;
    int32_t both = text.count < exact.count ? text.count : exact.count;
    int order = memcmp(text.digits, exact.digits, static_cast<size_t>(both));
    return order ? order : text.count - exact.count;
}

// leading * 10^power, and more digits behind these when `all` is not null.
struct number {
    uint64_t leading;
    int32_t power;
    const significant *all;
};

struct outcome {
    binary value;
    bool is_inexact;
};

// Rounds up or down to the mantissa that is decided by comparing the text with the middle.
[[gnu::cold]] outcome round_by_text(const significant &text, binary below) {
    binary middle = {below.mantissa * 2 + 1, below.exponent - 1};
    int order = compare(text, middle);
    bool up = order ? order > 0 : below.mantissa & 1;
    outcome result = {{below.mantissa + up, below.exponent}, false};
    result.is_inexact = compare(text, result.value) != 0;
    return result;
}

outcome round_exactly(const number &exact, binary below) {
    if (exact.all) return round_by_text(*exact.all, below);
    char digits[max_u64_digits];
    int32_t count = digit_count(exact.leading);
    put_digits(digits, exact.leading, count);
    return round_by_text(trim(digits, count, exact.power), below);
}

double compose(binary value, bool *out_of_range) {
    if (value.mantissa >> mantissa_bits) { // rounded up to the next power of two
        value.mantissa >>= 1;
        ++value.exponent;
    }
    if (value.exponent > greatest_exponent) {
        *out_of_range = true;
        return HUGE_VAL;
    }
    constexpr uint64_t top_bit = uint64_t{1} << (mantissa_bits - 1);
    uint64_t biased = static_cast<uint64_t>(value.exponent - least_exponent) + 1;
    uint64_t bits = value.mantissa;
    if (value.mantissa & top_bit) bits = value.mantissa - top_bit + (biased << (mantissa_bits - 1));
    return std::bit_cast<double>(bits);
}

// The upper 128 bits of a value and how far above them it may be.
struct estimate {
    wide_number bits; // the top bit is set
    wide_number error;
    int32_t exponent; // of the lowest bit
};

estimate estimate_value(const number &exact) {
    int shift = std::countl_zero(exact.leading);
    scaled_power scale = power_of_five(exact.power);
    estimate made;
    made.bits = wide_product(scale.value, exact.leading << shift);
    made.exponent = scale.exponent + exact.power - shift + 64;
    // What the power lacks, what the product dropped, and what the other digits may add.
    made.error = {exact.all ? uint64_t{1} << shift : 0, scaled_power_error + 2};
    if (!(made.bits.high >> 63)) {
        made.bits = {made.bits.high << 1 | made.bits.low >> 63, made.bits.low << 1};
        made.error = {made.error.high << 1, made.error.low << 1};
        --made.exponent;
    }
    return made;
}

// A value near the middle between zero and the least double, or below that.
[[gnu::cold]] double round_least(const number &exact, bool *out_of_range) {
    outcome result = round_exactly(exact, {0, least_exponent});
    *out_of_range = result.is_inexact;
    return compose(result.value, out_of_range);
}

double round_estimate(const number &exact, const estimate &value, bool *out_of_range) {
    // The bits below the mantissa: 11 of the upper word and the lower word, more in a subnormal.
    int32_t dropped = 64 - mantissa_bits;
    int32_t exponent = value.exponent + 64;
    if (exponent + dropped < least_exponent) dropped = least_exponent - exponent;
    bool is_subnormal = dropped > 64 - mantissa_bits;
    if (dropped > 64) return round_least(exact, out_of_range);
    uint64_t below = dropped == 64 ? 0 : value.bits.high >> dropped;
    binary down = {below, exponent + dropped};
    uint64_t left = dropped == 64 ? value.bits.high : value.bits.high - (below << dropped);
    wide_number rest = {left, value.bits.low};
    wide_number half = {uint64_t{1} << (dropped - 1), 0};
    wide_number most = {rest.high + value.error.high, rest.low + value.error.low};
    most.high += most.low < rest.low;

    // A subnormal number is exact only with more digits than have been looked at.
    bool is_decided = half < rest || most < half;
    outcome result = {{down.mantissa + (half < rest), down.exponent}, is_subnormal};
    if (!is_decided || (is_subnormal && exact.all)) [[unlikely]]
        result = round_exactly(exact, down);
    bool is_tiny = result.value.mantissa >> (mantissa_bits - 1) == 0;
    *out_of_range = is_tiny && result.is_inexact;
    return compose(result.value, out_of_range);
}

double nearest(const number &exact, int64_t point, bool *out_of_range) {
    if (point < least_point || point > greatest_point) {
        *out_of_range = true;
        return point < 0 ? 0.0 : HUGE_VAL;
    }
    return round_estimate(exact, estimate_value(exact), out_of_range);
}

// Whether the machine rounds doubles as they are written, to the nearest and in one step.
bool rounds_to_nearest() {
#if FLT_EVAL_METHOD == 0
    volatile double tiny = DBL_MIN; // for the machine to add, not for the compiler
    return 1.0 + tiny == 1.0 - tiny;
#else
    return false;
#endif
}

// A number of few digits and places, as most are, is the quotient of two doubles that are exact,
// and the division rounds it.
bool divide_exactly(uint64_t digits, int32_t exponent, double &out) {
    static constexpr double powers_of_ten[] = {1e0, 1e1, 1e2, 1e3, 1e4,  1e5,
                                               1e6, 1e7, 1e8, 1e9, 1e10, 1e11};
    constexpr uint32_t count = sizeof powers_of_ten / sizeof *powers_of_ten;
    uint32_t places = 0 - static_cast<uint32_t>(exponent);
    if (places >= count || digits >> mantissa_bits || !rounds_to_nearest()) return false;
    out = static_cast<double>(digits) / powers_of_ten[places];
    return true;
}

} // namespace

double nearest_double(const char *digits, int32_t n, int32_t exponent, bool *out_of_range) {
    significant text = trim(digits, n, exponent);
    *out_of_range = false;
    if (text.count == 0) return 0.0;
    bool is_cut = text.count > max_leading;
    int64_t power = text.point - (is_cut ? max_leading : text.count);
    return nearest({leading_digits(text), static_cast<int32_t>(power), is_cut ? &text : nullptr},
                   text.point, out_of_range);
}

double nearest_double(uint64_t digits, int32_t exponent, bool *out_of_range) {
    *out_of_range = false;
    double value;
    if (divide_exactly(digits, exponent, value)) return value;
    if (digits == 0) return 0.0;
    int64_t point = static_cast<int64_t>(exponent) + digit_count(digits);
    return nearest({digits, exponent, nullptr}, point, out_of_range);
}

} // namespace vel

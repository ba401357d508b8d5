// The digits of doubles and the way back, against the host's C library.
#include <gtest/gtest.h>

#include <bit>
#include <cerrno>
#include <cfenv>
#include <cfloat>
#include <cmath>
#include <random>
#include <string>

#include "numeric/decimal.h"

namespace {

using vel::decimal;

constexpr uint64_t seed = 20240817;

// A double of any exponent, or one of those that rounding goes wrong with.
class doubles {
public:
    double next() {
        const auto up_to = [&](uint64_t limit) { return static_cast<double>(below(limit)); };
        const double subnormal = std::bit_cast<double>(random_() >> 12 >> below(52));
        const double kinds[] = {std::ldexp(up_to(1000000), -static_cast<int>(below(24))),
                                up_to(10000000) / 100,
                                up_to(1000) * 0.5,
                                subnormal,
                                std::pow(10, static_cast<int>(below(600)) - 300),
                                static_cast<double>(random_()),
                                any_exponent(),
                                any_exponent()};
        return kinds[below(std::size(kinds))];
    }
    uint64_t below(uint64_t limit) { return random_() % limit; }

private:
    double any_exponent() {
        for (;;) {
            double value = std::fabs(std::bit_cast<double>(random_()));
            if (std::isfinite(value)) return value;
        }
    }
    std::mt19937_64 random_{seed};
};

std::string print(const char *format, int32_t places, double value) {
    char text[2000];
    snprintf(text, sizeof text, format, places, value);
    return text;
}

// What the host prints, in the form of a decimal: digits without zeros at either end, and a point.
std::pair<std::string, int32_t> digits_of(std::string text) {
    int32_t point = 0;
    if (size_t e = text.find('e'); e != text.npos) {
        point = std::stoi(text.substr(e + 1));
        text.resize(e);
    }
    size_t dot = std::min(text.find('.'), text.size());
    point += static_cast<int32_t>(dot);
    if (dot < text.size()) text.erase(dot, 1);
    size_t first = text.find_first_not_of('0');
    if (first == text.npos) return {"", 0};
    text.resize(text.find_last_not_of('0') + 1);
    return {text.substr(first), point - static_cast<int32_t>(first)};
}

std::pair<std::string, int32_t> as_pair(const decimal &made) {
    return {{made.digits, static_cast<size_t>(made.count)}, made.point};
}

TEST(decimal, has_the_digits_that_the_host_prints) {
    doubles source;
    decimal made;
    for (int i = 0; i < 200000; ++i) {
        double value = source.next();
        bool is_long = i % 16 == 0;
        int32_t places = static_cast<int32_t>(source.below(is_long ? 1200 : 22));
        vel::decimal_fixed(value, places, made);
        ASSERT_EQ(digits_of(print("%.*f", places, value)), as_pair(made))
            << "seed " << seed << std::hexfloat << " value " << value << " places " << places;
        vel::decimal_significant(-value, places + 1, made);
        ASSERT_EQ(digits_of(print("%.*e", places, value)), as_pair(made))
            << "seed " << seed << std::hexfloat << " value " << value << " count " << places + 1;
    }
    vel::decimal_fixed(DBL_MIN, INT32_MAX, made);
    EXPECT_EQ(digits_of(print("%.*f", 1100, DBL_MIN)), as_pair(made));
    vel::decimal_significant(DBL_MIN, INT32_MAX, made);
    EXPECT_EQ(digits_of(print("%.*f", 1100, DBL_MIN)), as_pair(made));
}

// Holds nearest_double against strtod for digits * 10^exponent.
void check_nearest(const std::string &digits, int32_t exponent) {
    bool out_of_range = false;
    double made = vel::nearest_double(digits.data(), static_cast<int32_t>(digits.size()), exponent,
                                      &out_of_range);
    std::string text = digits + "e" + std::to_string(exponent);
    errno = 0;
    double wanted = strtod(text.c_str(), nullptr);
    ASSERT_EQ(std::bit_cast<uint64_t>(wanted), std::bit_cast<uint64_t>(made)) << text;
    // Whether what was rounded up to the least normal number is tiny depends on the machine.
    if (made == DBL_MIN) return;
    ASSERT_EQ(errno == ERANGE, out_of_range) << text;
}

TEST(decimal, reads_the_double_that_the_host_reads) {
    doubles source;
    for (int i = 0; i < 200000; ++i) {
        auto [digits, point] =
            digits_of(print("%.*e", static_cast<int>(source.below(25)), source.next()));
        int32_t count = static_cast<int32_t>(digits.size());
        check_nearest(digits, point - count);
        std::string any;
        for (uint64_t left = source.below(40); left > 0; --left) {
            any += static_cast<char>('0' + source.below(10));
        }
        check_nearest(any.empty() ? "0" : any, static_cast<int32_t>(source.below(700)) - 360);
    }
}

TEST(decimal, rounds_by_the_last_digit_of_the_text) {
    doubles source;
    for (int i = 0; i < 20000; ++i) {
        // The middle between two doubles, and the texts just below and above it.
        double value = i == 0 ? 0.0 : i == 1 ? DBL_MAX : source.next();
        long double next = static_cast<long double>(std::nextafter(value, HUGE_VAL));
        if (i == 1) next = std::ldexp(1.0L, 1024);
        char text[1400];
        snprintf(text, sizeof text, "%.1100Le", (static_cast<long double>(value) + next) / 2);
        auto [digits, point] = digits_of(text);
        int32_t exponent = point - static_cast<int32_t>(digits.size());
        check_nearest(digits, exponent);
        check_nearest(digits + "0000000001", exponent - 10);
        --digits.back();
        check_nearest(digits + "9999999999", exponent - 10);
    }
}

TEST(decimal, reads_extreme_texts) {
    const std::string nines(3000, '9'), zeros(3000, '0');
    const std::pair<std::string, int32_t> texts[] = {{"1", INT32_MAX},
                                                     {"1", INT32_MIN},
                                                     {"0", INT32_MAX},
                                                     {"2", -324},
                                                     {nines, -3000},
                                                     {nines, -2692},
                                                     {zeros + "1", -3000},
                                                     {"1" + zeros, -3000},
                                                     {"1" + zeros, INT32_MIN},
                                                     {"1" + zeros + "1", -3001},
                                                     {"17976931348623157", 292},
                                                     {"17976931348623159", 292},
                                                     {"9007199254740993", 0},
                                                     {"4940656458412465", -339},
                                                     {"22250738585072011", -324},
                                                     {"22250738585072014", -324}};
    for (const auto &[digits, exponent] : texts) check_nearest(digits, exponent);
    bool out_of_range = true;
    EXPECT_EQ(0.0, vel::nearest_double("", 0, 5, &out_of_range));
    EXPECT_FALSE(out_of_range);
}

TEST(nearest, does_not_depend_on_the_rounding_mode) {
    std::mt19937_64 random(seed);
    for (int i = 0; i < 10000; ++i) {
        const uint64_t digits = random() >> random() % 64;
        const int32_t exponent = -static_cast<int32_t>(random() % 12);
        bool out_of_range;
        const double value = vel::nearest_double(digits, exponent, &out_of_range);
        for (int mode : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO}) {
            std::fesetround(mode);
            const double other = vel::nearest_double(digits, exponent, &out_of_range);
            std::fesetround(FE_TONEAREST);
            ASSERT_EQ(value, other) << digits << "e" << exponent << ", mode " << mode;
        }
    }
}

} // namespace

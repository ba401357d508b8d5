// Numbers that both write, what is read back, and what both say of a locale's conventions.
#include "differential/conventions.h"

namespace differential {
namespace {

constexpr known_tally known_written[] = {
    {"exponents from 100", 182, 4368, "three digits of exponent"},
    {"%24.4e|", 182, 4186, "three digits of exponent"},
    {"%'G", 166, 494, "only %f is grouped"},
    {"%'.9d", 166, 1986, "digits of a precision"}};
constexpr known_tally known_read[] = {{"%'G", 166, 494, "only %f is grouped"}};

constexpr int32_t integers[] = {0,        1,         -1,        9,          10,        99,
                                -100,     999,       1000,      -1000,      9999,      12345,
                                -99999,   100000,    999999,    1000000,    1234567,   -9876543,
                                12345678, -12345678, 123456789, 1000000000, INT32_MAX, INT32_MIN};
constexpr double fractions[] = {
    0.0,           -0.0,   0.5,      1.5,     -2.5,    0.001,     0.0049999,  0.005,  1e-7,
    9.999,         99.995, -999.995, 1000,    -1234.5, 12345.678, 999999.995, 1e6,    -1234567.891,
    123456789.125, 1e15,   -1e16,    -1.7e99, 2.5e-99, 1.79e308,  2.3e-308,   -1e100, 123e-107};

constexpr const char *of_integers[] = {"%d",   "%'d",   "%+d",  "% d",   "%'+i|",
                                       "%14d", "%014d", "%.6d", "%'.9d", "%'u"};
constexpr const char *of_fractions[] = {"%f",    "%.2f",   "%'.2f",   "%'.0f",   "%+.3f",
                                        "%#.0f", "%'.17f", "%.17g",   "%g",      "%'G",
                                        "%.16E", "%.0e",   "%24.3f|", "%024.3f", "%24.4e|"};

// The host writes it in the locale of the thread.
template <typename Value> std::string by_host(const char *format, Value value) {
    char text[1024];
    return {text, static_cast<size_t>(snprintf(text, sizeof text, format, value))};
}

bool has_long_exponent(const std::string &text) {
    const size_t at = text.find_first_of("eE");
    return at != text.npos && text.find_last_of("0123456789") - at > 3;
}

using numbers_against_host = conventions;

TEST_F(numbers_against_host, written_and_read_back) {
    tally written, read;
    for_each_locale([&](const both &locale) {
        const auto compare = [&](const char *format, auto value) {
            const std::string ours = locale.written(vel_mbsfnum, format, value),
                              host = by_host(format, value);
            const bool is_long = has_long_exponent(host);
            written.compare(is_long ? "exponents from 100" : format, locale.name(), host, ours,
                            host);
            // A width is the most that is read, too, and grouped text has its limit.
            if (is_long || ours.size() > 100) return;
            read.compare(format, locale.name(), ours,
                         locale.again(vel_mbsfnum, vel_mbspnum, format, ours, value), ours);
        };
        for (const char *format : of_integers)
            for (int32_t value : integers) compare(format, value);
        for (const char *format : of_fractions)
            for (double value : fractions) compare(format, value);
    });
    written.settle(known_written);
    read.settle(known_read);
}

// Grouping itself is compared by the numbers.
TEST_F(numbers_against_host, conventions) {
    tally found;
    for_each_locale([&](const both &locale) {
        const vel_numeric_conventions &number = vel_localeconv(locale.ours())->numeric;
        const vel_monetary_conventions &money = vel_localeconv(locale.ours())->monetary;
        const lconv &host = *localeconv();
        const auto text = [&](const vel_text &ours, const char *theirs) {
            found.compare("texts", locale.name(), "", locale.from_ours(ours.bytes), theirs);
        };
        const auto value = [&](int32_t ours, char theirs) {
            found.compare("numbers", locale.name(), "", std::to_string(ours),
                          std::to_string(theirs));
        };
        text(number.decimal_point, host.decimal_point);
        text(number.thousands_sep, host.thousands_sep);
        text(money.int_curr_symbol, host.int_curr_symbol);
        text(money.currency_symbol, host.currency_symbol);
        text(money.mon_decimal_point, host.mon_decimal_point);
        text(money.mon_thousands_sep, host.mon_thousands_sep);
        text(money.positive_sign, host.positive_sign);
        text(money.negative_sign, host.negative_sign);
        value(money.int_frac_digits, host.int_frac_digits);
        value(money.frac_digits, host.frac_digits);
        value(money.p_cs_precedes, host.p_cs_precedes);
        value(money.p_sep_by_space, host.p_sep_by_space);
        value(money.n_cs_precedes, host.n_cs_precedes);
        value(money.n_sep_by_space, host.n_sep_by_space);
        value(money.p_sign_posn, host.p_sign_posn);
        value(money.n_sign_posn, host.n_sign_posn);
    });
    found.settle({});
}

} // namespace
} // namespace differential

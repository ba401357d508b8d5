// Numbers that both write, and what is read back.
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

} // namespace
} // namespace differential

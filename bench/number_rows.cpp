// Rows about numbers and money in the text of a locale, in both directions.
#include "our_locale.h"
#include "value_work.h"
#include "values.h"
#include "walk.h"

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <monetary.h>

#ifdef BENCH_WITH_ICU
#include <unicode/unum.h>
#endif

#include "vels/money.h"
#include "vels/number.h"

namespace bench {
namespace {

constexpr std::size_t room = 128;

struct number_row {
    const char *name;
    const char *locale;
    bool by_format; // rather than by a function for this one purpose
    bool grouped;
    aim wanted;
    prepared_row (*prepare)(const number_row &of);
};

// A number as text, for all who read it.
struct written {
    std::string text;
    std::u16string units;
};

std::vector<written> read_by_all(const std::vector<std::string> &texts) {
    std::vector<written> made;
    for (const std::string &text : texts) made.push_back({text, utf16_of(text)});
    return made;
}

std::string digits_of(double value) {
    char text[40]; // not by printf, which writes the decimal point of the locale
    return {text, std::to_chars(text, text + sizeof text, value).ptr};
}

std::string bytes_in_output(std::int64_t count) {
    return bytes_written(scratch_for<char>(), count);
}

#ifdef BENCH_WITH_ICU
using icu_format = std::shared_ptr<UNumberFormat>;

icu_format icu_numbers(const number_row &of, UNumberFormatStyle style, int decimals) {
    UErrorCode error = U_ZERO_ERROR;
    UNumberFormat *opened = unum_open(style, nullptr, 0, of.locale, nullptr, &error);
    if (U_FAILURE(error)) throw std::runtime_error(std::string("ICU does not open ") + of.locale);
    unum_setAttribute(opened, UNUM_FRACTION_DIGITS, decimals);
    unum_setAttribute(opened, UNUM_GROUPING_USED, of.grouped);
    return {opened, unum_close};
}

// Money has another blank before its symbol in ICU.
std::string utf8_in_output(std::int64_t count) {
    std::string text;
    for (std::int64_t i = 0; i < count; ++i) {
        char16_t unit = scratch_for<char16_t>()[i];
        append_utf8(text, unit == 0xA0 ? u' ' : unit);
    }
    return text;
}

auto icu_writing_doubles(const icu_format &format) {
    return [format](double value) {
        UErrorCode error = U_ZERO_ERROR;
        return unum_formatDouble(format.get(), value, scratch_for<UChar>(), room, nullptr, &error);
    };
}

auto icu_reading(const icu_format &format, auto parse) {
    return [=](const written &number) {
        UErrorCode error = U_ZERO_ERROR;
        auto size = static_cast<std::int32_t>(number.units.size());
        return parse(format.get(), number.units.data(), size, nullptr, &error);
    };
}
#endif

const char *host_format(const number_row &of, const char *grouped, const char *plain) {
    return of.grouped ? grouped : plain;
}

auto host_writing_integers() {
    return
        [](std::int32_t value) { return std::snprintf(scratch_for<char>(), room, "%'d", value); };
}

auto host_writing_doubles(const number_row &of) {
    return [format = host_format(of, "%'.2f", "%.2f")](double value) {
        return std::snprintf(scratch_for<char>(), room, format, value);
    };
}

prepared_row integers_to_text(const number_row &of) {
    locale_t host = host_locale(of.locale, code_set::utf8);
    vel_locale *ours = our_locale(of.locale, code_set::utf8);
    char *out = scratch_for<char>();
    auto values = make_integers();
    auto expected = results_of(values, host_writing_integers(), bytes_in_output, host);
    value_work<std::int32_t> work(of.name, values, expected);
    if (of.by_format) {
        auto run = [=](std::int32_t value) { return vel_mbsfnum(ours, out, room, "%'d", value); };
        work.add("vels", run, bytes_in_output);
    } else {
        auto run = [=](std::int32_t value) { return vel_ltombs(ours, out, room, value, 10, 1); };
        work.add("vels", run, bytes_in_output);
    }
    work.add("host", host_writing_integers(), bytes_in_output, host);
#ifdef BENCH_WITH_ICU
    icu_format format = icu_numbers(of, UNUM_DECIMAL, 0);
    auto run = [=](std::int32_t value) {
        UErrorCode error = U_ZERO_ERROR;
        return unum_format(format.get(), value, scratch_for<UChar>(), room, nullptr, &error);
    };
    work.add("ICU", run, utf8_in_output);
#endif
    return work.ready();
}

prepared_row integers_from_text(const number_row &of) {
    locale_t host = host_locale(of.locale, code_set::utf8);
    vel_locale *ours = our_locale(of.locale, code_set::utf8);
    auto values = make_integers();
    auto texts = results_of(values, host_writing_integers(), bytes_in_output, host);
    std::vector<std::string> expected;
    for (std::int32_t value : values) expected.push_back(std::to_string(value));
    auto tell = [](std::int32_t value) { return std::to_string(value); };

    value_work<written> work(of.name, read_by_all(texts), expected);
    if (of.by_format) {
        auto run = [=](const written &number) {
            std::int32_t value = -1;
            vel_mbspnum(ours, number.text.c_str(), "%'d", &value);
            return value;
        };
        work.add("vels", run, tell);
    } else {
        auto run = [=](const written &number) {
            return vel_mbstol(ours, number.text.c_str(), nullptr, 10, 1);
        };
        work.add("vels", run, tell);
    }
    auto scan = [](const written &number) {
        std::int32_t value = -1;
        std::sscanf(number.text.c_str(), "%'d", &value);
        return value;
    };
    work.add("host", scan, tell, host);
#ifdef BENCH_WITH_ICU
    work.add("ICU", icu_reading(icu_numbers(of, UNUM_DECIMAL, 0), unum_parse), tell);
#endif
    return work.ready();
}

prepared_row doubles_to_text(const number_row &of) {
    locale_t host = host_locale(of.locale, code_set::utf8);
    vel_locale *ours = our_locale(of.locale, code_set::utf8);
    char *out = scratch_for<char>();
    auto values = make_doubles();
    auto expected = results_of(values, host_writing_doubles(of), bytes_in_output, host);
    value_work<double> work(of.name, values, expected);
    auto run = [=, format = host_format(of, "%'.2f", "%.2f")](double value) {
        return vel_mbsfnum(ours, out, room, format, value);
    };
    work.add("vels", run, bytes_in_output);
    work.add("host", host_writing_doubles(of), bytes_in_output, host);
#ifdef BENCH_WITH_ICU
    work.add("ICU", icu_writing_doubles(icu_numbers(of, UNUM_DECIMAL, 2)), utf8_in_output);
#endif
    return work.ready();
}

prepared_row doubles_from_text(const number_row &of) {
    locale_t host = host_locale(of.locale, code_set::utf8);
    vel_locale *ours = our_locale(of.locale, code_set::utf8);
    auto values = make_doubles();
    auto texts = results_of(values, host_writing_doubles(of), bytes_in_output, host);
    std::vector<std::string> expected;
    for (double value : values) expected.push_back(digits_of(value));

    value_work<written> work(of.name, read_by_all(texts), expected);
    auto run = [=, grouped = of.grouped](const written &number) {
        return vel_mbstod(ours, number.text.c_str(), nullptr, grouped);
    };
    work.add("vels", run, digits_of);
    if (of.grouped) { // strtod knows no groups
        auto scan = [](const written &number) {
            double value = -1;
            std::sscanf(number.text.c_str(), "%'lf", &value);
            return value;
        };
        work.add("host", scan, digits_of, host);
    } else {
        auto read = [](const written &number) { return std::strtod(number.text.c_str(), nullptr); };
        work.add("host", read, digits_of, host);
    }
#ifdef BENCH_WITH_ICU
    work.add("ICU", icu_reading(icu_numbers(of, UNUM_DECIMAL, 2), unum_parseDouble), digits_of);
#endif
    return work.ready();
}

prepared_row money_to_text(const number_row &of) {
    locale_t host = host_locale(of.locale, code_set::utf8);
    vel_locale *ours = our_locale(of.locale, code_set::utf8);
    char *out = scratch_for<char>();
    auto hosts = [=](double value) { return strfmon_l(out, room, host, "%n", value); };
    auto values = make_doubles();
    value_work<double> work(of.name, values, results_of(values, hosts, bytes_in_output, host));
    auto run = [=](double value) { return vel_mbsfmon(ours, out, room, "%n", value); };
    work.add("vels", run, bytes_in_output);
    work.add("host", hosts, bytes_in_output);
#ifdef BENCH_WITH_ICU
    work.add("ICU", icu_writing_doubles(icu_numbers(of, UNUM_CURRENCY, 2)), utf8_in_output);
#endif
    return work.ready();
}

// German has separators of one byte, French of three.
const number_row rows_of_numbers[] = {
    {"grouped integer to text", "de_DE", false, true, aim::times_host(4), integers_to_text},
    {"grouped integer to text, French", "fr_FR", false, true, {}, integers_to_text},
    {"grouped integer to text, by format", "de_DE", true, true, aim::times_host(4),
     integers_to_text},
    {"grouped integer from text", "de_DE", false, true, aim::times_host(3), integers_from_text},
    {"grouped integer from text, French", "fr_FR", false, true, {}, integers_from_text},
    {"grouped integer from text, by format", "de_DE", true, true, aim::times_host(3),
     integers_from_text},
    {"double to text", "de_DE", true, false, aim::times_host(3.5), doubles_to_text},
    {"double from text", "de_DE", false, false, aim::times_host(2.5), doubles_from_text},
    {"grouped double to text", "de_DE", true, true, aim::times_host(3.5), doubles_to_text},
    {"grouped double from text", "de_DE", false, true, aim::times_host(2.5), doubles_from_text},
    {"money to text", "de_DE", true, true, {}, money_to_text},
};

} // namespace

std::vector<row> number_rows() {
    std::vector<row> rows;
    for (const number_row &of : rows_of_numbers)
        rows.push_back({of.name, unit::nanoseconds, of.wanted, [&of] { return of.prepare(of); }});
    return rows;
}

} // namespace bench

#include "time/parse_table.h"

namespace vel {
namespace {

using parsed = time_parsed;
constexpr hour_kind no_hours = hour_kind::none;
constexpr year_kind no_years = year_kind::none;

enum number_id : uint8_t {
    id_century,
    id_day,
    id_padded_day,
    id_hour,
    id_hour12,
    id_yearday,
    id_minute,
    id_month,
    id_second,
    id_weekday7,
    id_weekday,
    id_year,
    id_short_year,
    id_era_year,
};

// Centuries and days of the year are as wide as formatting writes them: more digits would only be
// out of range, and "%C%y" could not be read.
constexpr number_rule rules[] = {
    {&parsed::century, seen_century, 0, 0, 99, 0, 2, VEL_ETIME41, VEL_ETIME31, no_hours,
     year_kind::parts, false},
    {&parsed::day, seen_day, 0, 1, 31, 0, 2, VEL_ETIME37, VEL_ETIME27, no_hours, no_years, false},
    {&parsed::day, seen_day, 0, 1, 31, 0, 2, VEL_ETIME37, VEL_ETIME27, no_hours, no_years, true},
    {&parsed::hour, seen_hour, 0, 0, 23, 0, 2, VEL_ETIME36, VEL_ETIME26, hour_kind::of_24, no_years,
     false},
    {&parsed::hour12, seen_hour12, 0, 1, 12, 0, 2, VEL_ETIME36, VEL_ETIME26, hour_kind::of_12,
     no_years, false},
    {&parsed::yearday, seen_yearday, 0, 1, 366, -1, 3, VEL_ETIME29, VEL_ETIME29, no_hours, no_years,
     false},
    {&parsed::minute, seen_minute, 0, 0, 59, 0, 2, VEL_ETIME35, VEL_ETIME25, no_hours, no_years,
     false},
    {&parsed::month, seen_month, seen_month_name, 1, months_of_locale, -1, 2, VEL_ETIME40,
     VEL_ETIME30, no_hours, no_years, false},
    {&parsed::second, seen_second, 0, 0, 59, 0, 2, VEL_ETIME34, VEL_ETIME24, no_hours, no_years,
     false},
    {&parsed::weekday, seen_weekday, 0, 1, 7, 0, 1, VEL_ETIME38, VEL_ETIME28, no_hours, no_years,
     false},
    {&parsed::weekday, seen_weekday, 0, 0, 6, 0, 1, VEL_ETIME38, VEL_EBADLEN, no_hours, no_years,
     false},
    {&parsed::year, seen_year, 0, 0, 9999, -1900, 4, VEL_ETIME41, VEL_EBADLEN, no_hours,
     year_kind::full, false},
    {&parsed::short_year, seen_short_year, 0, 0, 99, 0, 2, VEL_ETIME41, VEL_EBADLEN, no_hours,
     year_kind::parts, false},
    {&parsed::era_year, seen_era_year, 0, 0, INT32_MAX, 0, 0, VEL_ETIME41, VEL_ETIME31, no_hours,
     year_kind::era, false},
};

constexpr parse_row number(number_id rule) {
    return {reading::number, rule != id_era_year, 0, &rules[rule]};
}
constexpr parse_row plainly(reading what) {
    return {what};
}
constexpr parse_row series(const char *parts) {
    return {reading::series, true, 0, nullptr, parts};
}
constexpr parse_row expanded(locale_text time_category::*format, uint8_t error = 0) {
    return {reading::expanded, false, error, nullptr, nullptr, format};
}
constexpr parse_row era_name(locale_text era_entry::*name) {
    return {reading::era_name, false, 0, nullptr, nullptr, nullptr, name};
}
// A number that has no form with the locale's own digits.
constexpr parse_row digits_only(number_id rule) {
    return {reading::number, false, 0, &rules[rule]};
}

template <size_t N> constexpr row_index index_of(const lettered_row (&rows)[N]) {
    row_index index{};
    for (size_t i = 1; i < N; ++i) {
        index.of[static_cast<unsigned char>(rows[i].letter)] = static_cast<uint8_t>(i);
    }
    return index;
}

} // namespace

constexpr lettered_row plain_parse_rows[] = {
    {0, {}},
    {'%', plainly(reading::percent)},
    {'A', plainly(reading::weekday)},
    {'B', plainly(reading::month_name)},
    {'C', number(id_century)},
    {'D', series("m/d/y")},
    {'F', plainly(reading::fraction)},
    {'H', number(id_hour)},
    {'I', number(id_hour12)},
    {'M', number(id_minute)},
    {'R', series("H:M")},
    {'S', number(id_second)},
    {'T', series("H:M:S")},
    {'X', expanded(&time_category::t_fmt)},
    {'Y', digits_only(id_year)},
    {'a', plainly(reading::weekday)},
    {'b', plainly(reading::month_name)},
    {'c', expanded(&time_category::d_t_fmt)},
    {'d', number(id_day)},
    {'e', number(id_padded_day)},
    {'g', digits_only(id_century)},
    {'h', plainly(reading::month_name)},
    {'i', plainly(reading::prefix)},
    {'j', number(id_yearday)},
    {'m', number(id_month)},
    {'n', plainly(reading::spaces)},
    {'p', plainly(reading::am_pm)},
    {'r', expanded(&time_category::t_fmt_ampm, VEL_ETIMEFMT)},
    {'t', plainly(reading::spaces)},
    {'u', number(id_weekday7)},
    {'w', number(id_weekday)},
    {'x', expanded(&time_category::d_fmt)},
    {'y', number(id_short_year)},
};

constexpr lettered_row era_parse_rows[] = {
    {0, {}},
    {'C', era_name(&era_entry::name)},
    {'X', expanded(&time_category::era_t_fmt)},
    {'Y', plainly(reading::era_full_year)},
    {'c', expanded(&time_category::era_d_t_fmt)},
    {'g', era_name(&era_entry::other_name)},
    {'x', expanded(&time_category::era_d_fmt)},
    {'y', number(id_era_year)},
};

constexpr row_index plain_parse_index = index_of(plain_parse_rows);
constexpr row_index era_parse_index = index_of(era_parse_rows);

} // namespace vel

#include "time/format_quick.h"

#include "time/calendar.h"
#include "vels/errors.h"

namespace vel {

constexpr time_field time_fields[] = {
    {&vel_time_work::subsecond, 0, 999999, VEL_ETIME23},
    {&vel_time_work::second, 0, 59, VEL_ETIME24},
    {&vel_time_work::minute, 0, 59, VEL_ETIME25},
    {&vel_time_work::hour, 0, 23, VEL_ETIME26},
    {&vel_time_work::day, 1, greatest_day, VEL_ETIME27},
    {&vel_time_work::month, 0, by_locale, VEL_ETIME30},
    {&vel_time_work::year, -1900, 8099, VEL_ETIME31},
    {&vel_time_work::weekday, 0, 6, VEL_ETIME28},
    {&vel_time_work::yearday, 0, by_locale, VEL_ETIME29},
    {&vel_time_work::year, INT32_MIN, INT32_MAX, VEL_ETIME31},
};

namespace {

constexpr number_form as_is = number_form::as_is;

constexpr time_number second = {field_second, as_is, 2, VEL_E2BIG};
constexpr time_number minute = {field_minute, as_is, 2, VEL_E2BIG};
constexpr time_number hour = {field_hour, as_is, 2, VEL_E2BIG};
constexpr time_number day = {field_day, as_is, 2, VEL_E2BIG};
constexpr time_number unpadded_day = {field_day, as_is, -1, VEL_E2BIG};
constexpr time_number month = {field_month, number_form::from_one, 2, VEL_E2BIG};
constexpr time_number year = {field_year, number_form::full_year, 4, VEL_ETIME41};
constexpr time_number dotted_year = {field_year, number_form::full_year, 4, VEL_E2BIG};
constexpr time_number century = {field_year, number_form::century, -1, VEL_E2BIG};
constexpr time_number short_year = {field_any_year, number_form::short_year, 2, VEL_E2BIG};
constexpr time_number checked_short_year = {field_year, number_form::short_year, 2, VEL_E2BIG};
constexpr time_number half_day_hour = {field_hour, number_form::half_day, 2, VEL_E2BIG};
constexpr time_number weekday = {field_weekday, as_is, 2, VEL_E2BIG};
constexpr time_number sunday_last = {field_weekday, number_form::sunday_last, 2, VEL_E2BIG};
constexpr time_number yearday = {field_yearday, number_form::from_one, 3, VEL_E2BIG};

enum : uint8_t { american_date, hour_and_minute, full_time };

constexpr time_conversion sign(char c) {
    return {conversion_kind::sign, c, 0, false, false, {}, nullptr, nullptr};
}
constexpr time_conversion of_kind(conversion_kind kind, time_number number = {}) {
    return {kind, 0, 0, false, false, number, nullptr, nullptr};
}
constexpr time_conversion number(time_number number) {
    return of_kind(conversion_kind::number, number);
}
// Numbers that "O" shows in the locale's own digits.
constexpr time_conversion digits(time_number number,
                                 conversion_kind kind = conversion_kind::number) {
    return {kind, 0, 0, true, false, number, nullptr, nullptr};
}
constexpr time_conversion series(uint8_t which) {
    return {conversion_kind::series, 0, which, true, false, {}, nullptr, nullptr};
}
constexpr time_conversion name(time_number number, text_list time_category::*list) {
    return {conversion_kind::name, 0, 0, false, false, number, list, nullptr};
}
constexpr time_conversion expansion(locale_text time_category::*format, bool is_of_eras = false) {
    return {conversion_kind::expansion, 0, 0, false, is_of_eras, {}, nullptr, format};
}

constexpr lettered_conversion era_rows[] = {
    {'c', expansion(&time_category::era_d_t_fmt, true)},
    {'C', of_kind(conversion_kind::era_name)},
    {'g', of_kind(conversion_kind::era_other_name)},
    {'x', expansion(&time_category::era_d_fmt, true)},
    {'X', expansion(&time_category::era_t_fmt, true)},
    {'y', of_kind(conversion_kind::era_year)},
    {'Y', of_kind(conversion_kind::era_full_year, year)},
};
constexpr lettered_conversion dotted_rows[] = {
    {'F', of_kind(conversion_kind::dotted, {field_subsecond, as_is, 2, VEL_E2BIG})},
    {'Y', number(dotted_year)},
};

} // namespace

constexpr lettered_conversion plain_conversions[] = {
    {0, of_kind(conversion_kind::unknown)},
    {'%', sign('%')},
    {'n', sign('\n')},
    {'t', sign('\t')},
    {'a', name(weekday, &time_category::abbreviated_days)},
    {'A', name(weekday, &time_category::days)},
    {'b', name(month, &time_category::abbreviated_months)},
    {'h', name(month, &time_category::abbreviated_months)},
    {'B', name(month, &time_category::months)},
    {'p', of_kind(conversion_kind::half_day, hour)},
    {'d', digits(day)},
    {'e', digits(unpadded_day, conversion_kind::blank_day)},
    {'H', digits(hour)},
    {'I', digits(half_day_hour)},
    {'M', digits(minute)},
    {'S', digits(second)},
    {'m', digits(month)},
    {'y', digits(short_year)},
    {'Y', number(year)},
    {'C', digits(century)},
    {'g', number(century)},
    {'j', digits(yearday)},
    {'u', digits(sunday_last)},
    {'w', digits(weekday)},
    {'D', series(american_date)},
    {'R', series(hour_and_minute)},
    {'T', series(full_time)},
    {'F', of_kind(conversion_kind::fraction, {field_subsecond, as_is, 6, VEL_E2BIG})},
    {'i', of_kind(conversion_kind::prefix)},
    {'c', expansion(&time_category::d_t_fmt)},
    {'x', expansion(&time_category::d_fmt)},
    {'X', expansion(&time_category::t_fmt)},
    {'r', expansion(&time_category::t_fmt_ampm)},
};

namespace {

constexpr row_numbers number_rows() {
    row_numbers rows = {};
    uint8_t number = 0;
    for (const lettered_conversion &row : plain_conversions) {
        rows.of[static_cast<unsigned char>(row.letter)] = number++;
    }
    return rows;
}

template <size_t N>
const time_conversion &find(const lettered_conversion (&rows)[N], uint32_t letter) {
    for (const lettered_conversion &row : rows) {
        if (static_cast<unsigned char>(row.letter) == letter) return row.conversion;
    }
    return plain_conversions[0].conversion;
}

} // namespace

constexpr row_numbers plain_rows = number_rows();

namespace {

// What of a conversion can be done at once. Months are looked at again, with what the locale has.
constexpr quick_conversion make_quick(const time_conversion &from) {
    const time_field &field = time_fields[from.number.field];
    quick_conversion quick = {field.member, from.list, nullptr, field.low, 0, 0, quick_kind::none};
    bool is_month = from.number.field == field_month;
    if (from.kind == conversion_kind::name) {
        quick.kind = is_month ? quick_kind::month : quick_kind::weekday;
        quick.span = static_cast<uint32_t>(is_month ? 19 : field.high);
        return quick;
    }
    if (from.kind == conversion_kind::series) {
        constexpr const char *letters[] = {"m/d/y", "H:M", "H:M:S"};
        quick.series = letters[from.series];
        quick.kind = quick_kind::series;
        return quick;
    }
    if (from.kind != conversion_kind::number) return quick;
    if (is_month) {
        quick.span = 11;
        quick.base = 1;
        quick.kind = quick_kind::month_number;
        return quick;
    }
    switch (from.number.form) {
    case number_form::as_is:
        quick.base = static_cast<uint32_t>(field.low);
        break;
    case number_form::full_year:
    case number_form::short_year:
        quick.member = &vel_time_work::year;
        quick.low = -year_base;
        break;
    default:
        return quick;
    }
    bool is_year = quick.member == &vel_time_work::year;
    quick.span = static_cast<uint32_t>(is_year ? 9999 : field.high - field.low);
    if (from.number.precision == 2) quick.kind = quick_kind::two_digits;
    if (from.number.precision == 4) quick.kind = quick_kind::four_digits;
    return quick;
}
constexpr quick_table make_quick_table() {
    quick_table table = {};
    for (const lettered_conversion &row : plain_conversions) {
        if (row.letter)
            table.of[static_cast<unsigned char>(row.letter)] = make_quick(row.conversion);
    }
    return table;
}

} // namespace

constexpr quick_table quick_conversions = make_quick_table();

const number_series series_of_numbers[] = {
    {3, {{month, '/'}, {day, '/'}, {checked_short_year, 0}}},
    {2, {{hour, ':'}, {minute, 0}, {}}},
    {3, {{hour, ':'}, {minute, ':'}, {second, 0}}},
};

int32_t highest_of(const vel_locale *locale, field_id field) {
    if (field == field_month) {
        int32_t months = locale->time.months.count;
        return (months > 0 ? months : 12) - 1;
    }
    // The year of a calendar with leap months has up to 385 days.
    if (field == field_yearday) return locale->time.calendar == calendar_hebrew ? 384 : 365;
    return time_fields[field].high;
}

const time_conversion &era_conversion(uint32_t letter) {
    return find(era_rows, letter);
}
const time_conversion &dotted_conversion(uint32_t letter) {
    return find(dotted_rows, letter);
}

} // namespace vel

// The Hebrew calendar: years of twelve or thirteen months that follow the mean moon, the first day
// of which is put off by up to two days.
//
// Years are counted here from 3744 of the Hebrew era, days from a day of the calendar's own and not
// from that of calendar.h. From Shevat or Adar I on all months have a fixed length, so that dates
// are reckoned from the end of a year as well as from its beginning.
#include "time/calendar.h"
#include "time/date_range.h"

namespace vel {
namespace {

constexpr int32_t first_year = 3744;
constexpr int32_t longest_common_year = 355;

constexpr date_range gregorian_range = {{1, 0, 1}, {10000, 1, 23}};
constexpr date_range hebrew_range = {{3761, 3, 18}, {14213, 12, greatest_day}};

enum : int32_t { saturday, sunday, monday, tuesday, wednesday, thursday, friday };

// Time is reckoned in parts, 1080 of which are an hour.
constexpr int32_t parts_in_day = 25920;
constexpr int32_t parts_beyond_28_days = 39673; // of a mean month
constexpr int32_t parts_at_first_moon = 8339;

// Whether a year of this place in the cycle of nineteen would otherwise become too long, or the one
// before it too short.
bool is_late(int32_t place, int32_t weekday, int32_t parts) {
    return (place < 12 && weekday == tuesday && parts > 16403) ||
           (place < 7 && weekday == monday && parts > 23268);
}

// The day that a year begins on.
int32_t new_year(int32_t year) {
    int32_t cycle = 7 * year + 1;
    int32_t months = 12 * year + cycle / 19;
    int64_t parts = int64_t{months} * parts_beyond_28_days + parts_at_first_moon;
    int32_t days = 28 * months - 2 + static_cast<int32_t>(parts / parts_in_day);
    int32_t in_week = static_cast<int32_t>(parts % (7 * parts_in_day));
    int32_t weekday = in_week / parts_in_day;
    if (is_late(cycle % 19, weekday, in_week % parts_in_day)) {
        ++days;
        ++weekday;
    }
    bool is_put_off = weekday == sunday || weekday == wednesday || weekday == friday;
    return days + is_put_off;
}

int32_t year_length(int32_t year) {
    return new_year(year + 1) - new_year(year);
}

// The month of a date that may have only the position of a name; -1 when the year has none such.
int32_t month_of(const vel_time_work &date, bool is_leap) {
    if (date.month != -1) return date.month;
    int32_t name = date.month_name;
    if (!is_leap) return name <= 11 ? name : -1;
    if (name == 12 || name == 13) return name - 7;
    return name >= 6 && name <= 11 ? name + 1 : name;
}

// Puts month and day in place for a day of a year, from 0.
void set_month(vel_time_work &date, int32_t day, int32_t length) {
    constexpr int32_t fixed_days = 236; // at the end of every year
    int32_t varying_days = length - fixed_days;
    if (day < varying_days) {
        int32_t four_months = length % 10 + 114;
        date.month = date.month_name = 4 * day / four_months;
        date.day = day - (date.month * four_months + 3) / 4 + 1;
        return;
    }
    day -= varying_days;
    int32_t month = 2 * day / 59;
    bool is_leap = length > longest_common_year;
    date.month = month + 4 + is_leap;
    date.month_name = month + 4;
    if (is_leap && date.month_name < 6) date.month_name = month + 12;
    date.day = day - (59 * month + 1) / 2 + 1;
}

// The day of a date, counted from 1 March of the year before year 1.
int32_t day_from_march(const vel_time_work &date, int32_t month, int32_t year, int32_t length) {
    int32_t day = date.day + new_year(year) - 6002;
    bool is_leap = length > longest_common_year;
    day += is_leap && month >= 6 ? (59 * (month - 1) + 1) / 2 + 30 : (59 * month + 1) / 2;
    if (length % 10 > 4 && month > 1) ++day; // Heshvan has 30 days
    if (length % 10 < 4 && month > 2) --day; // Kislev has 29
    return day;
}

} // namespace

int32_t hebrew_of_gregorian(vel_time_work &date) {
    int32_t error = check_gregorian(date, gregorian_range);
    if (error != 0) return error;
    int32_t year = date.year + year_base;
    int32_t month = date.month - 1;
    if (month < 1) {
        month += 12;
        --year;
    }
    int32_t day =
        367 * month / 12 + date.day + 5970 + 365 * year + year / 4 - year / 100 + year / 400;

    int32_t hebrew_year = year + 16;
    int32_t begin = new_year(hebrew_year);
    int32_t end = new_year(hebrew_year + 1);
    while (end <= day) {
        begin = end;
        end = new_year(++hebrew_year + 1);
    }
    set_month(date, day - begin, end - begin);
    date.year = hebrew_year + first_year - year_base;
    date.yearday = day - begin;
    date.weekday = (day + 1) % 7;
    return 0;
}

int32_t gregorian_of_hebrew(vel_time_work &date) {
    if (!has_year_of(hebrew_range, date)) return VEL_ETIME31;
    int32_t hebrew_year = date.year + year_base - first_year;
    int32_t length = year_length(hebrew_year);
    bool is_leap = length > longest_common_year;
    int32_t month = month_of(date, is_leap);
    int32_t error = check_date(date, month, 12 + is_leap, hebrew_range);
    if (error != 0) return error;

    year_and_day split = split_day_number(day_from_march(date, month, hebrew_year, length));
    int32_t year = split.year;
    int32_t counted = (split.day + 245) * 12 / 367;
    date.month = counted - 6;
    if (date.month > 11) {
        date.month = counted - 18;
        ++year;
    }
    date.month_name = date.month;
    date.day = split.day - ((counted - 7) * 367 / 12 - 30) + 1;
    date.year = year - year_base;
    date.weekday = weekday_of(date.day, date.month, year);
    date.yearday = day_of_year(date.day, date.month, year);
    return 0;
}

} // namespace vel

// The tabular Islamic calendar: years of twelve months in a cycle of thirty years, eleven of which
// have a day more. A month's days before it in the year are (59 * month + 1) / 2.
#include "time/calendar.h"
#include "time/date_range.h"

namespace vel {
namespace {

constexpr int32_t days_in_cycle = 10631;
constexpr int32_t years_in_cycle = 30;
constexpr int32_t epoch = 227013; // 18 July 622
constexpr int32_t last_month = 11;

constexpr int32_t year_lengths[years_in_cycle] = {
    354, 355, 354, 354, 355, 354, 355, 354, 354, 355, 354, 354, 355, 354, 354,
    355, 354, 355, 354, 354, 355, 354, 354, 355, 354, 355, 354, 354, 355, 354,
};

constexpr date_range gregorian_range = {{622, 6, 18}, {10323, 9, 20}};
constexpr date_range islamic_range = {{1, 0, 1}, {9999, last_month, greatest_day}};

constexpr int32_t days_before_month(int32_t month) {
    return (59 * month + 1) / 2;
}

// Days from the epoch to the first day of a year.
int32_t days_before_year(int32_t year) {
    int32_t cycles = (year - 1) / years_in_cycle;
    int32_t days = cycles * days_in_cycle;
    for (int32_t i = 0; i < (year - 1) % years_in_cycle; ++i) days += year_lengths[i];
    return days;
}

} // namespace

int32_t islamic_of_gregorian(vel_time_work &date) {
    int32_t error = check_gregorian(date, gregorian_range);
    if (error != 0) return error;
    int32_t days = day_number(date.day, date.month, date.year + year_base) - epoch;

    int32_t year = days / days_in_cycle * years_in_cycle;
    int32_t rest = days % days_in_cycle;
    for (int32_t i = 0; year_lengths[i] <= rest; ++i, ++year) rest -= year_lengths[i];
    ++year;

    date.month = 2 * rest / 59;
    if (date.month > last_month) date.month = last_month; // the 355th day of a long year
    date.month_name = date.month;
    date.day = rest - days_before_month(date.month) + 1;
    date.year = year - year_base;
    date.yearday = rest;
    date.weekday = (days + 4) % 7; // the epoch was a Thursday
    return 0;
}

int32_t gregorian_of_islamic(vel_time_work &date) {
    int32_t month = date.month != -1 ? date.month : date.month_name;
    int32_t error = check_date(date, month, last_month + 1, islamic_range);
    if (error != 0) return error;

    int32_t days = days_before_year(date.year + year_base) + days_before_month(month);
    year_and_day split = split_day_number(days + date.day - 1 + epoch);
    int32_t year = split.year + 1;
    date.month = 11;
    while (day_of_year(1, date.month, year) > split.day) --date.month;
    date.month_name = date.month;
    date.day = split.day - day_of_year(1, date.month, year) + 1;
    date.year = year - year_base;
    date.weekday = weekday_of(date.day, date.month, year);
    date.yearday = split.day;
    return 0;
}

} // namespace vel

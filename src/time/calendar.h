// Days, months and years of the calendars. Days are counted from 1 January of year 1 of the
// Gregorian calendar, which is day 0, and that calendar is used before its introduction as well.
#pragma once

#include "vels/time.h"

namespace vel {

constexpr int32_t year_base = 1900; // what the year of a time record is counted from

// What a day of the month may be before its month is known.
constexpr int32_t greatest_day = 99;

inline bool vel_is_leap_year(int32_t year) {
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

// Months are counted from 0, days from 1 and years in full, from year 1 on. A day beyond the end of
// its month is one of the following month.
int32_t day_of_year(int32_t day, int32_t month, int32_t year);
int32_t day_number(int32_t day, int32_t month, int32_t year);
// Since Sunday.
int32_t weekday_of(int32_t day, int32_t month, int32_t year);

// A day number as years and days of years that begin on 1 January of year 1, both counted from 0.
// With another first day, 1 March of a year before a leap year, it does the same.
struct year_and_day {
    int32_t year;
    int32_t day;
};
year_and_day split_day_number(int32_t number);

// The conversions between the Gregorian calendar and the others. The time of day is left as it is.
// 0, or the error number: VEL_ETIME27 for the day, VEL_ETIME30 for the month, VEL_ETIME31 for a
// year, or a date, that the calendars do not have in common.
int32_t hebrew_of_gregorian(vel_time_work &date);
int32_t gregorian_of_hebrew(vel_time_work &date);
int32_t islamic_of_gregorian(vel_time_work &date);
int32_t gregorian_of_islamic(vel_time_work &date);

} // namespace vel

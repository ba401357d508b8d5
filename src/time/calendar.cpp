#include "time/calendar.h"

#include "ext/error.h"
#include "record/record.h"

namespace vel {
namespace {

constexpr int32_t days_before_month[] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};

using conversion = int32_t (*)(vel_time_work &date);

struct calendar_conversions {
    conversion from_gregorian;
    conversion to_gregorian;
};

int32_t unchanged(vel_time_work &) {
    return 0;
}
int32_t not_converted(vel_time_work &) {
    return VEL_ECALENDAR;
}

// By calendar number. Without a calendar the TIME category is null, and its dates are Gregorian.
constexpr calendar_conversions conversions[] = {
    {unchanged, unchanged},
    {unchanged, unchanged},
    {hebrew_of_gregorian, gregorian_of_hebrew},
    {islamic_of_gregorian, gregorian_of_islamic},
    {not_converted, not_converted},
};

int32_t convert(vel_locale *locale, conversion calendar_conversions::*way,
                const vel_time_work *from, vel_time_work *to) {
    vel_time_work date = *from;
    int32_t error = (conversions[locale->time.calendar].*way)(date);
    *to = error == 0 ? date : vel_time_work{};
    return error == 0 ? 0 : fail(locale, error);
}

} // namespace

int32_t day_of_year(int32_t day, int32_t month, int32_t year) {
    return days_before_month[month] + day - 1 + (month >= 2 && vel_is_leap_year(year));
}

int32_t day_number(int32_t day, int32_t month, int32_t year) {
    int32_t before = year - 1;
    return before * 365 + before / 4 - before / 100 + before / 400 + day_of_year(day, month, year);
}

int32_t weekday_of(int32_t day, int32_t month, int32_t year) {
    return (day_number(day, month, year) + 1) % 7;
}

year_and_day split_day_number(int32_t number) {
    constexpr int32_t days_in_400_years = 146097;
    constexpr int32_t days_in_century = 36524;
    constexpr int32_t days_in_4_years = 1461;
    int32_t century = (4 * number + 3) / days_in_400_years;
    number -= century / 4 * days_in_400_years + century % 4 * days_in_century;
    int32_t year = (4 * number + 3) / days_in_4_years;
    number -= year / 4 * days_in_4_years + year % 4 * 365;
    return {100 * century + year, number};
}

} // namespace vel

using namespace vel;

int32_t vel_cal_gregorian_to_local(vel_locale *locale, const vel_time_work *from,
                                   vel_time_work *to) {
    return convert(locale, &calendar_conversions::from_gregorian, from, to);
}

int32_t vel_cal_local_to_gregorian(vel_locale *locale, const vel_time_work *from,
                                   vel_time_work *to) {
    return convert(locale, &calendar_conversions::to_gregorian, from, to);
}

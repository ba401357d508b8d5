// The dates between which a calendar is converted.
#pragma once

#include "time/calendar.h"
#include "vels/errors.h"

namespace vel {

struct calendar_date {
    int32_t year;
    int32_t month; // from 0
    int32_t day;

    bool operator<(const calendar_date &other) const {
        if (year != other.year) return year < other.year;
        return month != other.month ? month < other.month : day < other.day;
    }
};

// Both belong to it.
struct date_range {
    calendar_date first, last;
};

inline bool has_year_of(const date_range &range, const vel_time_work &date) {
    return date.year >= range.first.year - year_base && date.year <= range.last.year - year_base;
}

// 0, or the number of what is wrong with a date in the range's own calendar.
inline int32_t check_date(const vel_time_work &date, int32_t month, int32_t month_count,
                          const date_range &range) {
    if (!has_year_of(range, date)) return VEL_ETIME31;
    if (month < 0 || month >= month_count) return VEL_ETIME30;
    if (date.day < 1 || date.day > greatest_day) return VEL_ETIME27;
    calendar_date asked = {date.year + year_base, month, date.day};
    return asked < range.first || range.last < asked ? VEL_ETIME31 : 0;
}

inline int32_t check_gregorian(const vel_time_work &date, const date_range &range) {
    return check_date(date, date.month, 12, range);
}

} // namespace vel

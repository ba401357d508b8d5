// Looking up the era of a date, and the number of a year in its era.
#pragma once

#include "record/record.h"

namespace vel {

inline bool is_before(const era_date &a, const era_date &b) {
    if (a.year != b.year) return a.year < b.year;
    return a.month != b.month ? a.month < b.month : a.day < b.day;
}

// Whether a Gregorian date belongs to an era.
inline bool holds(const era_entry &era, const era_date &date) {
    return !is_before(date, era.first) && !is_before(era.last, date);
}

// The era that a Gregorian date belongs to; the year in full, the month from 1. Null when there is
// none. Where eras overlap it is the first in the locale's list.
const era_entry *vel_find_era(const vel_locale *locale, int32_t year, int32_t month, int32_t day);

// The number of a year within an era.
int64_t year_in_era(const era_entry &era, int32_t year);
// The same as it is shown: without a sign, and as large as fits.
inline uint32_t shown_year(const era_entry &era, int32_t year) {
    int64_t number = year_in_era(era, year);
    if (number < 0) number = -number;
    return number > UINT32_MAX ? UINT32_MAX : static_cast<uint32_t>(number);
}

} // namespace vel

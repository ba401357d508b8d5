// What parsing has read, before anything is made of it.
#pragma once

#include "record/record.h"

namespace vel {

enum : uint32_t {
    seen_subsecond = 0x0001,
    seen_second = 0x0002,
    seen_minute = 0x0004,
    seen_hour12 = 0x0008,
    seen_am_pm = 0x0010,
    seen_hour = 0x0020,
    seen_day = 0x0040,
    seen_weekday = 0x0080,
    seen_yearday = 0x0100,
    seen_month = 0x0200,      // by number
    seen_month_name = 0x0400, // by name; of the two the later one counts
    seen_century = 0x2000,
    seen_short_year = 0x4000,
    seen_year = 0x8000,
    seen_era_year = 0x10000,
};
constexpr uint32_t seen_any_month = seen_month | seen_month_name;
constexpr uint32_t seen_plain_year = seen_century | seen_short_year | seen_year;
constexpr uint32_t seen_any_year = seen_plain_year | seen_era_year;

// Which clock and which count of years were read last.
enum class hour_kind : uint8_t { none, of_24, of_12 };
enum class year_kind : uint8_t { none, full, parts, era };

struct time_parsed {
    uint32_t seen;
    int32_t subsecond;
    int32_t second;
    int32_t minute;
    int32_t hour;
    int32_t hour12; // 1 to 12
    int32_t am_pm;  // 0 or 1
    int32_t day;
    int32_t weekday;
    int32_t yearday; // from 0
    int32_t month;   // from 0
    int32_t month_name;
    int32_t century;
    int32_t short_year;
    int32_t year; // since 1900
    int32_t era_year;
    hour_kind hours;
    year_kind years;

    const text_list *weekday_names;   // the list that the weekday was found in, null for numbers
    const era_entry *era;             // one whose name was read, or null
    locale_text era_entry::*era_name; // which of its names

    bool has(uint32_t bits) const { return seen & bits; }
};

// Whether two names of a locale are one and the same.
inline bool same_text(const locale_text &a, const locale_text &b) {
    const vel_wchar *x = a.wide, *y = b.wide;
    for (; *x && *x == *y; ++x) ++y;
    return *x == *y;
}

} // namespace vel

// Dates and times as they are typed and printed: the ISO form.
#pragma once

#include <string>

#include "vels/types.h"

namespace vel_tool {

constexpr char when_help[] = "2026-11-21, 2026-11-21T13:00:05.25, @SECONDS since 1970\n"
                             "(UTC), or now (local time)";

// The record of a date or time in one of the forms above, with weekday and day of year. Gives up on
// anything else and on days that do not exist.
vel_time_record record_of(const std::string &when);

// The same day at midnight.
vel_time_record midnight_of(vel_time_record record);

// 2026-11-21T13:00:05, with the fraction of a second when there is one.
std::string iso_text(const vel_time_record &record);

} // namespace vel_tool

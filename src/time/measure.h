// How long the text of a time format can become.
#pragma once

#include "vels/types.h"

namespace vel {

struct format_extent {
    int32_t characters;
    int32_t bytes;
};

// Adds up the longest text that each conversion of a format can give, whatever the time. 0, or -1
// with VEL_EFORMAT for a null format, VEL_E2BIG for a sum beyond 32 bits, and otherwise as
// formatting fails for the format.
int32_t measure_time_format(vel_locale *locale, const char *format, format_extent &out);
int32_t measure_time_format(vel_locale *locale, const vel_wchar *format, format_extent &out);

} // namespace vel

// Matching a time format with text.
#pragma once

#include "time/parsed.h"

namespace vel {

// Reads the fields of a format into `out`, which the caller has zeroed. A pointer to what was not
// read, or null with the error number stored.
template <typename Unit>
const Unit *vel_ptime_scan(vel_locale *locale, const Unit *input, const Unit *format,
                           time_parsed &out);

} // namespace vel

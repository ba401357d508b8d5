// The list of eras, made from the POSIX texts of the TIME category.
#pragma once

#include "record/record.h"

namespace vel {

// Makes locale->time_derived.eras anew from the texts `direction:offset:start:end:name:format`,
// behind which a second name may follow; they are written in characters of the code set. Where the
// end lies before the start, the entry runs into the past: it is kept with its dates in calendar
// order. An entry that cannot be read is left out. 0, or -1 with VEL_ENOMEM.
int32_t build_era_list(vel_locale *locale);

} // namespace vel

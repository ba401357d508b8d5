// The records that stand in for a handle when none could be made.
#pragma once

#include "record/record.h"

namespace vel {

// The static record for VEL_ENOMEM or VEL_ENOFILE, its number stored. Whoever hands it out puts
// the null state of every category in it, so that a host that goes on with it meets an empty
// locale and no loose memory.
vel_locale *error_record(int32_t number);

bool is_error_record(const vel_locale *locale);

} // namespace vel

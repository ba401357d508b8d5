// The trees of names that time parsing searches.
#pragma once

#include "record/record.h"

namespace vel {

// Makes them anew from the names of the TIME category and of the list of eras: one host block in
// locale->time_derived, which the release of the category or of the locale frees. 0, or -1 with
// VEL_ENOMEM.
int32_t build_time_names(vel_locale *locale);

} // namespace vel

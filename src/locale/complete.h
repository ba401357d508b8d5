// Completing a locale: what is derived from all its categories together.
#pragma once

#include "record/record.h"

namespace vel {

// Makes the wide copies of the names of code sets and files, and the trees of names that time
// parsing searches. 0, or -1 with VEL_ENOMEM.
int32_t complete_locale(vel_locale *locale);

} // namespace vel

// Completing a locale: what is derived from all its categories together.
#pragma once

#include "record/record.h"

namespace vel {

// Makes the wide copies of the names of code sets and files, the list of eras, the trees of names
// that time parsing searches, and the strings of information queries. 0, or -1 with VEL_ENOMEM.
int32_t complete_locale(vel_locale *locale);

} // namespace vel

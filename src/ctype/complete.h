// What is derived from a CTYPE category once it has been read or copied.
#pragma once

#include "record/record.h"

namespace vel {

// Chooses how strings of the code set are decoded and, for a single-byte code set, makes the flat
// tables of classes and case; those of an earlier code set are freed. 0, or -1 with VEL_ENOMEM, and
// then the locale has no flat tables.
int32_t complete_ctype(vel_locale *locale);

} // namespace vel

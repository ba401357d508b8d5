// What is derived from a category that has been read: the second half of loading it.
#pragma once

#include "record/record.h"

namespace vel {

// Each gives at least 1 on success. Otherwise an error number has been stored: VEL_ENOMEM,
// VEL_EILSEQ for a string that is not text of the code set, and VEL_ENOERA (with 0, not -1) for a
// code set without characters. VEL_CTYPE is loaded before the others.
int32_t initialise_ctype(vel_locale *locale);
int32_t initialise_collate(vel_locale *locale);
int32_t initialise_numeric(vel_locale *locale);
int32_t initialise_monetary(vel_locale *locale);
int32_t initialise_time(vel_locale *locale);
int32_t initialise_messages(vel_locale *locale);

// The ready forms of NUMERIC and MONETARY, from their wide strings.
void mark_numeric(vel_locale *locale);
void mark_monetary(vel_locale *locale);

} // namespace vel

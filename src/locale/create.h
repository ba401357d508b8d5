// Making and destroying records.
#pragma once

#include "record/record.h"

namespace vel {

// A record whose categories are null; null when memory cannot be had.
vel_locale *make_record();

// The static record for an error number, ready to be handed out.
vel_locale *ready_error_record(int32_t number);

// Frees a record and what it owns: with its categories, or without them, as when others point at
// them or they belong to others.
void destroy_record(vel_locale *locale);
void destroy_record_alone(vel_locale *locale);

} // namespace vel

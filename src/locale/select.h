// Setting categories of a locale from the files that a specification names.
#pragma once

#include "record/record.h"

namespace vel {

constexpr size_t max_specification = 311;

// Replaces one category, or all for VEL_ALL, and completes the locale. Files are looked for in the
// directory, or by the data-file search when it is null. False with an error number stored.
bool set_categories(vel_locale *locale, int32_t category, const char *specification,
                    const char *directory);

} // namespace vel

// Reading locale objects.
#pragma once

#include "record/record.h"

namespace vel {

// Reads all sections of an object into a locale whose categories are null. False with an error
// number stored, VEL_ELOCALE when there is no better one; what failed is null then, what was read
// before it stays.
bool read_object(void *stream, vel_locale *locale);

// Reads one section of an object, whose code set has to be that of VEL_CTYPE, into a null category.
// False with an error number stored where there is one; the category is null then.
bool read_category(void *stream, vel_locale *locale, int32_t index);

} // namespace vel

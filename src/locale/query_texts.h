// The strings that information queries hand out and no category holds as such.
#pragma once

#include "record/record.h"

namespace vel {

// Makes them anew from the TIME and MONETARY categories, in locale->query_texts. They are text of
// the code set: a locale without one has empty ones. 0, or -1 with VEL_ENOMEM.
int32_t build_query_texts(vel_locale *locale);

} // namespace vel

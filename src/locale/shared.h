// The locales that several callers share: process-wide, guarded by nobody.
#pragma once

#include "record/record.h"

namespace vel {

// The locale that is shared under this name, counted once more; null when there is none.
vel_locale *take_shared(const char *name);
// Enters a locale with a count of 1. False when memory cannot be had.
bool share(vel_locale *locale, const char *name);

enum class sharing {
    none, // the locale is not shared
    held, // others hold it still
    over, // that was the last; its entry is gone
};
// Counts a locale down.
sharing give_back(const vel_locale *locale);

// Records the list with vel_diag.
void dump_shared();

} // namespace vel

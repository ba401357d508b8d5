// What the fuzzers share: the locales of a data pack, and claims that have to hold.
#pragma once

#include <cstdio>
#include <cstdlib>

#include "vels.h"

inline vel_locale *load(const char *specification) {
    vel_locale *locale = nullptr;
    if (vel_lc_load(&locale, specification, -1, nullptr) == 0) return locale;
    fprintf(stderr, "no %s: set CORVANEDIR to a data pack\n", specification);
    exit(1);
}

inline void check(bool holds, const char *what) {
    if (holds) return;
    fprintf(stderr, "failed: %s\n", what);
    abort();
}

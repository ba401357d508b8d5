// Environment variables of the host.
#pragma once

#include "vels/host.h"

namespace vel {

// The value of a variable, or null when it is unset or empty.
inline const char *vel_getenv_nonempty(const char *name) {
    const char *value = _vel_ext_getenv(name);
    return value && *value ? value : nullptr;
}

} // namespace vel

// Locales of the data pack.
#pragma once

#include <cstdlib>
#include <memory>
#include <string>

#include "vels/locale.h"

namespace vel_test {

struct unload {
    void operator()(vel_locale *locale) const { vel_lc_unload(locale); }
};
using loaded_locale = std::unique_ptr<vel_locale, unload>;

// Null when it cannot be loaded.
inline loaded_locale load_from_pack(const std::string &specification) {
    unsetenv("VEL_PATH");
    setenv("CORVANEDIR", VELS_TEST_DATA_ROOT, 1);
    vel_locale *locale;
    const bool loaded = vel_lc_load(&locale, specification.c_str(), -1, nullptr) == 0;
    loaded_locale owner(locale);
    return loaded ? std::move(owner) : nullptr;
}

} // namespace vel_test

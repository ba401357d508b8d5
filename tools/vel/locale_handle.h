// Loading locales by the names that people type.
#pragma once

#include <memory>
#include <string>

#include "vels.h"

namespace vel_tool {

struct locale_release {
    void operator()(vel_locale *locale) const { vel_lc_unload(locale); }
};
using locale_handle = std::unique_ptr<vel_locale, locale_release>;

inline int32_t error_of(const vel_locale *locale) {
    return *reinterpret_cast<const int32_t *>(locale);
}
inline void clear_error(vel_locale *locale) {
    *reinterpret_cast<int32_t *>(locale) = 0;
}

// How loading went: a locale, or the number of the error.
struct load_result {
    locale_handle locale;
    int32_t error;
};

// Loads by a locale name or by anything that the library takes. An empty name stands for the
// defaults of the environment: VEL_ALL, the variable of each category, VEL_LANG, default.lco.
load_result try_load(const std::string &name);

// The same; gives up with a message that says what was tried and what to do.
locale_handle load_locale(const std::string &name);

// What went wrong in the last try_load, and what to do.
std::string explain_load(const std::string &name, int32_t error);

} // namespace vel_tool

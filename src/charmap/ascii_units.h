// Whether text can be read and written as ASCII where it is.
#pragma once

#include <type_traits>

#include "charmap/character.h"
#include "record/portable.h"

namespace vel {

// Whether units below 0x80 are always characters of ASCII.
template <typename Unit> bool has_ascii_units(const vel_locale *locale) {
    if (locale->portable != &ascii_codes) return false;
    if constexpr (std::is_same_v<Unit, vel_wchar>) return true;
    const sealed_table &table = characters_of(locale);
    return !table.empty() && table.shape != table_shape::general;
}

} // namespace vel

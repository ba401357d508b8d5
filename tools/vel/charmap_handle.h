// Charmaps, and what they call a character.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "vels.h"

namespace vel_tool {

struct charmap_release {
    void operator()(vel_charmap *charmap) const { vel_cm_unload(charmap); }
};
using charmap_handle = std::unique_ptr<vel_charmap, charmap_release>;

inline int32_t error_of(const vel_charmap *charmap) {
    return *reinterpret_cast<const int32_t *>(charmap);
}

// Null when the code set has no charmap that can be loaded.
charmap_handle try_load_charmap(uint16_t number);

// By the name of a code set; gives up with a message that says what was tried and what to do.
charmap_handle load_charmap(const std::string &name);

struct character_names {
    std::vector<std::string> names; // in brackets, the one that is written first
    std::u32string code_points;     // that the names tell; several for a sequence

    // "U+00E4 <adiaeresis>", as far as known.
    std::string description() const;
};

character_names names_of(vel_charmap *charmap, std::string_view character);

// "U+00E4", "U+304B U+309A"
std::string code_point_text(std::u32string_view code_points);

} // namespace vel_tool

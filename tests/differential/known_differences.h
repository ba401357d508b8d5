// Every difference from the host that is known and meant; docs/differences.md gives the reasons
// under the same names. A row has to be met exactly: a difference that is not here fails, and so
// does a row that no longer happens.
#pragma once

#include "differential/findings.h"

namespace differential {

inline constexpr std::string_view every_byte = "every byte is a character";
inline constexpr std::string_view last_code_point = "nothing above U+10FFFF";
inline constexpr std::string_view listed_only = "only what the charmap lists";
inline constexpr std::string_view composed = "composed letters stay apart";
inline constexpr std::string_view unassigned_width = "columns of unassigned characters";
inline constexpr std::string_view five_classes = "five classes beside the standard ones";

inline constexpr known_difference known_differences[] = {
    {"ANSI_X3.4-1968", "only ours", 0x80, 0xFF, 128, every_byte},
    {"ISO-8859-3", "only ours", 0xA5, 0xF0, 7, every_byte},
    {"ISO-8859-6", "only ours", 0xA1, 0xFF, 45, every_byte},
    {"ISO-8859-7", "only ours", 0xAE, 0xFF, 3, every_byte},
    {"ISO-8859-8", "only ours", 0xA1, 0xFF, 36, every_byte},
    {"CP1250", "only ours", 0x81, 0x98, 5, every_byte},
    {"CP1251", "only ours", 0x98, 0x98, 1, every_byte},
    {"CP1252", "only ours", 0x81, 0x9D, 5, every_byte},
    {"CP1255", "only ours", 0x81, 0xFF, 23, every_byte},
    {"KOI8-T", "only ours", 0x88, 0xBE, 19, every_byte},
    {"RK1048", "only ours", 0x98, 0x98, 1, every_byte},
    {"TIS-620", "only ours", 0x80, 0xFF, 41, every_byte},
    {"ARMSCII-8", "only ours", 0xA1, 0xFF, 2, every_byte},
    {"UTF-8", "only host", 0xF4908080, 0xF7BFBFBF, 983040, last_code_point},
    {"GB18030", "only host", 0x90308232, 0xE3329A35, 867029, listed_only},
    {"BIG5-HKSCS", "only host", 0x8862, 0x88A5, 4, listed_only},
    {"GB18030", "columns", 0x81398138, 0x84318633, 69, unassigned_width},
    // By their places in own_names: combining, combining_level3, jspace.
    {"ja_JP", "class left out", 0, 2, 3, five_classes},
};

} // namespace differential

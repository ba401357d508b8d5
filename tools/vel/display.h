// Text of any code set as a terminal can show it.
#pragma once

#include <string>
#include <string_view>

#include "vel/code_set.h"
#include "vel/style.h"

namespace vel_tool {

// "C3 A4"
std::string hex_bytes(std::string_view bytes);

// Text of a locale: UTF-8 as it stands with what cannot be seen written <U+00A0>; of other code
// sets the ASCII characters, and \xNN for everything else.
std::string printable(const code_set &codes, std::string_view text);

// One character for a column of a table, with the columns it takes.
cell printable_character(const code_set &codes, std::string_view bytes, vel_wchar value);

} // namespace vel_tool

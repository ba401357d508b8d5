#pragma once

#include <cstdint>
#include <string>

#include "velc/source/charmap.h"

namespace velc {

// A charmap object (.cmo): every character of the code set with its symbolic names. The name in the
// head is the caller's. Throws tool_error for a charmap without characters.
std::string write_charmap(const charmap &codeset, std::string_view name, std::uint16_t number);

} // namespace velc

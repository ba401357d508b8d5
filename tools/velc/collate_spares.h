#pragma once

// Byte sequences that no text of a code set holds.

#include <cstddef>
#include <vector>

#include "velc/source/charmap.h"

namespace velc {

// Whether spare_bytes() may take the character of a single-byte code set for lack of a free byte.
bool may_be_borrowed(char32_t code);

// So many sequences. They begin with a byte that begins no character; in a single-byte code set
// they are single bytes: those without a character first, then controls, the rarest first, never
// the null character. Throws tool_error when there are not enough.
std::vector<byte_sequence> spare_bytes(const charmap &codeset, std::size_t count);

} // namespace velc

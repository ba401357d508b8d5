// One item of symbolic text: a name in angle brackets.
#pragma once

#include "charmap/charmap_record.h"

namespace vel {

// Writes the item of a name, terminated, if it takes no more than `space` bytes. The bytes that it
// takes, the terminator included.
int32_t write_item(char *output, int32_t space, const char *name, uint32_t length);

// The same for a single name and for the name of a character of a range.
int32_t write_item(char *output, int32_t space, const charmap_names &names,
                   const charmap_symbol &symbol);
int32_t write_item(char *output, int32_t space, const charmap_names &names,
                   const charmap_range &range, coded_character character);

// The same for the name that a character is written as. 0 when it has none.
int32_t write_item(char *output, int32_t space, const charmap_names &names,
                   coded_character character);

// Reads the item at `text`: the bytes it takes, or -1 when none stands there or the charmap does
// not have the name.
int32_t read_item(const charmap_names &names, const char *text, coded_character &character);

// Reads the character at `bytes`, of which n (at least 1) may be looked at. 0, or VEL_EILSEQ, or
// VEL_EINVAL when it goes on behind them.
int32_t read_coded(const vel_charmap &charmap, const char *bytes, int32_t n,
                   coded_character &character);

} // namespace vel

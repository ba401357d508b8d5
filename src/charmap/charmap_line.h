// The lines of a charmap object that name characters:
//
//   s <code> <name> <length> <bytes>
//   r <code> <name> <first index> <count> <length> <bytes>
#pragma once

#include "charmap/charmap_names.h"

namespace vel {

struct charmap_line {
    const char *name;
    uint32_t name_length;
    coded_character first;
    bool is_range;
    uint32_t first_index; // of a range
    uint32_t count;       // 1 for a single character
};

// Reads a decimal number with an optional sign, white space before it; false when there is none or
// it takes more than 32 bits.
bool scan_number(const char *&cursor, int32_t &number);

// Reads a line, terminated and with its newline if the file has one. False when it is no such line
// or names more characters or higher numbers than there can be. What follows the bytes is ignored.
bool scan_line(const char *text, charmap_line &line);

} // namespace vel

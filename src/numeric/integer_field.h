// Integers in formatted text: writing one under a directive, and reading one.
#pragma once

#include "charmap/char_reader.h"
#include "charmap/char_writer.h"
#include "numeric/directive.h"

namespace vel {

struct integer_value {
    uint32_t magnitude;
    bool negative;
    int32_t base; // 2, 4, 8, 10 or 16
};

// Writes an integer under a directive. When it does not fit nothing of it is written and the writer
// fails with VEL_E2BIG.
template <typename Unit>
void vel_put_integer(vel_locale *locale, char_writer<Unit> &out, const integer_value &value,
                     const directive &how);

struct scanned_integer {
    uint32_t magnitude; // the greatest there is when the digits stand for more
    int32_t digits;     // how many were read; 0: no number stands here
    bool negative;
};

// Reads an optional sign (the locale's numeric sign strings, or ASCII "-" and "+") and digits of a
// base, at most `most` characters of both; 0 or less: no limit. The reader is left behind what was
// read, or where it was when there is no digit.
template <typename Unit>
scanned_integer vel_scan_integer(vel_locale *locale, char_reader<Unit> &input, int32_t base,
                                 int32_t most);

} // namespace vel

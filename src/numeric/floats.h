// Floating numbers in locale text.
#pragma once

#include "charmap/char_reader.h"

namespace vel {

enum class number_kind : bool { numeric, monetary };

struct scanned_double {
    double value;
    int32_t used;      // characters; 0: no number stands here
    bool out_of_range; // too large (the value is infinite), or too small to be exact
};

// Reads a number with its sign, at most `most` characters of it (INT32_MAX: no limit), by the
// signs, the decimal point and, when `grouped`, the separators of one category. White space before
// it is not skipped. The reader is left behind the number, or where it was when there is none; that
// stores VEL_EINVAL for a separator that is missing or for 257 grouped characters, VEL_ENOCONV for
// a decimal point without digits, and nothing otherwise.
template <typename Unit>
scanned_double scan_double(vel_locale *locale, char_reader<Unit> &text, int32_t most, bool grouped,
                           number_kind kind);

} // namespace vel

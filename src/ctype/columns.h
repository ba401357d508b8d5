// Display columns: 1 for a printable character, 2 for one of the locale's class "full_width", 0 for
// the null character. None of these stores an error number.
#pragma once

#include "record/record.h"

namespace vel {

// Columns of one character: 0, 1 or 2; -1 for one that is not printable.
int32_t columns_of(const vel_locale *locale, vel_wchar value);
// The same of the character at `character`.
int32_t columns_at(const vel_locale *locale, const char *character);

// Columns of `count` values, those that are not printable counted as one column each.
int32_t text_columns(const vel_locale *locale, const vel_wchar *text, int32_t count);

enum class columns_end : uint8_t {
    reached,       // the terminator or the limit
    not_printable, // at a character that is there but cannot be displayed
    invalid,       // at bytes or a value that are no character
};

struct columns_walk {
    int32_t columns; // of the characters before the end, INT32_MAX for more
    columns_end end;
};

// Columns of a terminated string, of which at most `characters` are counted that begin within the
// first `units` values or bytes.
columns_walk walk_columns(const vel_locale *locale, const vel_wchar *text, size_t units,
                          size_t characters);
columns_walk walk_columns(const vel_locale *locale, const char *text, size_t units,
                          size_t characters);

} // namespace vel

// Questions that the readers of numbers, money and dates ask of a character.
#pragma once

#include "charmap/char_reader.h"
#include "ctype/lookup.h"
#include "record/portable.h"
#include "vels/ctype.h"

namespace vel {

// Whether a character is in a class. One that does not belong to the code set is in none, and
// stores VEL_EILSEQ.
inline bool in_class(vel_locale *locale, vel_wchar value, int32_t mask) {
    return vel_im_iswctype(locale, value, mask) != 0;
}

// The value of a digit, -1 for any other character.
inline int32_t digit_of(const vel_locale *locale, vel_wchar value) {
    uint32_t digit = static_cast<uint32_t>(portable_of(locale, value)) - '0';
    return digit <= 9 ? static_cast<int32_t>(digit) : -1;
}

// Steps over the characters of a class.
template <typename Unit>
void skip_class(vel_locale *locale, char_reader<Unit> &text, int32_t mask) {
    while (vel_wchar c = text.peek()) {
        if (!in_class(locale, c, mask)) return;
        text.next();
    }
}

} // namespace vel

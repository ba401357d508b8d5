// The two ways in which code sets place the portable characters.
#pragma once

#include "record/record.h"

namespace vel {

// Every code set whose letters and digits have their ASCII codes.
extern const portable_codes ascii_codes;
// The EBCDIC code pages. Letters, digits and most signs have one place in all of them.
extern const portable_codes ebcdic_codes;

// The ASCII code of a portable character, 0 for any other.
inline unsigned char portable_of(const vel_locale *locale, vel_wchar value) {
    return value < 256 ? locale->portable->ascii_of[value] : 0;
}

// The value of a portable character given by its ASCII code.
inline vel_wchar value_of(const vel_locale *locale, char ascii) {
    return locale->portable->code_of[static_cast<unsigned char>(ascii)];
}

} // namespace vel

// Directives of money: %[=f][^][+|(][!][-][width][#digits][.digits]i|n
#pragma once

#include "ext/error.h"
#include "numeric/format_digits.h"

namespace vel {

struct money_directive {
    vel_wchar fill = 0; // before the digits, up to `left_digits` of them
    bool grouped = true;
    bool signs = false;        // + was given
    bool parentheses = false;  // around negative amounts, whatever the locale has
    bool sign_strings = false; // in reading: no parentheses, whatever the locale has
    bool symbol = true;
    bool left = false;
    bool international = false;
    int32_t width = 0;         // in columns
    int32_t left_digits = -1;  // -1: not given
    int32_t right_digits = -1; // -1: those of the currency
};

// Reads a directive behind "%": -1 with VEL_ENUMFMT for "#" or "." without digits and for "+" with
// "(", with VEL_EFORMAT when the format ends in it, with VEL_ETIMEFMT for an unknown conversion.
template <typename Unit>
int32_t read_money_directive(vel_locale *locale, char_reader<Unit> &format, money_directive &out);

} // namespace vel

// The directives of format strings: what may stand between "%" and the letter of a conversion. The
// languages of numbers, money and time share it.
#pragma once

#include <cstdarg>

#include "charmap/char_reader.h"

namespace vel {

enum : uint32_t {
    flag_group = 0x001,     // '
    flag_left = 0x002,      // -
    flag_plus = 0x004,      // +
    flag_space = 0x008,     // blank
    flag_zero = 0x010,      // 0
    flag_upper = 0x080,     // upper-case digits and prefix
    flag_alternate = 0x100, // #
    flag_suppress = 0x400,  // a width of * when parsing: read the item, do not store it
};

struct directive {
    uint32_t flags = 0;
    int32_t width = 0;      // in columns
    int32_t precision = -1; // -1: not given
    vel_wchar pad = 0;      // set by vel_parse_directive: the blank or the digit 0 of the code set
    int32_t justification = 0; // -1: left, 0: zero padding or not given

    bool has(uint32_t flag) const { return flags & flag; }
};

// The arguments of a formatting call.
struct argument_list {
    va_list list;
};

// Reads flags, width and precision into `out`, whose members are the defaults. The reader stands
// behind "%" and is left at the first character that belongs to none of them. With arguments, "*"
// takes the next int; without, a width of "*" sets flag_suppress and a precision of "*" is none.
// Numbers beyond 32 bits are as large as fits. 0, or -1 with VEL_ENUMFMT.
template <typename Unit>
int32_t vel_parse_directive(vel_locale *locale, char_reader<Unit> &format, directive &out,
                            argument_list *arguments);

} // namespace vel

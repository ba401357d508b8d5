// The conversions of the number language, for writing and for reading.
#pragma once

#include "numeric/directive.h"
#include "record/portable.h"

namespace vel {

enum class conversion_kind : uint8_t { none, string, character, floating, integer };

struct conversion {
    char letter;
    conversion_kind kind;
    uint8_t base;
    bool is_signed;
    char style; // of floating numbers: f, e or g
    bool upper;
};

// Octal, base-4, binary and hexadecimal numbers have signs: "%x" of -1 is "-1".
inline constexpr conversion conversions[] = {
    {'d', conversion_kind::integer, 10, true, 0, false},
    {'s', conversion_kind::string, 0, false, 0, false},
    {'f', conversion_kind::floating, 0, true, 'f', false},
    {'c', conversion_kind::character, 0, false, 0, false},
    {'i', conversion_kind::integer, 10, true, 0, false},
    {'u', conversion_kind::integer, 10, false, 0, false},
    {'x', conversion_kind::integer, 16, true, 0, false},
    {'X', conversion_kind::integer, 16, true, 0, true},
    {'o', conversion_kind::integer, 8, true, 0, false},
    {'q', conversion_kind::integer, 4, true, 0, false},
    {'b', conversion_kind::integer, 2, true, 0, false},
    {'e', conversion_kind::floating, 0, true, 'e', false},
    {'E', conversion_kind::floating, 0, true, 'e', true},
    {'g', conversion_kind::floating, 0, true, 'g', false},
    {'G', conversion_kind::floating, 0, true, 'g', true},
};

struct number_directive : directive {
    bool is_long = false;
    bool is_short = false;
    conversion convert = {};
};

// Reads the rest of a directive, behind "%": -1 with VEL_ENUMFMT, with VEL_EFORMAT when the format
// ends in it, and with VEL_ETIMEFMT for an unknown conversion.
template <typename Unit>
int32_t read_directive(vel_locale *locale, char_reader<Unit> &format, number_directive &out,
                       argument_list *arguments) {
    if (vel_parse_directive(locale, format, out, arguments) < 0) return -1;
    char letter = static_cast<char>(portable_of(locale, format.peek()));
    if (letter == 'l' || letter == 'L' || letter == 'h' || letter == 'H') {
        out.is_long = letter == 'l' || letter == 'L';
        out.is_short = !out.is_long;
        format.next();
        letter = static_cast<char>(portable_of(locale, format.peek()));
    }
    if (format.peek() == 0) return fail(locale, format.failed() ? VEL_EILSEQ : VEL_EFORMAT);
    format.next();
    for (const conversion &known : conversions) {
        if (known.letter != letter) continue;
        out.convert = known;
        if (known.upper) out.flags |= flag_upper;
        return 0;
    }
    return fail(locale, VEL_ETIMEFMT);
}

} // namespace vel

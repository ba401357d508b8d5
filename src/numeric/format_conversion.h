// The conversions of the number language, for writing and for reading.
#pragma once

#include "charmap/ascii_units.h"
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

inline const conversion *find_conversion(char letter) {
    for (const conversion &known : conversions) {
        if (known.letter == letter) return &known;
    }
    return nullptr;
}

inline void set_conversion(number_directive &out, const conversion &convert) {
    out.convert = convert;
    if (convert.upper) out.flags |= flag_upper;
}

// Reads what most directives are: a letter, with a grouping flag or a precision of one digit before
// it. False when there is more to it.
template <typename Unit>
bool read_plain_directive(vel_locale *locale, const Unit *&text, number_directive &out) {
    if (!has_ascii_units<Unit>(locale)) return false;
    const Unit *at = text;
    const bool grouped = *at == '\'';
    if (grouped) ++at;
    const bool precise = *at == '.' && at[1] >= '0' && at[1] <= '9';
    if (precise) at += 2;
    const conversion *known =
        *at > 0 && *at < 0x80 ? find_conversion(static_cast<char>(*at)) : nullptr;
    if (!known) return false;
    if (grouped) out.flags |= flag_group;
    if (precise) out.precision = static_cast<int32_t>(at[-1] - '0');
    out.pad = ' ';
    set_conversion(out, *known);
    text = at + 1;
    return true;
}

// Reads the rest of a directive, behind "%", and steps over it: -1 with VEL_ENUMFMT, with
// VEL_EFORMAT when the format ends in it, and with VEL_ETIMEFMT for an unknown conversion.
template <typename Unit>
int32_t read_directive(vel_locale *locale, const Unit *&text, number_directive &out,
                       argument_list *arguments) {
    if (read_plain_directive(locale, text, out)) return 0;
    char_reader<Unit> format(locale, text);
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
    text = format.at();
    const conversion *known = find_conversion(letter);
    if (!known) return fail(locale, VEL_ETIMEFMT);
    set_conversion(out, *known);
    return 0;
}

} // namespace vel

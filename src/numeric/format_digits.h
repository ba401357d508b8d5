// What fields of numbers are made of: signs and points of the locale, runs of digits in groups, and
// the numbers inside directives.
#pragma once

#include "charmap/char_reader.h"
#include "charmap/char_writer.h"
#include "ctype/character_class.h"
#include "ctype/columns.h"
#include "numeric/grouping.h"

namespace vel {

inline int32_t display_columns(const vel_locale *locale, vel_wchar value) {
    if (portable_of(locale, value)) return 1;
    return text_columns(locale, &value, 1);
}

inline int32_t display_columns(const vel_locale *locale, const vel_wchar *text) {
    int32_t columns = 0;
    while (*text) columns += display_columns(locale, *text++);
    return columns;
}

// How many characters of padding fill so many columns, to the nearest.
inline int32_t pad_count(const vel_locale *locale, int64_t columns, vel_wchar pad) {
    if (columns <= 0) return 0;
    int32_t each = display_columns(locale, pad);
    if (each < 1) each = 1;
    int64_t count = (columns + each / 2) / each;
    return static_cast<int32_t>(count < INT32_MAX ? count : INT32_MAX);
}

// A sign or a point: the string of the locale or, when that is empty, a portable character. Without
// a string it is nothing.
struct mark {
    const locale_text *text = nullptr;
    char otherwise = 0;

    bool own() const { return text && text->wide[0] != 0; }
    int32_t columns(const vel_locale *locale) const {
        return own() ? display_columns(locale, text->wide) : otherwise != 0;
    }
    // In characters.
    int32_t length() const {
        if (!own()) return otherwise != 0;
        int32_t count = 0;
        while (text->wide[count]) ++count;
        return count;
    }
    template <typename Unit> void put(char_writer<Unit> &out) const {
        if (own()) return out.put(*text);
        if (otherwise) out.put_ascii(otherwise);
    }
};

// A locale without signs must not lose the sign of a number: it has those of the code set.
inline mark negative_mark(const vel_locale *locale) {
    return {&locale->conventions.numeric.negative_sign, '-'};
}
inline mark positive_mark(const vel_locale *locale) {
    return {&locale->conventions.numeric.positive_sign, '+'};
}

// The digits before the decimal point with the separators between them.
struct digit_groups {
    const vel_grouping *sizes = nullptr; // null: no grouping
    const locale_text *separator = nullptr;

    int32_t separators(int32_t digits) const {
        return sizes && separator->wide[0] ? count_separators(*sizes, digits) : 0;
    }
    int32_t separator_columns(const vel_locale *locale, int32_t digits) const {
        int32_t count = separators(digits);
        return count ? count * display_columns(locale, separator->wide) : 0;
    }
    // Of a group that has a separator to its left, counted from the decimal point.
    int32_t size(int32_t group) const {
        return sizes->sizes[group < sizes->count ? group : sizes->count - 1];
    }

    template <typename Unit>
    void put(char_writer<Unit> &out, const char *digits, int32_t count) const {
        int32_t left = separators(count);
        int32_t first = count;
        for (int32_t group = 0; group < left; ++group) first -= size(group);
        out.put_ascii(digits, static_cast<size_t>(first));
        digits += first;
        while (left-- > 0) {
            int32_t n = size(left);
            out.put(*separator);
            out.put_ascii(digits, static_cast<size_t>(n));
            digits += n;
        }
    }
};

inline digit_groups numeric_groups(const vel_locale *locale) {
    const vel_numeric_conventions &numeric = locale->conventions.numeric;
    return {&numeric.grouping, &numeric.thousands_sep};
}

// Reads a number inside a directive; one beyond 32 bits is as large as fits. False when no digit
// stands here.
template <typename Unit>
bool read_count(const vel_locale *locale, char_reader<Unit> &format, int32_t &out) {
    int32_t digit = digit_of(locale, format.peek());
    if (digit < 0) return false;
    int64_t value = 0;
    for (; digit >= 0; digit = digit_of(locale, format.peek())) {
        value = value * 10 + digit;
        if (value > INT32_MAX) value = INT32_MAX;
        format.next();
    }
    out = static_cast<int32_t>(value);
    return true;
}

} // namespace vel

// The way through a format string that the readers of numbers and money share: white space in it
// stands for any white space, other text for itself, and what follows "%" is handed to the language
// that the format is written in.
#pragma once

#include "charmap/ascii_units.h"
#include "charmap/char_reader.h"
#include "ctype/character_class.h"
#include "ext/error.h"

namespace vel {

enum class item : uint8_t {
    stored,  // counts
    skipped, // read, not to be stored
    stopped, // could not be read: the items before it are the result
    failed,  // the format is wrong
};

// Portable characters have their classes in all locales, and in a null one.
inline bool is_space(vel_locale *locale, vel_wchar value) {
    if (char c = static_cast<char>(portable_of(locale, value))) {
        return c == ' ' || (c >= '\t' && c <= '\r');
    }
    return value != 0 && in_class(locale, value, VEL_CLASS_SPACE);
}

template <typename Text> void skip_space(vel_locale *locale, Text &text) {
    while (is_space(locale, text.peek())) text.next();
}

inline item stop(vel_locale *locale, int32_t number) {
    set_error(locale, number);
    return item::stopped;
}

// Stops where something is missing from the input, or is no character at all.
template <typename Unit>
item stop_at(vel_locale *locale, const char_reader<Unit> &input, int32_t number) {
    return stop(locale, input.failed() ? VEL_EILSEQ : number);
}

// Reads input under a format; gives the items stored, or -1 with the error number. `read_item` is
// called with the format behind "%", over whose directive it steps, and with the input.
template <typename Unit, typename Read>
int32_t parse_from(vel_locale *locale, const Unit *input_text, const Unit *at, Read read_item) {
    set_error(locale, 0);
    const bool in_ascii = has_ascii_units<Unit>(locale);
    const vel_wchar percent = value_of(locale, '%');
    char_reader<Unit> input(locale, input_text);
    for (int32_t count = 0;;) {
        bool is_directive = in_ascii && *at == '%' && at[1] != '%';
        if (is_directive) {
            ++at;
        } else {
            char_reader<Unit> format(locale, at);
            const vel_wchar c = format.peek();
            if (c == 0) return format.failed() ? fail(locale, VEL_EILSEQ) : count;
            if (is_space(locale, c)) {
                skip_space(locale, format);
                skip_space(locale, input);
            } else {
                format.next();
                is_directive = c == percent && format.peek() != percent;
            }
            if (!is_directive && !is_space(locale, c)) {
                if (input.peek() != c) {
                    return fail(locale, input.failed() ? VEL_EILSEQ : VEL_ETIMEFMT);
                }
                input.next();
                if (c == percent) format.next();
            }
            at = format.at();
        }
        if (!is_directive) continue;
        item read = read_item(at, input);
        if (read == item::failed) return -1;
        if (read == item::stopped) return count;
        count += read == item::stored;
    }
}

} // namespace vel

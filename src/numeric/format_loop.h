// The way through a format string that numbers and money share: text is copied, "%%" is a percent
// sign, and what follows another "%" is handed to the language that the format is written in.
#pragma once

#include "charmap/char_reader.h"
#include "charmap/char_writer.h"

namespace vel {

// Copies text as far as a character or its end.
template <typename Unit>
void put_until(const vel_locale *locale, char_writer<Unit> &out, char_reader<Unit> &format,
               vel_wchar end) {
    // A new reader stays in registers, where a copy would wait for the members just stored.
    char_reader<Unit> at(locale, format.at());
    while (at.peek() && at.peek() != end) at.next();
    if (at.at() == format.at()) return;
    out.put_units(format.at(), static_cast<size_t>(at.at() - format.at()));
    format = at;
}

// `put_directive` is called with the reader behind "%" and gives -1 with an error number stored, or
// 0; what the writer could not take is noticed here.
template <typename Unit, typename Put>
int32_t run_format(vel_locale *locale, char_writer<Unit> &out, const Unit *text,
                   Put put_directive) {
    const vel_wchar percent = value_of(locale, '%');
    char_reader<Unit> format(locale, text);
    while (format.peek()) {
        put_until(locale, out, format, percent);
        if (format.peek() == percent) {
            format.next();
            if (format.peek() == percent) {
                out.put(percent);
                format.next();
            } else if (put_directive(out, format) < 0) {
                return -1;
            }
        }
        if (out.error() != 0) return fail(locale, out.error());
    }
    return format.failed() ? fail(locale, VEL_EILSEQ) : 0;
}

// Wide buffers have room for the terminator behind their limit, multibyte ones within their size.
template <typename Unit> int32_t room_for_text(const vel_locale *locale, int32_t size) {
    if constexpr (std::is_same_v<Unit, vel_wchar>) return size;
    if (size < 0) return -1;
    return size - characters_of(locale).shortest;
}

template <typename Unit>
int32_t terminate(const vel_locale *locale, Unit *buffer, const char_writer<Unit> &out) {
    Unit *end = buffer + out.written();
    if constexpr (std::is_same_v<Unit, vel_wchar>) {
        *end = 0;
    } else {
        put_terminator(characters_of(locale), as_bytes(end));
    }
    return out.written();
}

// Formats into a buffer of the caller and terminates it. Everything that is written counts, and
// nothing passes the end of the buffer: signs, blanks and special values too.
template <typename Unit, typename Put>
int32_t format_into(vel_locale *locale, Unit *buffer, int32_t size, const Unit *format,
                    Put put_directive) {
    char_writer<Unit> out(locale, buffer, room_for_text<Unit>(locale, size));
    if (out.error() != 0) return fail(locale, out.error());
    if (run_format(locale, out, format, put_directive) < 0) return -1;
    return terminate(locale, buffer, out);
}

} // namespace vel

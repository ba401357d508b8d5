// The way through a format string that numbers and money share: text is copied, "%%" is a percent
// sign, and what follows another "%" is handed to the language that the format is written in.
#pragma once

#include "charmap/ascii_units.h"
#include "charmap/char_reader.h"
#include "charmap/char_writer.h"

namespace vel {

// Copies ASCII as far as a "%".
template <typename Unit> const Unit *put_ascii_run(char_writer<Unit> &out, const Unit *text) {
    const Unit *at = text;
    while (*at != 0 && *at != '%' && static_cast<std::make_unsigned_t<Unit>>(*at) < 0x80) ++at;
    if (at != text) out.put_units(text, static_cast<size_t>(at - text));
    return at;
}

// Copies text as far as a character or its end.
template <typename Unit>
void put_until(char_writer<Unit> &out, char_reader<Unit> &format, vel_wchar end) {
    const Unit *begin = format.at();
    while (format.peek() && format.peek() != end) format.next();
    out.put_units(begin, static_cast<size_t>(format.at() - begin));
}

// `put_directive` is called with the text behind "%", steps over the directive and gives -1 with an
// error number stored, or 0; what the writer could not take is noticed here.
template <typename Unit, typename Put>
int32_t run_format(vel_locale *locale, char_writer<Unit> &out, const Unit *text,
                   Put put_directive) {
    const bool in_ascii = has_ascii_units<Unit>(locale);
    const vel_wchar percent = value_of(locale, '%');
    for (;;) {
        if (in_ascii) {
            text = put_ascii_run(out, text);
            if (*text == 0) break;
        }
        if (in_ascii && *text == '%' && text[1] != '%') {
            ++text;
            if (put_directive(out, text) < 0) return -1;
        } else {
            char_reader<Unit> format(locale, text);
            put_until(out, format, percent);
            if (format.failed()) {
                return fail(locale, out.error() != 0 ? out.error() : VEL_EILSEQ);
            }
            if (format.peek() == 0) break;
            format.next();
            text = format.at();
            if (format.peek() == percent) {
                out.put(percent);
                format.next();
                text = format.at();
            } else if (put_directive(out, text) < 0) {
                return -1;
            }
        }
        if (out.error() != 0) return fail(locale, out.error());
    }
    return out.error() != 0 ? fail(locale, out.error()) : 0;
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

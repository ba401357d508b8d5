// The formatting engine of numbers and its two faces.
#include "charmap/char_writer.h"
#include "numeric/format_conversion.h"
#include "numeric/format_double.h"
#include "numeric/format_loop.h"
#include "numeric/integer_field.h"
#include "vels/number.h"

namespace vel {
namespace {

integer_value next_integer(argument_list &arguments, const number_directive &how) {
    int32_t value = va_arg(arguments.list, int32_t);
    if (how.is_short) value = how.convert.is_signed ? int16_t(value) : uint16_t(value);
    bool negative = how.convert.is_signed && value < 0;
    uint32_t magnitude = static_cast<uint32_t>(value);
    return {negative ? 0 - magnitude : magnitude, negative, how.convert.base};
}

template <typename Unit, typename Source>
void put_from(char_writer<Unit> &out, const char_reader<Source> &from) {
    if constexpr (std::is_same_v<Source, char>) {
        out.put(from.peek());
    } else {
        out.put_any(from.peek());
    }
}

// The columns of at most `most` characters, counted no further than the width of the field.
template <typename Source>
int32_t field_columns(const vel_locale *locale, char_reader<Source> text, int32_t most,
                      int32_t width) {
    int32_t columns = 0;
    for (; most > 0 && columns < width && text.peek(); --most, text.next()) {
        columns += display_columns(locale, text.peek());
    }
    return columns;
}

template <typename Unit, typename Source>
void put_text(vel_locale *locale, char_writer<Unit> &out, const Source *text, int32_t most,
              const number_directive &how) {
    char_reader<Source> from(locale, text);
    const vel_wchar pad = how.has(flag_left) ? value_of(locale, ' ') : how.pad;
    const int32_t columns = field_columns(locale, from, most, how.width);
    const int32_t count = pad_count(locale, int64_t{how.width} - columns, pad);
    if (!how.has(flag_left)) out.fill(pad, count);
    for (; most > 0 && from.peek() && out.error() == 0; --most, from.next()) put_from(out, from);
    if (most > 0 && from.failed()) out.fail_with(VEL_EILSEQ);
    if (how.has(flag_left)) out.fill(pad, count);
}

template <typename Unit>
void put_string(vel_locale *locale, char_writer<Unit> &out, argument_list &arguments,
                const number_directive &how) {
    const int32_t most = how.precision < 0 ? INT32_MAX : how.precision;
    const void *text = va_arg(arguments.list, const void *);
    if (!text) return out.fail_with(VEL_EFAULT);
    if (how.is_long) return put_text(locale, out, static_cast<const vel_wchar *>(text), most, how);
    put_text(locale, out, static_cast<const char *>(text), most, how);
}

// A null pointer is no character.
template <typename Unit>
void put_character_field(vel_locale *locale, char_writer<Unit> &out, argument_list &arguments,
                         const number_directive &how) {
    if (how.is_long) {
        vel_wchar text[] = {va_arg(arguments.list, vel_wchar), 0};
        return put_text(locale, out, text, 1, how);
    }
    const char *character = va_arg(arguments.list, const char *);
    const bool is_any = character && (*character || characters_of(locale).shortest > 1);
    put_text(locale, out, is_any ? character : "\0\0\0", is_any ? 1 : 0, how);
}

template <typename Unit>
int32_t put_directive(vel_locale *locale, char_writer<Unit> &out, const Unit *&format,
                      argument_list &arguments) {
    number_directive how;
    if (read_directive(locale, format, how, &arguments) < 0) return -1;
    switch (how.convert.kind) {
    case conversion_kind::integer:
        vel_put_integer(locale, out, next_integer(arguments, how), how);
        break;
    case conversion_kind::floating:
        put_double(locale, out, va_arg(arguments.list, double), how.convert.style, how);
        break;
    case conversion_kind::character:
        put_character_field(locale, out, arguments, how);
        break;
    case conversion_kind::string:
        put_string(locale, out, arguments, how);
        break;
    case conversion_kind::none:
        break;
    }
    return 0;
}

template <typename Unit>
int32_t vel_fnum_core(vel_locale *locale, Unit *buffer, int32_t size, const Unit *format,
                      argument_list &arguments) {
    return format_into(locale, buffer, size, format,
                       [&](char_writer<Unit> &out, const Unit *&directive_text) {
                           return put_directive(locale, out, directive_text, arguments);
                       });
}

} // namespace
} // namespace vel

using namespace vel;

int32_t vel_wcsfnum(vel_locale *locale, vel_wchar *wide, int32_t limit, const vel_wchar *format,
                    ...) {
    argument_list arguments;
    va_start(arguments.list, format);
    int32_t count = vel_fnum_core(locale, wide, limit, format, arguments);
    va_end(arguments.list);
    return count;
}

int32_t vel_mbsfnum(vel_locale *locale, char *bytes, int32_t size, const char *format, ...) {
    argument_list arguments;
    va_start(arguments.list, format);
    int32_t count = vel_fnum_core(locale, bytes, size, format, arguments);
    va_end(arguments.list);
    return count;
}

// In a single-byte code set every value below 256 is a byte, one without a character too.
int32_t vel_get_mbstring(vel_locale *locale, char *bytes, const vel_wchar *wide, int32_t size) {
    char_writer<char> out(locale, bytes, room_for_text<char>(locale, size));
    for (; *wide && out.error() == 0; ++wide) {
        if (locale->single_byte && *wide < 256) {
            out.put(*wide);
        } else {
            out.put_any(*wide);
        }
    }
    return out.error() != 0 ? fail(locale, out.error()) : terminate(locale, bytes, out);
}

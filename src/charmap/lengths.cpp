// Lengths and terminators of whole strings.
#include "charmap/spans.h"
#include "vels/multibyte.h"

namespace vel {
namespace {

// A terminated string measured up to its null character; `end` is null at an invalid character.
struct extent {
    const unsigned char *end;
    size_t characters;
};

extent measure_string(const vel_locale *locale, const char *string) {
    const unsigned char *at = as_bytes(string);
    if (locale->single_byte) {
        size_t bytes = strlen(string);
        return {at + bytes, bytes};
    }
    const sealed_table &table = characters_of(locale);
    count_span *count = kernels().of(table).count;
    span_state state(table);
    size_t characters = 0;
    for (;;) {
        if (size_t span = span_before_terminator(table, at, text_window)) {
            span_progress done = count(state, at, span);
            at += done.read;
            characters += done.written;
        }
        walk_end end = table.walk(at);
        if (!is_end(end.cell)) return {nullptr, 0};
        if (is_null_character(at, end.used)) return {at, characters};
        at += end.used;
        ++characters;
    }
}

int32_t count_counted(vel_locale *locale, const unsigned char *at, const unsigned char *end) {
    const sealed_table &table = characters_of(locale);
    size_t characters = 0;
    if (is_end(table.cells()[0])) {
        span_state state(table);
        span_progress done = kernels().of(table).count(state, at, static_cast<size_t>(end - at));
        at += done.read;
        characters += done.written;
    }
    // What is left: a last character that goes beyond the end or is invalid, or the whole text
    // where null characters are longer. Those are stepped over as terminators.
    for (; at < end; ++characters) {
        walk_end last = table.walk(at);
        if (!is_end(last.cell)) return fail(locale, VEL_EILSEQ);
        at += is_null_character(at, last.used) ? table.shortest : last.used;
    }
    return at == end ? static_cast<int32_t>(characters) : fail(locale, VEL_EILSEQ);
}

} // namespace
} // namespace vel

using namespace vel;

int32_t vel_mbsterm(vel_locale *locale, char *out) {
    return put_terminator(characters_of(locale), as_bytes(out));
}

int32_t vel_ismbsterm(vel_locale *locale, const char *bytes) {
    const sealed_table &table = characters_of(locale);
    return at_terminator(table, as_bytes(bytes)) ? table.shortest : 0;
}

int32_t vel_mbsbytes(vel_locale *locale, const char *string) {
    if (!string) return 0;
    extent text = measure_string(locale, string);
    if (!text.end) return fail_zero(locale, VEL_EILSEQ);
    return static_cast<int32_t>(text.end - as_bytes(string)) + vel_mb_loc_min(locale);
}

int32_t vel_im_mbslen(vel_locale *locale, const char *string) {
    if (!string) return 0;
    extent text = measure_string(locale, string);
    return text.end ? static_cast<int32_t>(text.characters) : fail(locale, VEL_EILSEQ);
}

int32_t tuk_vel_im_mbfslen(vel_locale *locale, const char *string, int32_t nbytes) {
    if (nbytes == -1) {
        int32_t size = vel_mbsbytes(locale, string);
        nbytes = size - vel_mb_loc_min(locale);
    }
    if (nbytes < 0) return fail(locale, VEL_EILSEQ);
    if (locale->single_byte) return nbytes;
    return count_counted(locale, as_bytes(string), as_bytes(string) + nbytes);
}

int32_t vel_wcslen(const vel_wchar *wide) {
    size_t length = 0;
    while (size_t run = kernels().wide_run(wide + length, wide_window)) length += run;
    return static_cast<int32_t>(length);
}

int32_t vel_wcsbytes(const vel_wchar *wide) {
    return (vel_wcslen(wide) + 1) * 4;
}

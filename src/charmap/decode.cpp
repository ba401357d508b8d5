// Decoding strings into wide values.
#include "charmap/spans.h"
#include "vels/multibyte.h"

namespace vel {
namespace {

// A window never holds more than the values that may be stored need.
size_t window_for(int32_t room) {
    size_t bytes = static_cast<size_t>(room) * max_character_bytes;
    return smaller(bytes, text_window);
}

int32_t decode_terminated(vel_locale *locale, vel_wchar *out, const unsigned char *at,
                          int32_t max_values) {
    const sealed_table &table = characters_of(locale);
    decode_span *decode = kernels().of(table).decode;
    span_state state(table);
    int32_t count = 0;
    while (count < max_values) {
        int32_t room = max_values - count;
        if (size_t span = span_before_terminator(table, at, window_for(room))) {
            span_progress done = decode(state, at, span, out + count, static_cast<size_t>(room));
            at += done.read;
            count += static_cast<int32_t>(done.written);
            if (count >= max_values) break;
        }
        character next = read_character(table, at, max_character_bytes);
        if (!next) return fail(locale, VEL_EILSEQ);
        out[count] = next.value;
        if (next.value == 0) break;
        at += next.used;
        ++count;
    }
    return count;
}

int32_t decode_counted(vel_locale *locale, vel_wchar *out, const unsigned char *at, int32_t nbytes,
                       int32_t max_values) {
    if (max_values <= 0) return 1;
    const sealed_table &table = characters_of(locale);
    size_t size = nbytes > 1 ? static_cast<size_t>(nbytes) : 1; // the first byte is always read
    size_t room = static_cast<size_t>(max_values);
    span_state state(table);
    span_progress done = kernels().of(table).decode(state, at, size, out, room);
    if (done.read == size) return static_cast<int32_t>(done.written);
    if (done.written < room) return fail(locale, VEL_EILSEQ);
    return static_cast<int32_t>(done.written + 1);
}

int32_t widen_terminated(vel_wchar *out, const unsigned char *at, int32_t max_values) {
    int32_t count = 0;
    while (count < max_values) {
        size_t window = smaller(static_cast<size_t>(max_values - count), text_window);
        const void *zero = memchr(at, 0, window);
        if (zero) window = static_cast<size_t>(static_cast<const unsigned char *>(zero) - at);
        kernels().widen(at, window, out + count);
        at += window;
        count += static_cast<int32_t>(window);
        if (!zero) continue;
        out[count] = 0;
        break;
    }
    return count;
}

} // namespace
} // namespace vel

using namespace vel;

int32_t vel_is_mbstowcs(vel_locale *locale, vel_wchar *out, const char *bytes, int32_t max_values) {
    return tuk_vel_is_mbfstowcfs(locale, out, bytes, -1, max_values);
}

int32_t tuk_vel_is_mbfstowcfs(vel_locale *, vel_wchar *out, const char *bytes, int32_t nbytes,
                              int32_t max_values) {
    if (nbytes == -1) return widen_terminated(out, as_bytes(bytes), max_values);
    int32_t count = nbytes < max_values ? nbytes : max_values;
    if (count <= 0) return 0;
    kernels().widen(as_bytes(bytes), static_cast<size_t>(count), out);
    return count;
}

int32_t vel_im_mbstowcs(vel_locale *locale, vel_wchar *out, const char *bytes, int32_t max_values) {
    return decode_terminated(locale, out, as_bytes(bytes), max_values);
}

int32_t tuk_vel_im_mbfstowcfs(vel_locale *locale, vel_wchar *out, const char *bytes, int32_t nbytes,
                              int32_t max_values) {
    if (nbytes == -1) return decode_terminated(locale, out, as_bytes(bytes), max_values);
    return decode_counted(locale, out, as_bytes(bytes), nbytes, max_values);
}

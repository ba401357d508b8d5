// Writing characters and strings to host streams.
#include "string/walk.h"
#include "vels/multibyte.h"
#include "vels/string.h"

namespace vel {
namespace {

// Writes bytes in one call of the host.
int32_t write_bytes(vel_locale *locale, const void *bytes, size_t n, void *stream) {
    return _vel_ext_fwrite(bytes, 1, n, stream) == n ? 0 : fail(locale, VEL_EIO);
}

int32_t write_byte(int32_t byte, void *stream) {
    unsigned char one = static_cast<unsigned char>(byte);
    return _vel_ext_fwrite(&one, 1, 1, stream) == 1 ? 0 : -1;
}

int32_t write_value(vel_locale *locale, vel_wchar value, void *stream) {
    unsigned char bytes[max_character_bytes] = {static_cast<unsigned char>(value)};
    size_t n = locale->single_byte ? 1 : put_character(characters_of(locale), value, bytes);
    return n ? write_bytes(locale, bytes, n, stream) : fail(locale, VEL_EILSEQ);
}

using measure_function = int32_t(vel_locale *locale, const char *bytes, int32_t n);

int32_t put_measured(vel_locale *locale, const char *character, int32_t n, measure_function measure,
                     vel_put_byte put, void *stream, int32_t *count) {
    *count = 0;
    if (!character) return fail(locale, VEL_EFAULT);
    int32_t length = measure(locale, character, n == -1 ? vel_mb_loc_max(locale) : n);
    if (length < 0) return -1;
    // The null character of terminated text: as long as a terminator, and zero all through.
    bool is_null = length == 0;
    if (is_null) length = vel_mb_loc_min(locale);
    for (; *count < length; ++*count) {
        int32_t byte = is_null ? 0 : as_bytes(character)[*count];
        if (put(byte, stream) < 0) return fail(locale, VEL_EIO);
    }
    return 0;
}

} // namespace
} // namespace vel

using namespace vel;

int32_t vel_putmb(vel_locale *locale, const char *character, int32_t n, vel_put_byte put,
                  void *stream, int32_t *count) {
    return put_measured(locale, character, n, vel_full_mblen, put, stream, count);
}

int32_t tuk_vel_putmb(vel_locale *locale, const char *character, int32_t n, vel_put_byte put,
                      void *stream, int32_t *count) {
    return put_measured(locale, character, n, tuk_vel_full_mblen, put, stream, count);
}

char *vel_fputmb(vel_locale *locale, const char *character, void *stream) {
    int32_t count;
    int32_t done = vel_putmb(locale, character, max_character_bytes, write_byte, stream, &count);
    return done < 0 ? nullptr : const_cast<char *>(character);
}

vel_wchar vel_fputwc(vel_locale *locale, vel_wchar value, void *stream) {
    return write_value(locale, value, stream) < 0 ? VEL_WEOF : value;
}

int32_t vel_fputmbs(vel_locale *locale, const char *string, void *stream) {
    if (!string) return fail(locale, VEL_EFAULT);
    walked<unsigned char> all = walk(locale, range_of(string, -1), whole_text);
    if (all.error) return fail(locale, all.error);
    return write_bytes(locale, string, static_cast<size_t>(all.end - as_bytes(string)), stream);
}

int32_t vel_fputwcs(vel_locale *locale, const vel_wchar *wide, void *stream) {
    if (!wide) return fail(locale, VEL_EFAULT);
    for (; *wide; ++wide) {
        if (write_value(locale, *wide, stream) < 0) return -1;
    }
    return 0;
}

// Copying and appending text.
#include <cstring>

#include "string/walk.h"
#include "vels/multibyte.h"
#include "vels/string.h"

namespace vel {
namespace {

constexpr int64_t everything = INT64_MAX; // characters

int32_t end_text(const vel_locale *locale, unsigned char *at) {
    return put_terminator(characters_of(locale), at);
}
int32_t end_text(const vel_locale *, vel_wchar *at) {
    *at = 0;
    return 1;
}

// The units of text by its characters, -1 with an error number when they cannot be read.
template <typename Unit> int32_t measure(vel_locale *locale, text_range<Unit> text, int64_t most) {
    size_t limit = most == everything ? whole_text : static_cast<size_t>(most);
    walked<Unit> all = walk(locale, text, limit);
    if (all.error) return fail_text(locale, all.error);
    return static_cast<int32_t>(all.end - text.begin);
}

// Puts `most` characters of src at `at`, the end of what dst holds, and gives the units of the
// result without its terminator. Counted text that is copied whole is looked at only in the result,
// where it may complete a character.
template <typename Unit>
int32_t put_behind(vel_locale *locale, Unit *dst, int32_t at, text_range<Unit> src, int64_t most) {
    if (most < 0) return fail_text(locale, VEL_ENOPRINT);
    bool measured = src.terminated() || most != everything;
    int32_t size = measured ? measure(locale, src, most) : src.length;
    if (size < 0) return -1;
    memcpy(dst + at, src.begin, static_cast<size_t>(size) * sizeof(Unit));
    if (src.terminated()) {
        if (size > 0 || at == 0) end_text(locale, dst + at + size);
        return at + size;
    }
    if (measured && at == 0) return size;
    return measure(locale, text_range<Unit>{dst, at + size}, everything);
}

template <typename Unit>
int32_t copy(vel_locale *locale, Unit *dst, text_range<Unit> src, int64_t most) {
    if (int32_t number = dst ? fault_of(src) : VEL_EFAULT) return fail_text(locale, number);
    return put_behind(locale, dst, 0, src, most);
}

template <typename Unit>
int32_t append(vel_locale *locale, Unit *dst, int32_t length, text_range<Unit> src, int64_t most) {
    text_range<Unit> before{dst, length};
    if (int32_t number = fault_of(before, src)) return fail_text(locale, number);
    if (before.terminated()) length = measure(locale, before, everything);
    return length < 0 ? -1 : put_behind(locale, dst, length, src, most);
}

int32_t copy_bytes(vel_locale *locale, char *dst, const char *src, int32_t nbytes, int64_t most) {
    return copy(locale, as_bytes(dst), range_of(src, nbytes), most);
}
int32_t append_bytes(vel_locale *locale, char *dst, int32_t dst_bytes, const char *src,
                     int32_t src_bytes, int64_t most) {
    return append(locale, as_bytes(dst), dst_bytes, range_of(src, src_bytes), most);
}

// A result of terminated text with the terminator added.
int32_t with_terminator(vel_locale *locale, int32_t size, int32_t given_length) {
    return size < 0 || given_length != -1 ? size : size + vel_mb_loc_min(locale);
}

template <typename Unit> Unit *or_null(int32_t size, Unit *dst) {
    return size < 0 ? nullptr : dst;
}

// Appending no values, or fewer, is no failure where text is wide.
int32_t not_negative(int32_t n) {
    return n > 0 ? n : 0;
}

} // namespace
} // namespace vel

using namespace vel;

char *vel_full_mbscpy(vel_locale *locale, char *dst, const char *src) {
    return or_null(copy_bytes(locale, dst, src, -1, everything), dst);
}
int32_t tuk_vel_mbscpy(vel_locale *locale, char *dst, const char *src, int32_t src_bytes) {
    int32_t size = copy_bytes(locale, dst, src, src_bytes, everything);
    return with_terminator(locale, size, src_bytes);
}
char *vel_mbsncpy(vel_locale *locale, char *dst, const char *src, int32_t n) {
    return or_null(copy_bytes(locale, dst, src, -1, n), dst);
}
int32_t tuk_vel_mbsncpy(vel_locale *locale, char *dst, const char *src, int32_t src_bytes,
                        int32_t n) {
    int32_t size = copy_bytes(locale, dst, src, src_bytes, n);
    // Less by a terminator than was copied: existing callers add it.
    return size < 0 || src_bytes != -1 ? size : size - vel_mb_loc_min(locale);
}

char *vel_full_mbscat(vel_locale *locale, char *dst, const char *src) {
    return or_null(append_bytes(locale, dst, -1, src, -1, everything), dst);
}
int32_t tuk_vel_mbscat(vel_locale *locale, char *dst, int32_t dst_bytes, const char *src,
                       int32_t src_bytes) {
    int32_t size = append_bytes(locale, dst, dst_bytes, src, src_bytes, everything);
    return with_terminator(locale, size, src_bytes);
}
char *vel_mbsncat(vel_locale *locale, char *dst, const char *src, int32_t n) {
    return or_null(append_bytes(locale, dst, -1, src, -1, n), dst);
}
int32_t tuk_vel_mbsncat(vel_locale *locale, char *dst, int32_t dst_bytes, const char *src,
                        int32_t src_bytes, int32_t n) {
    return append_bytes(locale, dst, dst_bytes, src, src_bytes, n);
}

vel_wchar *vel_wcscpy(vel_wchar *dst, const vel_wchar *src) {
    return or_null(tuk_vel_wcscpy(nullptr, dst, src, -1), dst);
}
int32_t tuk_vel_wcscpy(vel_locale *locale, vel_wchar *dst, const vel_wchar *src,
                       int32_t src_values) {
    return copy(locale, dst, range_of(src, src_values), everything);
}
vel_wchar *vel_wcsncpy(vel_wchar *dst, const vel_wchar *src, int32_t n) {
    return or_null(tuk_vel_wcsncpy(nullptr, dst, src, -1, n), dst);
}
int32_t tuk_vel_wcsncpy(vel_locale *locale, vel_wchar *dst, const vel_wchar *src,
                        int32_t src_values, int32_t n) {
    return copy(locale, dst, range_of(src, src_values), n);
}

vel_wchar *vel_wcscat(vel_wchar *dst, const vel_wchar *src) {
    return or_null(tuk_vel_wcscat(nullptr, dst, -1, src, -1), dst);
}
int32_t tuk_vel_wcscat(vel_locale *locale, vel_wchar *dst, int32_t dst_values, const vel_wchar *src,
                       int32_t src_values) {
    return append(locale, dst, dst_values, range_of(src, src_values), everything);
}
vel_wchar *vel_wcsncat(vel_wchar *dst, const vel_wchar *src, int32_t n) {
    return or_null(tuk_vel_wcsncat(nullptr, dst, -1, src, -1, n), dst);
}
int32_t tuk_vel_wcsncat(vel_locale *locale, vel_wchar *dst, int32_t dst_values,
                        const vel_wchar *src, int32_t src_values, int32_t n) {
    return append(locale, dst, dst_values, range_of(src, src_values), not_negative(n));
}

// Comparing strings by the values and bytes of their characters, whatever the locale's collation.
#include "collate/faces.h"
#include "vels/collate.h"
#include "vels/multibyte.h"

namespace vel {
namespace {

// The bytes before the terminator; -1 with VEL_EILSEQ when the string is invalid.
int32_t bytes_before_terminator(vel_locale *locale, const char *string) {
    if (characters_of(locale).shortest == 1) return static_cast<int32_t>(strlen(string));
    int32_t size = vel_mbsbytes(locale, string);
    return size == 0 ? -1 : size - vel_mb_loc_min(locale);
}

// The bytes of the first n characters, or of as many as there are; -1 at an invalid one.
int32_t bytes_of_first(const sealed_table &table, const char *string, int32_t n) {
    const unsigned char *at = as_bytes(string);
    while (n-- > 0) {
        character next = read_character(table, at, max_character_bytes);
        if (!next) return -1;
        if (next.value == 0) break;
        at += next.used;
    }
    return static_cast<int32_t>(at - as_bytes(string));
}

// Bytes first, then lengths.
int32_t compare_extents(const char *s1, int32_t len1, const char *s2, int32_t len2) {
    int32_t shorter = len1 < len2 ? len1 : len2;
    int32_t order = shorter > 0 ? memcmp(s1, s2, static_cast<size_t>(shorter)) : 0;
    return order != 0 ? sign_of(order) : len1 - len2;
}

} // namespace
} // namespace vel

using namespace vel;

int32_t vel_wcscmp(const vel_wchar *s1, const vel_wchar *s2) {
    for (; *s1 == *s2; ++s1, ++s2) {
        if (*s1 == 0) return 0;
    }
    return *s1 < *s2 ? -1 : 1;
}

int32_t tuk_vel_wcfscmp(const vel_wchar *s1, int32_t len1, const vel_wchar *s2, int32_t len2) {
    return compare_values(find_text(s1, len1), find_text(s2, len2));
}

int32_t vel_wcsncmp(const vel_wchar *s1, const vel_wchar *s2, int32_t n) {
    for (; n > 0; --n, ++s1, ++s2) {
        if (*s1 != *s2) return static_cast<int32_t>(*s1 - *s2);
        if (*s1 == 0) return 0;
    }
    return 0;
}

int32_t vel_full_mbscmp(vel_locale *locale, const char *s1, const char *s2) {
    if (!locale) return 0;
    if (int32_t number = pair_error(s1, -1, s2, -1)) return fail_zero(locale, number);
    const sealed_table &table = characters_of(locale);
    for (const unsigned char *a = as_bytes(s1), *b = as_bytes(s2);;) {
        character x = read_character(table, a, max_character_bytes);
        character y = read_character(table, b, max_character_bytes);
        if (!x || !y) return fail_zero(locale, VEL_EILSEQ);
        if (x.value == 0 || y.value == 0) return (x.value != 0) - (y.value != 0);
        if (x.used != y.used) return x.used < y.used ? -1 : 1;
        if (x.value != y.value) return x.value < y.value ? -1 : 1;
        a += x.used;
        b += y.used;
    }
}

int32_t vel_full_mbsncmp(vel_locale *locale, const char *s1, const char *s2, int32_t n) {
    if (!locale) return 0;
    if (int32_t number = pair_error(s1, -1, s2, -1)) return fail_zero(locale, number);
    const sealed_table &table = characters_of(locale);
    int32_t len1 = bytes_of_first(table, s1, n), len2 = bytes_of_first(table, s2, n);
    if (len1 < 0 || len2 < 0) return fail_zero(locale, VEL_EILSEQ);
    return sign_of(compare_extents(s1, len1, s2, len2));
}

int32_t tuk_vel_mbscmp(vel_locale *locale, const char *s1, int32_t len1, const char *s2,
                       int32_t len2) {
    if (!locale) return 0;
    if (int32_t number = pair_error(s1, len1, s2, len2)) return fail_zero(locale, number);
    if (len1 == -1) {
        len1 = bytes_before_terminator(locale, s1);
        len2 = bytes_before_terminator(locale, s2);
        if (len1 < 0 || len2 < 0) return 0;
    }
    return compare_extents(s1, len1, s2, len2);
}

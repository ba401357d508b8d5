// Measuring and converting one character.
//
// These are called once a character by code that knows nothing better, so a one-byte character is
// answered from the root row before any walk, and the errors are out of line.
#include "charmap/character.h"
#include "vels/multibyte.h"

namespace vel {

uint32_t put_character(const sealed_table &table, vel_wchar value, unsigned char *out) {
    int32_t n = table.code_bytes(value);
    uint32_t cell = 0;
    for (int32_t depth = 0; depth < n; ++depth) {
        uint32_t b = value >> (8 * (n - 1 - depth)) & 0xFF;
        cell = depth == 0 ? table.cells()[b] : table.step(cell, depth, b);
        bool last = depth + 1 == n;
        if (!(last ? is_end(cell) : is_more(cell))) return 0;
        out[depth] = static_cast<unsigned char>(b);
    }
    return static_cast<uint32_t>(n);
}

namespace {

[[gnu::cold, gnu::noinline]] int32_t cold_fail(vel_locale *locale, int32_t number) {
    return fail(locale, number);
}

// A walk that found no character: it ran out of bytes, or met an invalid one.
int32_t number_of_failure(uint32_t cell) {
    return is_more(cell) ? VEL_EINVAL : VEL_EILSEQ;
}

// The length of the null character where text is terminated. A call, so that the length of any
// other character does not wait for its bytes to be compared.
[[gnu::cold, gnu::noinline]] int32_t null_length() {
    return 0;
}

// In terminated text the null character has length 0, in counted text its own.
enum class text { terminated, counted };

template <text kind> inline int32_t measure(vel_locale *locale, const char *bytes, int32_t n) {
    if (!bytes) [[unlikely]]
        return 0;
    if (n < 1) [[unlikely]]
        return cold_fail(locale, VEL_EINVAL);
    const unsigned char *at = as_bytes(bytes);
    valued_walk end = walk_value(characters_of(locale), at, static_cast<size_t>(n));
    if (!is_end(end.cell)) [[unlikely]]
        return cold_fail(locale, number_of_failure(end.cell));
    if (kind == text::terminated && end.value == 0) [[unlikely]]
        return null_length();
    return end.used;
}

inline int32_t convert(vel_locale *locale, vel_wchar *out, const char *bytes, int32_t n) {
    if (n < 1) [[unlikely]]
        return cold_fail(locale, VEL_EINVAL);
    valued_walk end = walk_value(characters_of(locale), as_bytes(bytes), static_cast<size_t>(n));
    if (!is_end(end.cell)) [[unlikely]]
        return cold_fail(locale, number_of_failure(end.cell));
    *out = end.value;
    if (end.value == 0) [[unlikely]]
        return null_length();
    return end.used;
}

// The first character of a terminated string, which has to be valid to its end.
[[gnu::noinline]] int32_t convert_string(vel_locale *locale, vel_wchar *out, const char *string) {
    int32_t size = vel_mbsbytes(locale, string);
    if (size <= 0) return -1;
    return convert(locale, out, string, size - vel_mb_loc_min(locale));
}

inline int32_t encode(vel_locale *locale, const sealed_table &table, vel_wchar value, char *out) {
    uint32_t n = put_character(table, value, as_bytes(out));
    return n ? static_cast<int32_t>(n) : cold_fail(locale, VEL_EILSEQ);
}

} // namespace
} // namespace vel

using namespace vel;

int32_t vel_mb_loc_max(vel_locale *locale) {
    return characters_of(locale).longest;
}

int32_t vel_mb_loc_min(vel_locale *locale) {
    return characters_of(locale).shortest;
}

int32_t vel_full_mblen(vel_locale *locale, const char *bytes, int32_t n) {
    return measure<text::terminated>(locale, bytes, n);
}

int32_t tuk_vel_full_mblen(vel_locale *locale, const char *bytes, int32_t n) {
    return measure<text::counted>(locale, bytes, n);
}

int32_t vel_full_mbtowc(vel_locale *locale, vel_wchar *out, const char *bytes, int32_t n) {
    if (!bytes) [[unlikely]]
        return 0;
    return convert(locale, out, bytes, n);
}

int32_t tuk_vel_full_mbtowc(vel_locale *locale, vel_wchar *out, const char *bytes, int32_t n) {
    if (!bytes) [[unlikely]]
        return 0;
    if (n == -1) [[unlikely]]
        return convert_string(locale, out, bytes);
    return convert(locale, out, bytes, n);
}

int32_t vel_full_wctomb(vel_locale *locale, char *out, vel_wchar value) {
    return encode(locale, characters_of(locale), value, out);
}

int32_t vel_sl_wctomb(vel_locale *locale, vel_wchar value, char *out) {
    return encode(locale, *locale->collate.characters, value, out);
}

int32_t vel_wclen(vel_locale *locale, vel_wchar value) {
    if (locale->single_byte) return 1;
    char scratch[max_character_bytes];
    return vel_full_wctomb(locale, scratch, value);
}

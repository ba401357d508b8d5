// The case of one character.
#include <cstring>

#include "ctype/lookup.h"
#include "vels/ctype.h"
#include "vels/multibyte.h"

namespace vel {

int32_t put_mapped(vel_locale *locale, vel_wchar value, unsigned char *out) {
    return vel_full_wctomb(locale, reinterpret_cast<char *>(out), value);
}

namespace {

[[gnu::cold, gnu::noinline]] vel_wchar no_character(vel_locale *locale, vel_wchar value) {
    set_error(locale, VEL_EILSEQ);
    return value;
}

template <letter_case to>
[[gnu::noinline]] vel_wchar map_slowly(vel_locale *locale, vel_wchar value) {
    uint32_t cell = cases_of(locale).find_by_walking(value);
    if (!is_end(cell)) return no_character(locale, value);
    vel_wchar mapped = case_of<to>(locale, cell_value(cell));
    return mapped ? mapped : value;
}

template <letter_case to> inline vel_wchar map_value(vel_locale *locale, vel_wchar value) {
    uint32_t cell = cases_of(locale).find_quickly(value);
    if (!is_end(cell)) [[unlikely]]
        return map_slowly<to>(locale, value);
    vel_wchar mapped = case_of<to>(locale, cell_value(cell));
    return mapped ? mapped : value;
}

// Two counts in one number. Only the low byte of the second is kept.
constexpr int32_t counts(int32_t read, int32_t written) {
    return (read << 8 | (written & 0xFF)) & 0xFFFF;
}

int32_t copy_bytes(char *out, const char *in, int32_t n) {
    memcpy(out, in, static_cast<size_t>(n));
    return counts(n, n);
}

// Writes what a look-up in the case table has led to.
template <letter_case to>
int32_t map_found(vel_locale *locale, char *out, const char *character, const found &index) {
    vel_wchar mapped = index ? case_of<to>(locale, index.value) : 0;
    if (mapped == 0) return copy_bytes(out, character, index.used);
    return counts(index.used, put_mapped(locale, mapped, as_bytes(out)));
}

template <letter_case to>
int32_t map_character(vel_locale *locale, char *out, const char *character) {
    found index = vel_trie_find(locale, cases_of(locale), character);
    return map_found<to>(locale, out, character, index);
}

template <letter_case to>
int32_t map_counted(vel_locale *locale, char *out, const char *character, int32_t nbytes) {
    found index = vel_trie_find_n(locale, cases_of(locale), character, nbytes);
    return index ? map_found<to>(locale, out, character, index) : 0;
}

} // namespace
} // namespace vel

using namespace vel;

vel_wchar vel_im_towupper(vel_locale *locale, vel_wchar value) {
    return map_value<letter_case::upper>(locale, value);
}

vel_wchar vel_im_towlower(vel_locale *locale, vel_wchar value) {
    return map_value<letter_case::lower>(locale, value);
}

vel_wchar im_towlower(vel_locale *locale, vel_wchar value) {
    return map_value<letter_case::lower>(locale, value);
}

int32_t vel_im_tomupper(vel_locale *locale, char *out, const char *character) {
    return map_character<letter_case::upper>(locale, out, character);
}

int32_t vel_im_tomlower(vel_locale *locale, char *out, const char *character) {
    return map_character<letter_case::lower>(locale, out, character);
}

int32_t im_tomlower(vel_locale *locale, char *out, const char *character) {
    return map_character<letter_case::lower>(locale, out, character);
}

int32_t tuk_vel_im_tomupper(vel_locale *locale, char *out, const char *character, int32_t nbytes) {
    return map_counted<letter_case::upper>(locale, out, character, nbytes);
}

int32_t tuk_vel_im_tomlower(vel_locale *locale, char *out, const char *character, int32_t nbytes) {
    return map_counted<letter_case::lower>(locale, out, character, nbytes);
}

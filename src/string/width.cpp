// Display width: the faces of the walk over columns, with their error numbers.
#include "vels/width.h"

#include "charmap/character.h"
#include "ctype/columns.h"
#include "ext/error.h"

namespace vel {
namespace {

// A wide value that is no character is one that cannot be displayed.
int32_t number_of(const vel_locale *, const vel_wchar *, columns_end) {
    return VEL_EINVAL;
}

// The class table of a single-byte code set has an entry for every byte, so none is invalid there.
int32_t number_of(const vel_locale *locale, const char *, columns_end end) {
    return end == columns_end::invalid && !locale->single_byte ? VEL_EILSEQ : VEL_EINVAL;
}

template <typename Unit>
int32_t width(vel_locale *locale, const Unit *text, size_t units, size_t characters) {
    columns_walk walk = walk_columns(locale, text, units, characters);
    if (walk.end == columns_end::reached) return walk.columns;
    return fail(locale, number_of(locale, text, walk.end));
}

template <typename Unit> int32_t width_of_first(vel_locale *locale, const Unit *text, int32_t n) {
    if (!text) return fail(locale, VEL_EFAULT);
    if (n < 0) return fail(locale, VEL_ENOPRINT);
    return width(locale, text, SIZE_MAX, static_cast<size_t>(n));
}

template <typename Unit>
int32_t width_before(vel_locale *locale, const Unit *start, const Unit *end) {
    if (!start || !end) return fail(locale, VEL_EFAULT);
    if (end < start) return fail(locale, VEL_EBADPOS);
    return width(locale, start, static_cast<size_t>(end - start), SIZE_MAX);
}

bool is_one_byte(const vel_locale *locale, const char *character) {
    if (locale->single_byte) return true;
    walk_end end = characters_of(locale).walk(as_bytes(character));
    return is_end(end.cell) && end.used == 1;
}

} // namespace
} // namespace vel

using namespace vel;

int32_t vel_wcwidth(vel_locale *locale, vel_wchar value) {
    int32_t columns = columns_of(locale, value);
    return columns < 0 ? fail(locale, VEL_EINVAL) : columns;
}

int32_t vel_mbwidth(vel_locale *locale, const char *character) {
    if (!character) return fail(locale, VEL_EFAULT);
    int32_t columns = columns_at(locale, character);
    if (columns >= 0) return columns;
    return is_one_byte(locale, character) ? 1 : fail(locale, VEL_EINVAL);
}

int32_t vel_wcswidth(vel_locale *locale, const vel_wchar *wide, int32_t n) {
    return width_of_first(locale, wide, n);
}

int32_t vel_mbswidth(vel_locale *locale, const char *string, int32_t n) {
    return width_of_first(locale, string, n);
}

int32_t vel_wcspwidth(vel_locale *locale, const vel_wchar *start, const vel_wchar *end) {
    return width_before(locale, start, end);
}

int32_t vel_mbspwidth(vel_locale *locale, const char *start, const char *end) {
    set_error(locale, 0);
    return width_before(locale, start, end);
}

/*
 * Display columns of characters and strings.
 *
 * A printable character takes one column, or two when it is in the class "full_width" of the
 * locale's VEL_CTYPE category; in a locale without that class every printable character takes one.
 * The null character takes none. Totals beyond INT32_MAX are given as INT32_MAX.
 *
 * Undefined behaviour: a null locale; a string without its terminator, where no end comes before
 * it; for the functions that take an end, an end that is not in the same text.
 */
#ifndef VELS_WIDTH_H
#define VELS_WIDTH_H

#include "vels/types.h"

VEL_BEGIN_DECLS

/* --- One character ---------------------------------------------------------------------------- */

/* Columns of the character with this wide value. -1 with VEL_EINVAL for one that is not printable
   and for a value without a character. */
VEL_API int32_t vel_wcwidth(vel_locale *locale, vel_wchar value);

/*
 * Columns of the character at `character`. One that is not printable takes one column when it is
 * one byte long, unlike its wide value.
 *
 * -1 with VEL_EFAULT when `character` is null; with VEL_EINVAL when a character of more bytes is
 * not printable, and when the bytes are no character.
 */
VEL_API int32_t vel_mbwidth(vel_locale *locale, const char *character);

/* --- Strings ---------------------------------------------------------------------------------- */

/*
 * Columns of at most `n` characters of a terminated wide string; 0 when `n` is 0.
 *
 * -1 with VEL_EFAULT when `wide` is null, VEL_ENOPRINT when `n` is below 0, VEL_EINVAL at a
 * character that is not printable and at a value without a character.
 */
VEL_API int32_t vel_wcswidth(vel_locale *locale, const vel_wchar *wide, int32_t n);

/*
 * Columns of at most `n` characters of a terminated multibyte string; 0 when `n` is 0. No
 * character that is not printable has a width here, one of one byte included.
 *
 * -1 with VEL_EFAULT when `string` is null, VEL_ENOPRINT when `n` is below 0, VEL_EINVAL at a
 * character that is not printable, VEL_EILSEQ at bytes that are no character. In a single-byte code
 * set an unassigned byte counts as a character that is not printable.
 */
VEL_API int32_t vel_mbswidth(vel_locale *locale, const char *string, int32_t n);

/*
 * Columns of the wide characters from `start` up to, and not including, `end` or the null
 * character, whichever comes first.
 *
 * -1 with VEL_EFAULT when either pointer is null, VEL_EBADPOS when `end` comes before `start`,
 * VEL_EINVAL at a character that is not printable and at a value without a character.
 */
VEL_API int32_t vel_wcspwidth(vel_locale *locale, const vel_wchar *start, const vel_wchar *end);

/*
 * Columns of the multibyte characters from `start` that begin before `end`, or before the null
 * character when that comes first: a character that goes beyond `end` is counted whole. The error
 * number is set to 0 first.
 *
 * -1 with VEL_EFAULT when either pointer is null, VEL_EBADPOS when `end` comes before `start`,
 * otherwise as vel_mbswidth.
 */
VEL_API int32_t vel_mbspwidth(vel_locale *locale, const char *start, const char *end);

VEL_END_DECLS

#endif

/*
 * Copying, appending and searching strings, bytes or wide values, and reading and writing
 * characters and lines on host streams.
 *
 * These are the string functions of C for multibyte and wide strings. Multibyte functions go by the
 * characters of the code set of the locale: a byte inside a character is never taken for one of its
 * own. The code set is that of the VEL_CTYPE category.
 *
 * Counted forms, with the prefix tuk_vel_, take a length behind each string, in bytes or in values.
 * In counted text a null character is a character like any other. A length of -1 stands for
 * terminated text; of two strings either both are counted or neither is. The plain forms take
 * terminated strings.
 *
 * Errors. All functions on strings fail alike, in this order:
 *   VEL_EFAULT     a string is null
 *   VEL_EMIXEDLEN  of two strings one is counted, the other terminated
 *   VEL_EBADLEN    a length is below -1
 *   VEL_EILSEQ     a character is invalid
 *   VEL_EINVAL     counted text ends inside a character
 * Below, "fails" means these, and the other errors are named. Text is looked at no farther than the
 * result needs. Nothing is rolled back.
 *
 * Counted wide functions can do without a locale: with a null one no error number is stored.
 *
 * Undefined behaviour: a null locale elsewhere; a null output; a destination that is too small, or
 * that overlaps the source; text shorter than its length, or not terminated where it has to be.
 */
#ifndef VELS_STRING_H
#define VELS_STRING_H

#include "vels/types.h"

VEL_BEGIN_DECLS

/* --- Copying ---------------------------------------------------------------------------------- */

/* Copies a string with its terminator. The destination, or null when it fails. */
VEL_API char *vel_full_mbscpy(vel_locale *locale, char *dst, const char *src);

/*
 * Copies `src_bytes` bytes, without a terminator, and gives their number; -1 when it fails, with
 * the bytes copied. With a length of -1 copies the string with its terminator and gives the bytes
 * of both.
 */
VEL_API int32_t tuk_vel_mbscpy(vel_locale *locale, char *dst, const char *src, int32_t src_bytes);

/* Copies at most `n` characters and writes a terminator behind them. The destination; null when it
   fails, and with VEL_ENOPRINT when `n` is negative. */
VEL_API char *vel_mbsncpy(vel_locale *locale, char *dst, const char *src, int32_t n);

/*
 * Copies the first `n` characters of `src_bytes` bytes, or all when there are fewer, without a
 * terminator, and gives the bytes copied. With a length of -1 copies as vel_mbsncpy does and gives
 * the bytes copied less vel_mb_loc_min, which is negative when nothing was copied.
 *
 * -1 when it fails, and with VEL_ENOPRINT when `n` is negative.
 */
VEL_API int32_t tuk_vel_mbsncpy(vel_locale *locale, char *dst, const char *src, int32_t src_bytes,
                                int32_t n);

/* Copies a wide string with its terminator. The destination, or null for a null string. */
VEL_API vel_wchar *vel_wcscpy(vel_wchar *dst, const vel_wchar *src);
/* Copies `src_values` values, without a terminator (-1: with it), and gives their number, the
   terminator excluded. -1 when it fails. */
VEL_API int32_t tuk_vel_wcscpy(vel_locale *locale, vel_wchar *dst, const vel_wchar *src,
                               int32_t src_values);

/* Copies at most `n` values and writes a terminator behind them, so that the destination needs room
   for n + 1. The destination; null for a null string or a negative `n`. */
VEL_API vel_wchar *vel_wcsncpy(vel_wchar *dst, const vel_wchar *src, int32_t n);
/* Copies at most `n` of `src_values` values, without a terminator (-1: as vel_wcsncpy), and gives
   the values copied. -1 when it fails, and with VEL_ENOPRINT when `n` is negative. */
VEL_API int32_t tuk_vel_wcsncpy(vel_locale *locale, vel_wchar *dst, const vel_wchar *src,
                                int32_t src_values, int32_t n);

/* --- Appending -------------------------------------------------------------------------------- */

/* Appends a string and a terminator. The destination, or null when it fails. */
VEL_API char *vel_full_mbscat(vel_locale *locale, char *dst, const char *src);

/*
 * Copies `src_bytes` bytes behind the `dst_bytes` of the destination, without a terminator, and
 * gives the bytes of the result, whose characters are all checked; the two parts of a character may
 * meet. -1 when it fails, with the bytes copied. With lengths of -1 appends as vel_full_mbscat does
 * and gives the bytes of the result with its terminator.
 */
VEL_API int32_t tuk_vel_mbscat(vel_locale *locale, char *dst, int32_t dst_bytes, const char *src,
                               int32_t src_bytes);

/* Appends at most `n` characters and a terminator. The destination; null when it fails, and with
   VEL_ENOPRINT when `n` is negative. */
VEL_API char *vel_mbsncat(vel_locale *locale, char *dst, const char *src, int32_t n);

/*
 * Copies the first `n` characters of `src_bytes` bytes, or all when there are fewer, behind the
 * `dst_bytes` of the destination, without a terminator, and gives the bytes of the result, whose
 * characters are all checked. With lengths of -1 appends as vel_mbsncat does and gives the bytes of
 * the result without its terminator.
 *
 * -1 when it fails, and with VEL_ENOPRINT when `n` is negative.
 */
VEL_API int32_t tuk_vel_mbsncat(vel_locale *locale, char *dst, int32_t dst_bytes, const char *src,
                                int32_t src_bytes, int32_t n);

/* Appends a wide string and a terminator. The destination, or null for a null string. */
VEL_API vel_wchar *vel_wcscat(vel_wchar *dst, const vel_wchar *src);
/* Appends `src_values` values to `dst_values`, without a terminator (-1: with it), and gives the
   values of the result, the terminator excluded. -1 when it fails. */
VEL_API int32_t tuk_vel_wcscat(vel_locale *locale, vel_wchar *dst, int32_t dst_values,
                               const vel_wchar *src, int32_t src_values);

/* Appends at most `n` values, none when `n` is below 1, and a terminator. The destination, or null
   for a null string. */
VEL_API vel_wchar *vel_wcsncat(vel_wchar *dst, const vel_wchar *src, int32_t n);
/* As tuk_vel_wcscat with at most `n` values, none when `n` is below 1. */
VEL_API int32_t tuk_vel_wcsncat(vel_locale *locale, vel_wchar *dst, int32_t dst_values,
                                const vel_wchar *src, int32_t src_values, int32_t n);

/* --- Searching -------------------------------------------------------------------------------- */

/*
 * The functions that give a position give null both when there is none and when they fail: in the
 * first case they store 0 in the error cell, in the second the error number.
 */

/* The first place where the character at `character` stands in the string. For the null character
   that is the terminator. */
VEL_API char *vel_full_mbschr(vel_locale *locale, const char *string, const char *character);
/* The same in counted text. The character has to end within `character_bytes` bytes; those behind
   it do not count. */
VEL_API char *tuk_vel_mbschr(vel_locale *locale, const char *string, int32_t nbytes,
                             const char *character, int32_t character_bytes);

/* The last such place. Fails when the text behind a match is invalid. */
VEL_API char *vel_full_mbsrchr(vel_locale *locale, const char *string, const char *character);
VEL_API char *tuk_vel_mbsrchr(vel_locale *locale, const char *string, int32_t nbytes,
                              const char *character, int32_t character_bytes);

/* The first value of the string that equals `value`; 0 finds the terminator of terminated text. */
VEL_API vel_wchar *vel_wcschr(vel_locale *locale, const vel_wchar *wide, vel_wchar value);
VEL_API vel_wchar *tuk_vel_wcschr(vel_locale *locale, const vel_wchar *wide, int32_t nvalues,
                                  vel_wchar value);

/* The last such value. */
VEL_API vel_wchar *vel_wcsrchr(vel_locale *locale, const vel_wchar *wide, vel_wchar value);
VEL_API vel_wchar *tuk_vel_wcsrchr(vel_locale *locale, const vel_wchar *wide, int32_t nvalues,
                                   vel_wchar value);

/* The first place where the characters of `needle` follow. An empty needle is found at the start of
   a string that is not empty. The time is linear in the length of both. */
VEL_API char *vel_full_mbsmbs(vel_locale *locale, const char *string, const char *needle);
VEL_API char *tuk_vel_mbsmbs(vel_locale *locale, const char *string, int32_t nbytes,
                             const char *needle, int32_t needle_bytes);

/* The first place where the values of `needle` follow. An empty needle is found at the start of any
   string. The time is linear in the length of both. */
VEL_API vel_wchar *vel_wcswcs(vel_locale *locale, const vel_wchar *wide, const vel_wchar *needle);
VEL_API vel_wchar *tuk_vel_wcswcs(vel_locale *locale, const vel_wchar *wide, int32_t nvalues,
                                  const vel_wchar *needle, int32_t needle_values);

/* --- Sets of characters ----------------------------------------------------------------------- */

/*
 * The characters of `set` form a set. Up to 128 characters are compared without memory of the host;
 * beyond, the multibyte functions fail with VEL_ENOMEM when it cannot be had. A counted multibyte
 * set of no bytes fails with VEL_EINVAL, and one that ends inside a character with VEL_EILSEQ.
 */

/* The characters that the string begins with and that are in the set: a count of characters, not of
   bytes. -1 when it fails. */
VEL_API int32_t vel_full_mbsspn(vel_locale *locale, const char *string, const char *set);
VEL_API int32_t tuk_vel_mbsspn(vel_locale *locale, const char *string, int32_t nbytes,
                               const char *set, int32_t set_bytes);
VEL_API int32_t vel_wcsspn(vel_locale *locale, const vel_wchar *wide, const vel_wchar *set);
VEL_API int32_t tuk_vel_wcsspn(vel_locale *locale, const vel_wchar *wide, int32_t nvalues,
                               const vel_wchar *set, int32_t set_values);

/* The characters that the string begins with and that are not in the set. -1 when it fails. */
VEL_API int32_t vel_full_mbscspn(vel_locale *locale, const char *string, const char *set);
VEL_API int32_t tuk_vel_mbscspn(vel_locale *locale, const char *string, int32_t nbytes,
                                const char *set, int32_t set_bytes);
VEL_API int32_t vel_wcscspn(vel_locale *locale, const vel_wchar *wide, const vel_wchar *set);
VEL_API int32_t tuk_vel_wcscspn(vel_locale *locale, const vel_wchar *wide, int32_t nvalues,
                                const vel_wchar *set, int32_t set_values);

/* The first character of the string that is in the set. Null with 0 when there is none, with the
   error number when it fails. */
VEL_API char *vel_full_mbspbrk(vel_locale *locale, const char *string, const char *set);
VEL_API char *tuk_vel_mbspbrk(vel_locale *locale, const char *string, int32_t nbytes,
                              const char *set, int32_t set_bytes);
VEL_API vel_wchar *vel_wcspbrk(vel_locale *locale, const vel_wchar *wide, const vel_wchar *set);
VEL_API vel_wchar *tuk_vel_wcspbrk(vel_locale *locale, const vel_wchar *wide, int32_t nvalues,
                                   const vel_wchar *set, int32_t set_values);

/* --- Lengths without trailing blanks ---------------------------------------------------------- */

/* The characters of the string without the blanks at its end, which are characters in the class
   `blank` but not in `cntrl`. -1 when it fails. */
VEL_API int32_t vel_mbsntslen(vel_locale *locale, const char *string);
VEL_API int32_t tuk_vel_mbsntslen(vel_locale *locale, const char *string, int32_t nbytes);

/* The same in bytes. */
VEL_API int32_t vel_mbsntsbytes(vel_locale *locale, const char *string);
VEL_API int32_t tuk_vel_mbsntsbytes(vel_locale *locale, const char *string, int32_t nbytes);

/* The values of the string without the white space at its end, which are values in the class
   `space` but not in `cntrl`: unlike vel_wcsntstrunc, tabs and line ends count. With a null locale
   nothing is white space. -1 when it fails. */
VEL_API int32_t vel_wcsntslen(vel_locale *locale, const vel_wchar *wide);
VEL_API int32_t tuk_vel_wcsntslen(vel_locale *locale, const vel_wchar *wide, int32_t nvalues);

/* --- Positions -------------------------------------------------------------------------------- */

/*
 * How far behind the start of its character the byte at `position` is: 0 for the first byte. The
 * bytes of the character are stored. The text is read from `start` on.
 *
 * -1 with VEL_EFAULT when a pointer is null, with VEL_EINVAL when the position is before the start,
 * with VEL_EILSEQ when a character up to the position is invalid.
 */
VEL_API int32_t vel_full_charoffset(vel_locale *locale, const char *start, const char *position,
                                    int32_t *character_bytes);

/* --- Reading from streams --------------------------------------------------------------------- */

/* What the functions that give a value give when they fail; no character has it. */
#define VEL_WEOF ((vel_wchar)-1)

/* Gives the next byte, 0 to 255, or -1 when there is none. */
typedef int32_t (*vel_get_byte)(void *stream);

/* Takes a byte; 0, or -1 when that fails. */
typedef int32_t (*vel_put_byte)(int32_t byte, void *stream);

/*
 * Reads one character, byte by byte, into `out`, which has room for vel_mb_loc_max bytes. Returns 0
 * and stores its bytes.
 *
 * -1 with VEL_EEOF at the end before the first byte, with VEL_EINVAL at the end inside the
 * character, with VEL_EILSEQ at an invalid byte. The bytes read are in `out` then.
 */
VEL_API int32_t vel_getmb(vel_locale *locale, char *out, vel_get_byte get, void *stream,
                          int32_t *length);

/*
 * Reads one character from a host stream and gives its bytes.
 *
 * -1 with VEL_EEOF at the end of the file, also inside the character, whose first bytes are in
 * `out` then; with VEL_EIO when the stream has an error, with VEL_EREAD when it gives no byte and
 * reports neither; with VEL_EILSEQ at an invalid byte.
 */
VEL_API int32_t vel_full_fgetmb(vel_locale *locale, char *out, void *stream);

/* Reads one character and gives its value. VEL_WEOF with the errors of vel_full_fgetmb, but with
   VEL_EINVAL at the end of the file inside the character. */
VEL_API vel_wchar vel_full_fgetwc(vel_locale *locale, void *stream);

/*
 * Reads characters up to and with the line end (0A, as long as the terminator) and writes a
 * terminator behind it. The buffer.
 *
 * Null with VEL_EFAULT for a null buffer, with VEL_E2BIG when a character, the line end or the
 * terminator does not fit, and with the errors of vel_full_fgetmb, which a last line without an end
 * gives as well. What was read before stays in the buffer, without a terminator.
 */
VEL_API char *vel_fgetmbs(vel_locale *locale, char *buffer, int32_t nbytes, void *stream);

/* The same for values, with the errors of vel_full_fgetwc. */
VEL_API vel_wchar *vel_fgetwcs(vel_locale *locale, vel_wchar *buffer, int32_t nvalues,
                               void *stream);

/* --- Writing to streams ----------------------------------------------------------------------- */

/*
 * Writes the bytes of the character at `character`, of which at most `n` are looked at (-1:
 * vel_mb_loc_max), one by one; the null character as vel_mb_loc_min zero bytes. Returns 0 and
 * stores the bytes written, also on failure.
 *
 * -1 with VEL_EFAULT for a null pointer, with the errors of vel_full_mblen when there is no
 * character, with VEL_EIO when `put` fails.
 */
VEL_API int32_t vel_putmb(vel_locale *locale, const char *character, int32_t n, vel_put_byte put,
                          void *stream, int32_t *count);

/* The same, with a null character written as its own bytes. */
VEL_API int32_t tuk_vel_putmb(vel_locale *locale, const char *character, int32_t n,
                              vel_put_byte put, void *stream, int32_t *count);

/* Writes the character at `character` to a host stream and gives its pointer. Null with the errors
   of vel_putmb. */
VEL_API char *vel_fputmb(vel_locale *locale, const char *character, void *stream);

/* Writes the character with this value and gives the value; in a single-byte code set the low byte
   is written. VEL_WEOF with VEL_EILSEQ when there is no such character, with VEL_EIO when writing
   fails. */
VEL_API vel_wchar vel_fputwc(vel_locale *locale, vel_wchar value, void *stream);

/* Writes a string without its terminator, at once. Returns 0; -1 with VEL_EFAULT for a null string,
   with VEL_EILSEQ when a character is invalid (nothing has been written then), with VEL_EIO when
   writing fails. */
VEL_API int32_t vel_fputmbs(vel_locale *locale, const char *string, void *stream);

/* Writes the characters of a wide string, one by one. Returns 0; -1 with VEL_EFAULT for a null
   string and with the errors of vel_fputwc. */
VEL_API int32_t vel_fputwcs(vel_locale *locale, const vel_wchar *wide, void *stream);

VEL_END_DECLS

#endif

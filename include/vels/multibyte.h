/*
 * Multibyte characters and strings of the code set of a locale: measuring, stepping, converting to
 * and from wide values, and ending strings.
 *
 * A multibyte character is one to four bytes, and its wide value is those bytes packed big-endian.
 * There are no shift states: every character is decoded from its own bytes, and nothing is kept
 * between calls. The code set is that of the locale's VEL_CTYPE category.
 *
 * Names. full_ functions serve every code set, im_ functions are those for multibyte code sets, is_
 * functions those for single-byte ones (a byte is a character and equals its value). Functions
 * that begin with tuk_ take counted text: a length follows the text, and -1 says that the text is
 * terminated. A terminated multibyte string ends with vel_mb_loc_min zero bytes, a terminated wide
 * string with the value 0. The null character is the one whose bytes are all zero.
 *
 * Errors are stored in the error cell of the locale. Nothing is rolled back on failure: what was
 * written before it stays in the output. Success leaves the error cell alone.
 *
 * Undefined behaviour: a null locale; a null output; a pointer to memory that is shorter than a
 * length argument says, or, where no length is given, that does not hold a whole character or a
 * terminated string; outputs that overlap their source.
 */
#ifndef VELS_MULTIBYTE_H
#define VELS_MULTIBYTE_H

#include "vels/types.h"

VEL_BEGIN_DECLS

/* --- Width of the code set -------------------------------------------------------------------- */

/* The bytes of the longest character of the code set; 0 in a null locale. Sets no error. */
VEL_API int32_t vel_mb_loc_max(vel_locale *locale);

/* The bytes of the shortest character, which is the length of the string terminator; 4 in a null
   locale. Sets no error. */
VEL_API int32_t vel_mb_loc_min(vel_locale *locale);

/* --- Measuring one character ------------------------------------------------------------------ */

/*
 * The bytes of the character at `bytes`, of which at most `n` are looked at; 0 for the null
 * character and for a null pointer.
 *
 * -1 with VEL_EINVAL when `n` is below 1 or the character has more than `n` bytes, with VEL_EILSEQ
 * when it is invalid.
 */
VEL_API int32_t vel_full_mblen(vel_locale *locale, const char *bytes, int32_t n);

/* As vel_full_mblen, but the null character gives its length: in counted text it is a character
   like any other. */
VEL_API int32_t tuk_vel_full_mblen(vel_locale *locale, const char *bytes, int32_t n);

/* The bytes of the character with this wide value: always 1 in a single-byte code set. -1 with
   VEL_EILSEQ when the code set has no such character. */
VEL_API int32_t vel_wclen(vel_locale *locale, vel_wchar value);

/* --- Converting one character ----------------------------------------------------------------- */

/*
 * Stores the wide value of the character at `bytes`, of which at most `n` are looked at, and gives
 * its bytes: 0 for the null character (its value is stored) and for a null pointer (nothing is).
 *
 * -1 with VEL_EINVAL when `n` is below 1 or the character has more than `n` bytes, with VEL_EILSEQ
 * when it is invalid.
 */
VEL_API int32_t vel_full_mbtowc(vel_locale *locale, vel_wchar *out, const char *bytes, int32_t n);

/* As vel_full_mbtowc; an `n` of -1 stands for the bytes of a terminated string without its
   terminator, so that an empty one gives -1 with VEL_EINVAL. With -1 the whole string has to be
   valid. */
VEL_API int32_t tuk_vel_full_mbtowc(vel_locale *locale, vel_wchar *out, const char *bytes,
                                    int32_t n);

/*
 * Writes the character with this wide value, at most four bytes and no terminator, and gives its
 * bytes. -1 with VEL_EILSEQ when the code set has no such character; the bytes that could begin one
 * have been written then.
 */
VEL_API int32_t vel_full_wctomb(vel_locale *locale, char *out, vel_wchar value);

/* Writes the character with this wide value as the collation of the locale knows it, at most four
   bytes, and gives its bytes. -1 with VEL_EILSEQ when the collation table has no such character. */
VEL_API int32_t vel_sl_wctomb(vel_locale *locale, vel_wchar value, char *out);

/* --- Stepping and addressing ------------------------------------------------------------------ */

/* The position behind the character at `bytes`, the null character included. Null with VEL_EILSEQ
   when it is invalid. */
VEL_API char *vel_full_mbsnext(vel_locale *locale, const char *bytes);

/* As vel_full_mbsnext, within `n` bytes. Null with VEL_EINVAL when `n` is below 1 or the character
   has more than `n` bytes. */
VEL_API char *tuk_vel_full_mbsnext(vel_locale *locale, const char *bytes, int32_t n);

/*
 * The start of the character that ends exactly at `position`. The text is read from `start` on, so
 * the cost is that of the text before the position.
 *
 * Null with VEL_EBADPOS when `position` is not behind `start`, with VEL_EINVAL when it lies inside
 * a character, with VEL_EILSEQ when the text before it is invalid.
 */
VEL_API char *vel_full_mbsprev(vel_locale *locale, const char *start, const char *position);

/*
 * The position of character number `index`, counted from 0. The terminator is not looked for: the
 * string must have that many characters.
 *
 * Null with VEL_ENOPRINT when `index` is negative, with VEL_EFAULT when `string` is null, with
 * VEL_EILSEQ when a character before the index is invalid.
 */
VEL_API char *vel_full_getmbsi(vel_locale *locale, const char *string, int32_t index);

/*
 * Replaces character number `index` of a terminated string by the first character of `character`
 * and gives its position. The rest of the string moves when the lengths differ: the caller provides
 * the room.
 *
 * Null with VEL_EFAULT when `string` or `character` is null or there is no such position (a
 * negative index: VEL_ENOPRINT in a single-byte code set, VEL_EFAULT in others), with VEL_EILSEQ
 * when the replacement or the rest of the string is invalid, with VEL_ENOMEM when memory for the
 * move cannot be had. The string is unchanged then.
 */
VEL_API char *vel_full_putmbsi(vel_locale *locale, char *string, int32_t index,
                               const char *character);

/* --- Lengths and terminators ------------------------------------------------------------------ */

/* Writes a string terminator and gives its bytes. */
VEL_API int32_t vel_mbsterm(vel_locale *locale, char *out);

/* The bytes of the terminator when one stands at `bytes`, else 0. Reads vel_mb_loc_min bytes at the
   most. */
VEL_API int32_t vel_ismbsterm(vel_locale *locale, const char *bytes);

/* The bytes of a terminated string with its terminator. 0 for a null pointer, and 0 with VEL_EILSEQ
   when a character is invalid. */
VEL_API int32_t vel_mbsbytes(vel_locale *locale, const char *string);

/* The characters of a terminated string; 0 for a null pointer. -1 with VEL_EILSEQ when one is
   invalid. */
VEL_API int32_t vel_im_mbslen(vel_locale *locale, const char *string);

/*
 * The characters in `nbytes` bytes of text, null characters included; -1 bytes: terminated text. -1
 * with VEL_EILSEQ when a character is invalid or goes beyond the end. The last character may be
 * read beyond the end, up to its own length.
 */
VEL_API int32_t tuk_vel_im_mbfslen(vel_locale *locale, const char *string, int32_t nbytes);

/* The values before the terminator. */
VEL_API int32_t vel_wcslen(const vel_wchar *wide);

/* The bytes that a wide string occupies with its terminator. */
VEL_API int32_t vel_wcsbytes(const vel_wchar *wide);

/* --- Decoding strings ------------------------------------------------------------------------- */

/*
 * Decodes a terminated string of a single-byte code set: stores at most `max_values` values and
 * gives their number. The terminator is stored when there is room, but not counted. Does not fail.
 */
VEL_API int32_t vel_is_mbstowcs(vel_locale *locale, vel_wchar *out, const char *bytes,
                                int32_t max_values);

/* As vel_is_mbstowcs for `nbytes` bytes of text, zero bytes included; no terminator is stored. -1
   bytes: terminated text, as above. */
VEL_API int32_t tuk_vel_is_mbfstowcfs(vel_locale *locale, vel_wchar *out, const char *bytes,
                                      int32_t nbytes, int32_t max_values);

/*
 * Decodes a terminated string of any code set: stores at most `max_values` values and gives their
 * number. The terminator is stored when there is room, but not counted.
 *
 * -1 with VEL_EILSEQ when a character is invalid; those before it have been stored.
 */
VEL_API int32_t vel_im_mbstowcs(vel_locale *locale, vel_wchar *out, const char *bytes,
                                int32_t max_values);

/*
 * As vel_im_mbstowcs for `nbytes` bytes of text, null characters included. Two particulars of the
 * counted form: when `max_values` values end the conversion before the text does, the result is
 * max_values + 1 (and 1 when max_values is 0 or less); and text of no bytes still converts the one
 * character that stands at its start. -1 bytes: terminated text, as above.
 *
 * -1 with VEL_EILSEQ when a character is invalid or goes beyond the end.
 */
VEL_API int32_t tuk_vel_im_mbfstowcfs(vel_locale *locale, vel_wchar *out, const char *bytes,
                                      int32_t nbytes, int32_t max_values);

/* --- Encoding strings ------------------------------------------------------------------------- */

/*
 * Encodes a terminated wide string in a single-byte code set: writes at most `max_bytes` bytes and
 * gives their number. When the whole string went in, a terminator follows, which is not counted and
 * which `max_bytes` must leave room for. Text that does not fit is cut without an error and without
 * a terminator.
 *
 * -1 with VEL_EILSEQ at a value above 255; the bytes before it have been written.
 */
VEL_API int32_t vel_is_wcstombs(vel_locale *locale, char *out, const vel_wchar *wide,
                                int32_t max_bytes);
/* The same function under its second name. */
VEL_API int32_t is_wcstombs(vel_locale *locale, char *out, const vel_wchar *wide,
                            int32_t max_bytes);

/* As vel_is_wcstombs for `nvalues` values, zeros included, without a terminator. -1 values: a
   terminated wide string, as above. */
VEL_API int32_t tuk_vel_is_wcstombs(vel_locale *locale, char *out, const vel_wchar *wide,
                                    int32_t nvalues, int32_t max_bytes);

/*
 * Encodes a terminated wide string in the code set of the locale: writes whole characters, at most
 * `max_bytes` bytes, and gives the bytes written. When the whole string went in, a terminator
 * follows, which is not counted and which `max_bytes` must leave room for. Text that does not fit
 * is cut without an error and without a terminator.
 *
 * -1 with VEL_EILSEQ at a value that has no character; those before it have been written, and so
 * have the bytes of the value that could begin one. In a single-byte code set values are not
 * checked: the low byte is written, and a value above 255 takes as many bytes of the output as its
 * magnitude has.
 */
VEL_API int32_t vel_full_wcstombs(vel_locale *locale, char *out, const vel_wchar *wide,
                                  int32_t max_bytes);

/* As vel_full_wcstombs for `nvalues` values, zeros included, without a terminator. -1 values: a
   terminated wide string, as above. */
VEL_API int32_t tuk_vel_full_wcstombs(vel_locale *locale, char *out, const vel_wchar *wide,
                                      int32_t nvalues, int32_t max_bytes);

/* --- Comparing and cutting -------------------------------------------------------------------- */

/* Compares a wide string with a multibyte string, both terminated. The number of characters when
   the multibyte string ends with all matched (the wide string may go on), -1 at the first that
   differs or is invalid (VEL_EILSEQ for an invalid one). */
VEL_API int32_t vel_compare_wc_to_mb(vel_locale *locale, const vel_wchar *wide,
                                     const char *multibyte);

/*
 * Cuts trailing blanks off a terminated multibyte string in place: characters in the class `blank`
 * but not in `cntrl`, so that a tab stays. Gives the position of the new terminator, or null
 * without an error when there was nothing to cut.
 *
 * Null with VEL_EFAULT for a null pointer, with VEL_EILSEQ when a character is invalid.
 */
VEL_API char *vel_mbsntstrunc(vel_locale *locale, char *string);

/*
 * Cuts trailing white space off a terminated wide string in place: values in the class `space`,
 * tabs and line ends included. Gives the position of the new terminator, or null without an error
 * when there was nothing to cut.
 *
 * Null with VEL_EFAULT for a null pointer. A value without a character is not white space and
 * leaves VEL_EILSEQ behind.
 */
VEL_API vel_wchar *vel_wcsntstrunc(vel_locale *locale, vel_wchar *wide);

VEL_END_DECLS

#endif

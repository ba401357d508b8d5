/*
 * Numbers in locale text: integers and floating numbers to and from wide and multibyte strings, by
 * the signs, the decimal point, the thousands separator and the grouping of a locale.
 *
 * Conversions depend on the locale handle alone, never on the locale of the host's C library, and
 * are exact: a floating number is the double nearest to what the text says. "ASCII" characters
 * here are those that stand for them in the code set, EBCDIC ones included.
 *
 * Undefined behaviour: a null locale, text or output; text that is not terminated; an output that
 * is shorter than its function says.
 */
#ifndef VELS_NUMBER_H
#define VELS_NUMBER_H

#include "vels/types.h"

VEL_BEGIN_DECLS

/* --- Reading integers ------------------------------------------------------------------------- */

/*
 * Reads a signed integer as strtol does: white space (class `space`), an optional sign (the numeric
 * sign strings of the locale, or ASCII "-" or "+"), digits of `base`, which is 2 to 36, or 0 to go
 * by the prefix "0x" or "0". Values are 32 bits everywhere: beyond that the nearest one is the
 * result.
 *
 * When `grouping` is not 0 all that follows the sign, to the end of the text, has to be grouped: a
 * numeric thousands separator behind every complete group, counted from the end, and at most 255
 * characters. A locale without a separator has no groups.
 *
 * `end`, when not null, gets the position behind the last digit; without digits or on failure that
 * is the position behind the white space.
 *
 * Like strtol it sets the errno of the host: to 0, to ERANGE for a value out of range, to EINVAL
 * for a base that is none, and then the result is 0. 0x7FFFFFFF with VEL_EINVAL when the grouping
 * is wrong or the text too long. A value without a character, where white space may stand, leaves
 * VEL_EILSEQ behind.
 */
VEL_API int32_t vel_wcstol(vel_locale *locale, const vel_wchar *wide, vel_wchar **end, int32_t base,
                           int32_t grouping);

/* Reads an unsigned integer as strtoul does: as vel_wcstol, but only the ASCII signs are understood
   and "-" counts down from 2 to the power of 32. The text behind the white space has at most 256
   characters, grouped or not; 0x7FFFFFFF with VEL_EINVAL beyond. */
VEL_API uint32_t vel_wcstoul(vel_locale *locale, const vel_wchar *wide, vel_wchar **end,
                             int32_t base, int32_t grouping);

/*
 * As vel_wcstol for multibyte text, which has to be valid to its end; `end` gets a position in
 * bytes.
 *
 * 0x7FFFFFFF with VEL_ENONUM when the text is empty or has an invalid character, and for a value
 * out of range, whatever its sign; with VEL_EINVAL as vel_wcstol.
 */
VEL_API int32_t vel_mbstol(vel_locale *locale, const char *string, char **end, int32_t base,
                           int32_t grouping);

/* As vel_wcstoul for multibyte text; otherwise as vel_mbstol, but the result that goes with
   VEL_ENONUM is 0xFFFFFFFF. */
VEL_API uint32_t vel_mbstoul(vel_locale *locale, const char *string, char **end, int32_t base,
                             int32_t grouping);

/* --- Reading floating numbers ----------------------------------------------------------------- */

/*
 * Reads a decimal number: white space, an optional sign, digits, the decimal point ("." when the
 * locale has none) with digits, an exponent of "e" or "E", an optional ASCII sign and digits.
 * Either the digits before the point or those behind it may be missing. Signs, point, separator and
 * grouping are the monetary ones when `monetary` is not 0, else the numeric ones; the ASCII signs
 * are always understood.
 *
 * When `grouping` is not 0 the digits before the point have to be grouped: a thousands separator
 * before every complete group, counted from the point, and at most 256 characters.
 *
 * `end`, when not null, gets the position behind the number, or the start of the text when there is
 * none.
 *
 * Like strtod it sets the errno of the host: to 0, or to ERANGE for a value that is too large
 * (the result is infinite) or too small (zero or a subnormal number that is not exact). 0.0 when no
 * number stands there: with VEL_EINVAL when a separator is missing or there are too many
 * characters, with VEL_ENOCONV for a decimal point without digits, else without an error.
 */
VEL_API double vel_wcstod_num_mon(vel_locale *locale, const vel_wchar *wide, vel_wchar **end,
                                  int32_t grouping, int32_t monetary);

/* The same by the numeric conventions. */
VEL_API double vel_wcstod(vel_locale *locale, const vel_wchar *wide, vel_wchar **end,
                          int32_t grouping);

/*
 * As vel_wcstod for multibyte text, which has to be valid to its end; `end` gets a position in
 * bytes. 2147483647.0 with VEL_ENONUM when the text is empty or has an invalid character, and for a
 * value out of range.
 */
VEL_API double vel_mbstod(vel_locale *locale, const char *string, char **end, int32_t grouping);

/* --- Writing integers ------------------------------------------------------------------------- */

/*
 * Writes an integer in a base of 2 to 36, with ASCII "-" and upper-case letters, and a terminator;
 * any other base writes an empty string. These set no error.
 *
 * `length` is the room in characters, terminator included, and counts only when `grouping` is not
 * 0. The text then has the numeric thousands separator between its groups. Where it does not fit an
 * empty string is written; "-" counts as a digit there, so that -123 takes the room of "-,123".
 * Without grouping `out` needs 34 characters.
 */
VEL_API void vel_ltowcs(vel_locale *locale, vel_wchar *out, int32_t length, int32_t value,
                        int32_t base, int32_t grouping);
/* The same for an unsigned integer. */
VEL_API void vel_ultowcs(vel_locale *locale, vel_wchar *out, int32_t length, uint32_t value,
                         int32_t base, int32_t grouping);

/*
 * As vel_ltowcs in multibyte text: the bytes written, terminator excluded. `length` is in bytes, of
 * which at most 256 are used; without grouping `out` needs 34 characters. -1 with VEL_EILSEQ in a
 * locale without a code set.
 */
VEL_API int32_t vel_ltombs(vel_locale *locale, char *out, int32_t length, int32_t value,
                           int32_t base, int32_t grouping);
/* The same for an unsigned integer. */
VEL_API int32_t vel_ultombs(vel_locale *locale, char *out, int32_t length, uint32_t value,
                            int32_t base, int32_t grouping);

/* --- Formatting ------------------------------------------------------------------------------- */

/*
 * Formats numbers and text into a multibyte buffer of `size` bytes and terminates it; gives the
 * bytes written, terminator excluded.
 *
 * The format is text of the locale's code set. Characters stand for themselves and "%%" for "%". A
 * directive is
 *
 *   %[flags][width][.precision][h|l|L]conversion
 *
 * Flags, of which a "0" is the last:
 *   '      group the digits before the decimal point
 *   +      write the positive sign, or "+" in a locale without one
 *   space  write blanks in place of the positive sign
 *   #      0 before octal and 0x before hexadecimal digits; the point of a floating number always
 *   -      blanks on the right
 *   0      zeros on the left, before a prefix; without effect behind "-"
 * The width counts display columns. Width and precision are digits, or "*" for an int argument; one
 * that is negative is as none. The precision is that of C, and a "." before a letter is zero.
 *
 * Conversions:
 *   d i          int32_t in base 10
 *   o x X q b    int32_t in base 8, 16, 16, 4, 2, with a sign when negative
 *   u            uint32_t in base 10
 *   f e E g G    double, rounded half to even on its exact value
 *   s            a string of the code set; of precision characters at the most
 *   c            a pointer to a character of the code set; nothing for a null pointer or a null
 *                character
 *   ls lc        a wide string, a wide character
 * With "h" an integer is cut to 16 bits; "l" changes nothing for numbers.
 *
 * Infinite values are "Inf" and "-Inf", the latter without padding, others "NaN". A width of 100 or
 * more is too large for a finite floating number. An exponent has three digits of which the first
 * zero is left out, "e+05", and the width of the field counts all three.
 *
 * -1 with VEL_E2BIG when text and terminator do not fit, VEL_EILSEQ for text that is not of the
 * code set, VEL_EFAULT for a null string, VEL_EFORMAT when the format ends in a directive,
 * VEL_ETIMEFMT for an unknown conversion, VEL_ENUMFMT for a "." that nothing follows which could.
 * What was written until then is in the buffer, without a terminator.
 */
VEL_API int32_t vel_mbsfnum(vel_locale *locale, char *bytes, int32_t size, const char *format, ...);

/* The same in wide characters: at most `limit` of them, behind which there is room for the
   terminator. Gives the characters written. */
VEL_API int32_t vel_wcsfnum(vel_locale *locale, vel_wchar *wide, int32_t limit,
                            const vel_wchar *format, ...);

/*
 * Writes a terminated wide string as multibyte text of at most `size` bytes, terminator included;
 * gives the bytes, terminator excluded. In a single-byte code set each value below 256 is its byte.
 *
 * -1 with VEL_E2BIG when it does not fit, VEL_EILSEQ at a value without a character.
 */
VEL_API int32_t vel_get_mbstring(vel_locale *locale, char *bytes, const vel_wchar *wide,
                                 int32_t size);

/* --- Parsing ---------------------------------------------------------------------------------- */

/*
 * Reads what a format describes from multibyte text and stores it through the pointers that follow;
 * gives the items stored. The error number is set to 0 first.
 *
 * White space in the format stands for any white space, or none; "%%" for "%"; other characters for
 * themselves. Directives are those of vel_mbsfnum. Their width is the greatest number of characters
 * to read, 0 for any; "*" in its place reads an item without storing it; the precision and flags
 * other than these have no meaning:
 *   '   numbers may be grouped: integers completely or not at all, floating numbers completely
 *   #   0x may stand before hexadecimal digits
 *
 * White space is skipped before every item but characters. Targets:
 *   integers     int32_t *, or int16_t * with "h"; a sign may stand before the digits. Bases other
 *                than 10 take values of all 32 (16) bits
 *   f e E g G    double *
 *   s            the characters up to white space
 *   c            one character, not terminated; with a width of 2 or more as many, of any kind, or
 *                those that are left
 * Text is stored as char *: as many times vel_mb_loc_max bytes as there may be characters, and
 * vel_mb_loc_min for the terminator. "l" makes that vel_wchar *: a value for each, and one.
 *
 * An item that cannot be read ends the call with the items before it: VEL_ENOCONV when no integer
 * or text stands there, VEL_ENUMFMT when no floating number does, VEL_ENONUM for a number out of
 * range, VEL_EINVAL for wrong grouping, VEL_ETIMEFMT for "-" before an unsigned number, VEL_EILSEQ
 * for what is not of the code set.
 *
 * -1 with VEL_ETIMEFMT when a character of the format is not in the input, for an unknown
 * conversion and for characters with a precision; VEL_EILSEQ, VEL_EFORMAT and VEL_ENUMFMT as in
 * formatting.
 */
VEL_API int32_t vel_mbspnum(vel_locale *locale, const char *input, const char *format, ...);

/* The same for wide input and format. */
VEL_API int32_t vel_wcspnum(vel_locale *locale, const vel_wchar *input, const vel_wchar *format,
                            ...);

VEL_END_DECLS

#endif

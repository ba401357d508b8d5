/*
 * Amounts of money in locale text: formatting doubles by the MONETARY conventions of a locale, and
 * reading them back.
 *
 * A format is text of the locale's code set (or wide text). Characters stand for themselves and
 * "%%" for "%". A directive is
 *
 *   %[flags][width][#digits][.digits]i    with the international symbol (EUR)
 *   %[flags][width][#digits][.digits]n    with the national symbol
 *
 * Flags:
 *   =f   fill with the character f instead of blanks, with #
 *   ^    no grouping
 *   +    with the signs of the locale, as without any flag
 *   (    negative amounts in parentheses
 *   !    no symbol
 *   -    blanks on the right
 * The width counts display columns. "#digits" makes room for so many digits before the point, for
 * their separators, and for what stands before an amount of the other sign. ".digits" is the
 * number of digits behind the point, in place of that of the currency.
 *
 * Symbol, sign and separator stand where the locale puts them for positive and for negative
 * amounts; international amounts follow the same numbers, their separator is the fourth character
 * of the symbol. What a locale does not give: the sign is "-" and stands before all, the point is
 * ".", two digits stand behind it. Amounts are rounded half to even on their exact value.
 *
 * Undefined behaviour: a null locale, buffer, input, format or target; text that is not terminated;
 * arguments other than the format says.
 */
#ifndef VELS_MONEY_H
#define VELS_MONEY_H

#include "vels/types.h"

VEL_BEGIN_DECLS

/*
 * Formats amounts, a double for each directive, into a buffer of `size` bytes and terminates it;
 * gives the bytes written, terminator excluded. Infinite amounts are "Inf" with symbol and sign,
 * others "NaN".
 *
 * -1 with VEL_E2BIG when text and terminator do not fit, VEL_EILSEQ for a format that is not of the
 * code set, VEL_EFORMAT when the format ends in a directive, VEL_ENUMFMT for "#" or "." without
 * digits and for "+" together with "(", VEL_ETIMEFMT for an unknown conversion. What was written
 * until then is in the buffer, without a terminator.
 */
VEL_API int32_t vel_mbsfmon(vel_locale *locale, char *bytes, int32_t size, const char *format, ...);

/* The same in wide characters: at most `limit` of them, behind which there is room for the
   terminator. Gives the characters written. */
VEL_API int32_t vel_wcsfmon(vel_locale *locale, vel_wchar *wide, int32_t limit,
                            const vel_wchar *format, ...);

/*
 * Reads amounts under a format and stores each through a double *; gives their number. The error
 * number is set to 0 first.
 *
 * What formatting writes under the same format is understood, except digits other than 0 that fill.
 * White space in the format stands for any white space, or none; blanks may stand before every part
 * of an amount, and behind one that is left-justified in a width. The symbol may be missing.
 * Negative amounts have their sign or parentheses, whatever the format asks for. Separators stand
 * where they belong or not at all.
 *
 * An amount that cannot be read ends the call with those before it: VEL_ENOCONV when there is none,
 * VEL_EINVAL for wrong grouping, VEL_ENONUM for one out of range, VEL_EILSEQ at bytes that are not
 * of the code set. -1 with VEL_ETIMEFMT when a character of the format is not in the input; for
 * formats as in formatting.
 */
VEL_API int32_t vel_mbspmon(vel_locale *locale, const char *input, const char *format, ...);

/* The same for wide input and format. */
VEL_API int32_t vel_wcspmon(vel_locale *locale, const vel_wchar *input, const vel_wchar *format,
                            ...);

VEL_END_DECLS

#endif

/*
 * Symbolic character names: text written as "<A><eacute>", a name in angle brackets for every
 * character, with nothing between them. In a name, "<" and "\" have a "\" in front.
 *
 * A charmap gives a character any number of names. Some stand for one character, others for ranges:
 * in a range that begins with <j0101> the seventh character is <j0107>.
 */
#ifndef VELS_SYMBOLS_H
#define VELS_SYMBOLS_H

#include "vels/types.h"

VEL_BEGIN_DECLS

/* The bytes of one slot of a list of names. */
#define VEL_SYMBOL_SLOT 143

/*
 * Multibyte text to names. `*input` is the text, of `length` bytes, or terminated when `length` is
 * below 1; `output` has room for `size` bytes. A name that does not fit ends the writing, but the
 * rest of the text is still checked.
 *
 * The bytes written, terminator included; 0 when `size` is below 1. `*input` is left at the end of
 * the text (in terminated text, at its terminator) or at the character that failed. -1 on failure:
 * VEL_ESYMNAME for a character without a name (the output is then empty) and, in terminated text,
 * for an invalid one; in counted text VEL_EILSEQ for an invalid character and VEL_EINVAL for one
 * that is cut off.
 */
VEL_API int32_t vel_mbstosyms(vel_charmap *charmap, char *output, int32_t size, const char **input,
                              int32_t length);

/*
 * Wide text to names: as vel_mbstosyms, `length` and the position counted in characters. Empty text
 * gives 0 and an empty output. -1 also with VEL_ENOMEM.
 */
VEL_API int32_t vel_wcstosyms(vel_charmap *charmap, char *output, int32_t size,
                              const vel_wchar **input, int32_t length);

/*
 * Names to multibyte text. `*input` is terminated; it is moved behind every name that was read.
 *
 * The bytes written, the terminator (of as many zero bytes as the shortest character has)
 * included. -1 on failure: VEL_EBADLEN when a character or the terminator does not fit into `size`
 * bytes; without a number, and with the output terminated, when what stands at `*input` is no name
 * or a name that the charmap does not have.
 */
VEL_API int32_t vel_symstombs(vel_charmap *charmap, char *output, int32_t size,
                              const char **input);

/* Names to wide text: as vel_symstombs, `size` and the result counted in characters. */
VEL_API int32_t vel_symstowcs(vel_charmap *charmap, vel_wchar *output, int32_t size,
                              const char **input);

/*
 * All names of one multibyte character of `length` bytes. Each of the first `count` is written,
 * in brackets and terminated, to a slot; one too long for a slot leaves it untouched. `slots` may be
 * null when `count` is 0.
 *
 * The number of names, which may exceed `count`. -1 on failure: VEL_EBADLEN for null slots with a
 * count above 0; VEL_EILSEQ and VEL_EINVAL as in vel_cm_mblen.
 */
VEL_API int32_t vel_mbtosymlist(vel_charmap *charmap, char (*slots)[VEL_SYMBOL_SLOT], int32_t count,
                                const char *character, int32_t length);

VEL_END_DECLS

#endif

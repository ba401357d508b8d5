/*
 * Code-set conversion: text from one code set to another, by the tables of a conversion object
 * (.cvo).
 *
 * A handle is its own error context. An open that fails still stores a handle, and its error cell
 * tells why; vel_cv_unload takes it like any other.
 */
#ifndef VELS_CONVERT_H
#define VELS_CONVERT_H

#include "vels/types.h"

VEL_BEGIN_DECLS

/*
 * The shift state of a conversion in pieces, owned by the caller; only conversions from or to a
 * code set with shift states use it. Start with reset set, clear it behind the first piece, and set
 * flush for the last one.
 */
typedef struct vel_cv_state {
    int32_t reset;       /* non-zero: the two below are cleared at the start of every call */
    int32_t flush;       /* non-zero: output that ends shifted is led back to the initial state */
    int32_t in_shifted;  /* the input is in its shifted state */
    int32_t out_shifted; /* the output is in its shifted state */
} vel_cv_state;

/*
 * Opens the conversion from one code set to another by their names, taken as they stand: the file is
 * "FROM_TO.cvo" in the directory of conversions beneath the installation directory.
 *
 * 0, or -1: VEL_ENOFILE for equal names, for names that make a file name of more than 1023 bytes,
 * and when there is no such file or it is no conversion object of this version; VEL_ENOMEM; the
 * numbers of a bad table (VEL_ELONGKEY, VEL_EBADFILE). An object whose characters would be longer
 * than 4 bytes fails without a number.
 */
VEL_API int32_t vel_iconv_open(vel_cv **handle, const char *to, const char *from);

/* Opens a conversion by the name of its file. As vel_iconv_open; a null name is VEL_ENOFILE. */
VEL_API int32_t vel_iconv_open1(vel_cv **handle, const char *file_name);

/*
 * Opens the conversion between the code sets of two locale specifications: what follows the first
 * ".", up to a blank, an "@" or the end, taken as vel_iconv_open takes names.
 *
 * 1 when it is open; 0 and a null handle when the two are the same and nothing needs converting; -1
 * as vel_iconv_open, and VEL_ENOFILE for a specification without a code set.
 */
VEL_API int32_t vel_cv_open(vel_cv **handle, const char *spec_to, const char *spec_from);

/*
 * Opens the conversion between the code sets of two locale specifications by their numbers, so
 * that any name or alias will do. `registry` is as for vel_lc_spec2cs_num; `directory` is the
 * directory to read from, null for the installed data.
 *
 * 1 when it is open; 0 and a null handle when the numbers are the same; -1: VEL_EINVAL for a code
 * set that the registry does not know, else as vel_iconv_open.
 */
VEL_API int32_t vel_cv_load(vel_cv **handle, const char *spec_to, const char *spec_from,
                            const char *registry, const char *directory);

/* Releases a handle. 0, or -1 for a null one. */
VEL_API int32_t vel_cv_unload(vel_cv *cv);

/*
 * Converts. `*input` is moved over what was read and `*input_length`, in bytes, goes down by it;
 * `*output` is moved over what was written and `*output_space` goes down by it. A null
 * `input_length` means terminated text: the conversion ends with its terminator, which is
 * converted, too. A null `output` means counting: nothing is written, but the space goes down.
 * `*substituted` becomes 1 when a character was replaced because the target has none for it, else
 * 0.
 *
 * `state` serves conversions with shift states and is ignored by others; null means that the text is
 * complete: it begins in the initial state and is led back to it. After VEL_E2BIG the state may
 * already be the one behind the character that did not fit. Give enough space (vel_cv_outbuflen),
 * or begin the piece again from a copy of the state.
 *
 * 0 when all the input was converted, else -1 with everything up to the character that failed
 * converted, and the positions there: VEL_EILSEQ for bytes that are no character, VEL_EINVAL for a
 * character that goes on behind the input, VEL_E2BIG when the next character does not fit.
 *
 * Where all target characters are units of 4 bytes, give a space that is a multiple of 4: a unit is
 * begun when 2 bytes are left.
 */
VEL_API int32_t vel_cv_mconv(vel_cv *cv, vel_cv_state *state, const unsigned char **input,
                             int32_t *input_length, unsigned char **output, int32_t *output_space,
                             int32_t *substituted);

/* The same without a state. */
VEL_API int32_t vel_miconv(vel_cv *cv, const unsigned char **input, int32_t *input_length,
                           unsigned char **output, int32_t *output_space, int32_t *substituted);

/* The same without output: measures it, by how much the space goes down. */
VEL_API int32_t vel_mconvlen(vel_cv *cv, vel_cv_state *state, const unsigned char **input,
                             int32_t *input_length, int32_t *output_space, int32_t *substituted);

/* The greatest ratio of output to input length, in bytes. */
VEL_API float vel_iconv_expansion(const vel_cv *cv);

/* That ratio rounded up to a whole number, times n: space that is enough for n bytes of input. */
VEL_API int32_t vel_cv_outbuflen(const vel_cv *cv, int32_t n);

VEL_END_DECLS

#endif

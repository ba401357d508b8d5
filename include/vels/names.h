/*
 * Locale specifications and the names of object files.
 *
 * Short specification: ll_tt.codeset@modifier. Long specification: "VEL_CTYPE = <short> ; ..." with
 * one entry per category, joined by " ; ".
 *
 * `context` is the handle whose error cell receives error numbers; with a null context no number
 * is stored. `path` names the code-set registry, null for the installed one. `dir` is a directory
 * that is put before object file names, null or empty for none; the byte 0xFF is written after it
 * and becomes the directory separator when the file is opened.
 *
 * Inputs are zero-terminated and cut after 285 bytes (310 in vel_lc_fname2lc_spec). Outputs belong
 * to the caller, are zero-terminated, and may be the input itself. No length is passed: a buffer
 * of 285 bytes, plus for each entry the prefix of object file names, holds every result except
 * where a function says otherwise. After a failure outputs may hold partial text.
 *
 * Functions return 0, or -1 with VEL_EINVAL for anything malformed and for a null input or output.
 * A code-set name that is not known gives the error number of vel_cs_name2cs_num: VEL_EINVAL,
 * VEL_EBADFILE or VEL_EFORMAT.
 */
#ifndef VELS_NAMES_H
#define VELS_NAMES_H

#include "vels/types.h"

VEL_BEGIN_DECLS

/*
 * The object file name of a specification: "en_us.8859-1" gives "en_us\0333.lco". A long
 * specification gives the same long form over file names; its categories may be any of the six,
 * each at most once and all of one code set. The code set is required, and a modifier has at most
 * four bytes.
 */
VEL_API int32_t vel_lc_spec2lc_fname(void *context, const char *spec, char *out, const char *path,
                                     const char *dir);

/*
 * Takes a file name without a directory apart: `lang` receives ll_TT (6 bytes), `codeset` the
 * code-set number in decimal (up to 6 bytes), `modifier` the modifier, possibly empty (up to 5
 * bytes). -1 without an error number when neither "\" nor "/" follows the territory.
 */
VEL_API int32_t vel_lc_fname2lc_pieces(void *context, const char *fname, char *lang, char *codeset,
                                       char *modifier);

/*
 * Joins pieces to a short specification of up to 17 bytes, terminator included: the first five
 * bytes of `lang`, up to five of `codeset`, which must be hexadecimal digits, and up to four of
 * `modifier`, which may be null or empty.
 */
VEL_API int32_t vel_lc_pieces2lc_spec(void *context, const char *lang, const char *codeset,
                                      const char *modifier, char *out);

/* The normal form of a short specification: "EN_us.Latin-1" gives "en_US.819". */
VEL_API int32_t vel_lc_short_spec2lc_short_norm(void *context, const char *spec, char *out,
                                                const char *path);

/*
 * The normal form of a short specification or of a long one. A long one must have six entries,
 * each followed by " ; ", all of one code set; so does the result. What follows them is ignored.
 */
VEL_API int32_t vel_lc_spec2lc_norm(void *context, const char *spec, char *out, const char *path);

/*
 * The long form of a short specification, lower-cased, the same for all six categories and without
 * a separator after the last. The code set may be left out. The modifier may have any length: the
 * output takes 97 bytes and six times the length of the input.
 */
VEL_API int32_t vel_lc_short2lc_long(void *context, const char *short_spec, char *out,
                                     const char *path);

/*
 * The short form, lower-cased, of a long specification whose six entries agree but for case.
 */
VEL_API int32_t vel_lc_spec2lc_short(void *context, const char *long_spec, char *out,
                                     const char *path);

/*
 * The entry of one category (VEL_CTYPE to VEL_MESSAGES), as written, of a long specification that
 * has all six categories, all of one code set. Any other category number gives 0 and no output.
 */
VEL_API int32_t vel_lc_spec2category(void *context, const char *long_spec, int32_t category,
                                     char *out, const char *path);

/*
 * 0 when the text is a well-formed long specification of any of the six categories, each at most
 * once. Code-set names are not looked up. -1 without an error number when language or territory is
 * not two letters.
 */
VEL_API int32_t vel_is_lc_spec(void *context, const char *spec);

/*
 * Turns a long form over object file names, of all six categories, back into a long specification
 * with decimal code-set numbers; the six files must exist.
 *
 * When `dir` is given, a backslash is appended to the caller's text, which needs room for it, and
 * the files are looked for beneath it; otherwise among the installed locales.
 *
 * Fails with VEL_EFORMAT when a file cannot be opened, VEL_ENOMEM when no path can be built, and
 * without an error number when neither "\" nor "/" follows a territory.
 */
VEL_API int32_t vel_lc_fname2lc_spec(void *context, const char *long_fname, char *out, char *dir);

/*
 * The message directory of a specification: the first 10 bytes of the object file name, prefix
 * included, of the category VEL_MESSAGES or of a short specification. The output takes 11 bytes.
 */
VEL_API int32_t vel_lc_spec2msg_dname(void *context, const char *spec, char *out, const char *path,
                                      const char *dir);

/*
 * The file name of the conversion between two code sets: 819 to 437 gives "033301b5.cvo". The
 * output takes 13 bytes and the prefix. Cannot fail.
 */
VEL_API void vel_cs_nums2cv_fname(void *context, uint16_t from, uint16_t to, char *out,
                                  const char *dir);

VEL_END_DECLS

#endif

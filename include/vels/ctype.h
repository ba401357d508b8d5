/*
 * Character classes and case of the code set of a locale, by the tables of its VEL_CTYPE category.
 *
 * Wide functions take the wide value of a character, multibyte functions a pointer to its bytes;
 * all of them serve every code set. A class is a mask of 16 bits, and masks combine: a test for
 * VEL_CLASS_ALPHA | VEL_CLASS_DIGIT is non-zero for a letter or a digit.
 *
 * Undefined behaviour: a null locale, text or output; bytes that end before the character or the
 * string does, where no length is given; outputs that overlap their source.
 */
#ifndef VELS_CTYPE_H
#define VELS_CTYPE_H

#include "vels/types.h"

/* The built-in classes. Those that a locale defines have the bits above. */
#define VEL_CLASS_UPPER 1
#define VEL_CLASS_LOWER 2
#define VEL_CLASS_ALPHA 4
#define VEL_CLASS_DIGIT 8
#define VEL_CLASS_SPACE 16
#define VEL_CLASS_CNTRL 32
#define VEL_CLASS_PUNCT 64
#define VEL_CLASS_GRAPH 128
#define VEL_CLASS_PRINT 256
#define VEL_CLASS_XDIGIT 512
#define VEL_CLASS_BLANK 1024
#define VEL_CLASS_ALNUM 12

VEL_BEGIN_DECLS

/* --- Classes ---------------------------------------------------------------------------------- */

/* The mask of the class with this name, compared exactly: a built-in class, `alnum`, or one that
   the locale defines. 0 for an unknown name, without an error. */
VEL_API int32_t vel_ctype(vel_locale *locale, const char *name);

/* The classes among `mask` that the character is in: 0 for none, and 0 with VEL_EILSEQ when the
   code set has no character with this value. */
VEL_API int32_t vel_im_iswctype(vel_locale *locale, vel_wchar value, int32_t mask);
/* The same function under its second name. */
VEL_API int32_t im_iswctype(vel_locale *locale, vel_wchar value, int32_t mask);

/* The classes among `mask` that the character at `character` is in: 0 for none, and 0 with
   VEL_EILSEQ when it is invalid. */
VEL_API int32_t vel_im_ismctype(vel_locale *locale, const char *character, int32_t mask);
/* The same function under its second name. */
VEL_API int32_t im_ismctype(vel_locale *locale, const char *character, int32_t mask);

/* As vel_im_ismctype within `nbytes` bytes: 0 with VEL_EINVAL when `nbytes` is below 1 or the
   character has more bytes. */
VEL_API int32_t tuk_vel_im_ismctype(vel_locale *locale, const char *character, int32_t nbytes,
                                    int32_t mask);

/* --- Case of one character -------------------------------------------------------------------- */

/* The upper-case value, or `value` itself when it has none. For a value without a character that is
   the value, with VEL_EILSEQ. */
VEL_API vel_wchar vel_im_towupper(vel_locale *locale, vel_wchar value);

/* The lower-case value; otherwise as vel_im_towupper. */
VEL_API vel_wchar vel_im_towlower(vel_locale *locale, vel_wchar value);
/* The same function under its second name. */
VEL_API vel_wchar im_towlower(vel_locale *locale, vel_wchar value);

/*
 * Writes the upper-case form of one character, at most four bytes and no terminator; a character
 * without one is copied. The result holds two numbers: (bytes read << 8) | bytes written. They may
 * differ.
 *
 * An invalid character does not fail: the bytes up to and with the offending one are copied and
 * VEL_EILSEQ is stored.
 */
VEL_API int32_t vel_im_tomupper(vel_locale *locale, char *out, const char *character);

/* The lower-case form; otherwise as vel_im_tomupper. */
VEL_API int32_t vel_im_tomlower(vel_locale *locale, char *out, const char *character);
/* The same function under its second name. */
VEL_API int32_t im_tomlower(vel_locale *locale, char *out, const char *character);

/* As vel_im_tomupper within `nbytes` bytes, and nothing is copied on failure: 0 with VEL_EINVAL
   when `nbytes` is below 1 or the character has more bytes, 0 with VEL_EILSEQ when it is invalid.
 */
VEL_API int32_t tuk_vel_im_tomupper(vel_locale *locale, char *out, const char *character,
                                    int32_t nbytes);
/* The lower-case form; otherwise as tuk_vel_im_tomupper. */
VEL_API int32_t tuk_vel_im_tomlower(vel_locale *locale, char *out, const char *character,
                                    int32_t nbytes);

/* --- Case of strings -------------------------------------------------------------------------- */

/*
 * Writes the upper-case form of a terminated multibyte string and its terminator; gives the bytes
 * written, terminator excluded. The output needs vel_case_conv_outbuflen bytes and the terminator:
 * its size is not checked.
 *
 * -1 with VEL_EILSEQ when a character is invalid; the text before it has been written, without a
 * terminator.
 */
VEL_API int32_t vel_tombsupper(vel_locale *locale, char *out, const char *string);
/* The lower-case form; otherwise as vel_tombsupper. */
VEL_API int32_t vel_tombslower(vel_locale *locale, char *out, const char *string);

/*
 * Writes the upper-case form of a terminated wide string, as many values as the string has, and its
 * terminator. Returns 0, not a count.
 *
 * -1 with VEL_EILSEQ at a value without a character; those before it have been written, without a
 * terminator. `out` may be `wide` itself.
 */
VEL_API int32_t vel_towcsupper(vel_locale *locale, vel_wchar *out, const vel_wchar *wide);
/* The lower-case form; otherwise as vel_towcsupper. */
VEL_API int32_t vel_towcslower(vel_locale *locale, vel_wchar *out, const vel_wchar *wide);

/* The bytes that suffice for the case conversion of `n` bytes of text, terminator excluded: `n`
   times the locale's growth factor rounded up. */
VEL_API int32_t vel_case_conv_outbuflen(vel_locale *locale, int32_t n);

VEL_END_DECLS

#endif

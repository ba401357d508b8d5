/*
 * Comparing strings by the collation of a locale, sort keys with the same order, comparing strings
 * by value, and stepping through the characters in their primary order.
 *
 * A collation has one to eight passes, each with weights of its own: the first pass that tells two
 * strings apart decides, and a string that ends first comes first. Characters may be ignorable in a
 * pass, count as several, or be ordered together with those that follow, as collating elements. A
 * locale of the Thai kind is ordered by a fixed rule over the bytes of the Thai code set instead,
 * and one without a collation by the values of its characters.
 *
 * What has no collation index, which is nothing in the text of a code set that the collation was
 * made for, ends a string early. Of two strings whose weights are the same until then, one that
 * ends so comes after one that is over.
 *
 * Names and lengths are those of multibyte.h: tuk_ functions take counted text, in bytes or values,
 * and a length of -1 stands for terminated text; either both lengths are -1 or neither is.
 *
 * Comparing gives 0 both for equal strings and on failure: a caller that must know clears the error
 * cell before. No function changes it on success. Nothing is allocated for strings below 128
 * characters; beyond, the memory taken is linear in their length.
 *
 * With a null locale the functions that take one give their failure value; there is no cell to
 * store a number in. Undefined behaviour: text shorter than its length, or not terminated where it
 * has to be.
 */
#ifndef VELS_COLLATE_H
#define VELS_COLLATE_H

#include "vels/types.h"

VEL_BEGIN_DECLS

/* --- Comparing by collation ------------------------------------------------------------------- */

/*
 * The order of two wide strings: -1, 0 or 1.
 *
 * 0 with VEL_EFAULT for a null string, with VEL_EMIXEDLEN when one length is -1 and the other is
 * not, with VEL_ENOMEM when memory cannot be had. In a locale of the Thai kind also 0 with
 * VEL_EILSEQ for a value that has no character.
 */
VEL_API int32_t vel_full_wcscoll(vel_locale *locale, const vel_wchar *s1, const vel_wchar *s2);
VEL_API int32_t tuk_vel_full_wcscoll(vel_locale *locale, const vel_wchar *s1, int32_t len1,
                                     const vel_wchar *s2, int32_t len2);

/*
 * The order of two multibyte strings of any code set: -1, 0 or 1; in a locale without a collation,
 * what tuk_vel_wcfscmp gives for their values.
 *
 * 0 with VEL_EFAULT, VEL_EMIXEDLEN and VEL_ENOMEM as above, and with VEL_EILSEQ when either string
 * is invalid, wherever that is.
 */
VEL_API int32_t vel_im_mbscoll(vel_locale *locale, const char *s1, const char *s2);
VEL_API int32_t tuk_vel_im_mbfscoll(vel_locale *locale, const char *s1, int32_t len1,
                                    const char *s2, int32_t len2);

/*
 * The order of two strings of a single-byte code set: -1, 0 or 1. For hosts that choose by the
 * features of a collation. These take into account its expansions (_exp), its collating elements
 * (_elem), both (_exp_elem), or its backward passes (_back), and nothing else of the three:
 * expansions are taken for plain weights otherwise, the characters of elements one by one, and
 * backward passes as forward ones. Bytes without a collation index end a string as its end does.
 * vel_im_mbscoll does all of it for every locale.
 *
 * Failures as for vel_full_wcscoll; VEL_EILSEQ for a length below -1.
 */
VEL_API int32_t vel_is_mbscoll_exp(vel_locale *locale, const char *s1, const char *s2);
VEL_API int32_t tuk_vel_is_mbfscoll_exp(vel_locale *locale, const char *s1, int32_t len1,
                                        const char *s2, int32_t len2);
VEL_API int32_t vel_is_mbscoll_elem(vel_locale *locale, const char *s1, const char *s2);
VEL_API int32_t tuk_vel_is_mbfscoll_elem(vel_locale *locale, const char *s1, int32_t len1,
                                         const char *s2, int32_t len2);
VEL_API int32_t vel_is_mbscoll_back(vel_locale *locale, const char *s1, const char *s2);
VEL_API int32_t tuk_vel_is_mbfscoll_back(vel_locale *locale, const char *s1, int32_t len1,
                                         const char *s2, int32_t len2);
VEL_API int32_t vel_is_mbscoll_exp_elem(vel_locale *locale, const char *s1, const char *s2);
VEL_API int32_t tuk_vel_is_mbfscoll_exp_elem(vel_locale *locale, const char *s1, int32_t len1,
                                             const char *s2, int32_t len2);

/* --- Sort keys -------------------------------------------------------------------------------- */

/*
 * Writes the sort key of a terminated string and gives its length in bytes, without the terminator.
 * Keys hold no zero byte and compare as the strings do, by memcmp or strcmp, if all their
 * characters have a collation index. At most `size` bytes are written, the terminator included; a
 * result of `size` or more says that the key was cut. With a size of 0 or less the key is only
 * measured, and `out` may be null. Keys of two locales have nothing to do with each other.
 *
 * In a locale without a collation the key is the string in multibyte form; in one of the Thai kind
 * it is that of vel_thaismoxfrm.
 *
 * -1 with VEL_EFAULT for a null string or output, with VEL_ENOMEM when memory cannot be had, with
 * VEL_EILSEQ when the multibyte string is invalid, or a value has no character and has to be
 * written as one.
 */
VEL_API int32_t vel_wcsxfrm(vel_locale *locale, char *out, const vel_wchar *wide, int32_t size);
VEL_API int32_t vel_full_mbsxfrm(vel_locale *locale, char *out, const char *string, int32_t size);

/*
 * The direction of a pass, counted from 1: 1 forward, 2 backward.
 *
 * -1 with VEL_EBADMODE in a locale of the Thai kind, with VEL_ENOPRINT when there is no such pass,
 * with VEL_ENOTFOUND when the pass has neither direction.
 */
VEL_API int32_t vel_getpassdirection(vel_locale *locale, int32_t pass);

/* --- Comparing by value ----------------------------------------------------------------------- */

/* The order of two wide strings by the first values that differ: -1, 0 or 1. */
VEL_API int32_t vel_wcscmp(const vel_wchar *s1, const vel_wchar *s2);

/* The same for counted strings. When one is the beginning of the other the result is the number of
   values that len1 is longer, not reduced to -1 or 1. */
VEL_API int32_t tuk_vel_wcfscmp(const vel_wchar *s1, int32_t len1, const vel_wchar *s2,
                                int32_t len2);

/* The difference, in 32 bits, of the first values that differ within the first n; 0 when they are
   the same or both end, and for an n below 1. */
VEL_API int32_t vel_wcsncmp(const vel_wchar *s1, const vel_wchar *s2, int32_t n);

/*
 * The order of two multibyte strings by the first characters that differ: one of fewer bytes comes
 * first, those of equal length are in the order of their bytes. -1, 0 or 1; 0 with VEL_EFAULT for a
 * null string, with VEL_EILSEQ at an invalid character that is reached.
 */
VEL_API int32_t vel_full_mbscmp(vel_locale *locale, const char *s1, const char *s2);

/* The order of the first n characters of two multibyte strings, or of as many as there are, byte by
   byte: -1, 0 or 1. 0 for an n below 1; errors as for vel_full_mbscmp, for those characters. */
VEL_API int32_t vel_full_mbsncmp(vel_locale *locale, const char *s1, const char *s2, int32_t n);

/*
 * The order of two multibyte strings byte by byte: -1 or 1 at the first bytes that differ, else the
 * number of bytes that the first is longer.
 *
 * 0 with VEL_EFAULT for a null string, with VEL_EMIXEDLEN when one length is -1 and the other is
 * not. With lengths of -1, in a code set whose terminator has several bytes, 0 with VEL_EILSEQ for
 * an invalid string.
 */
VEL_API int32_t tuk_vel_mbscmp(vel_locale *locale, const char *s1, int32_t len1, const char *s2,
                               int32_t len2);

/* --- Thai ------------------------------------------------------------------------------------- */

/*
 * The order of two strings of Thai bytes: negative, 0 or positive. A leading vowel counts after the
 * consonant that it precedes; tone marks and diacritics count when everything else is the same, and
 * trailing spaces not at all.
 *
 * The lengths of the second function do not bound the strings, which are terminated in either form;
 * 0 with VEL_EMIXEDLEN when one is -1 and the other is not.
 */
VEL_API int32_t vel_thaismocoll(vel_locale *locale, const char *s1, const char *s2);
VEL_API int32_t tuk_vel_thaismoncoll(vel_locale *locale, const char *s1, int32_t len1,
                                     const char *s2, int32_t len2);

/* Writes the first bytes of the sort key of such a string with its terminator, `size` of them and
   at most 256, and gives the length of the whole key. A key that is cut has no terminator. With a
   null output the key is only measured. */
VEL_API int32_t vel_thaismoxfrm(vel_locale *locale, char *out, const char *string, int32_t size);

/* --- Composite characters and primary order --------------------------------------------------- */

/*
 * What a terminated string is to the collation: 2 a whole collating element of two or more
 * characters, 3 the beginning of one, 1 neither. The first element in the table that the string
 * fits decides.
 *
 * -1 with VEL_EFAULT for a null string, with VEL_EILSEQ for an invalid one, with VEL_ENOMEM when
 * memory cannot be had.
 */
VEL_API int32_t vel_iscompchar(vel_locale *locale, const char *string);

/* The same by the rules of Thai, and what vel_iscompchar gives in a locale of that kind: a leading
   vowel or a mark at the end of the string makes it 3, a consonant there 2. */
VEL_API int32_t vel_iscompchar_thai(vel_locale *locale, const char *string);

/*
 * Finds what comes next, or before, in the order of the first pass: writes to `out` the terminated
 * character or collating element whose first-pass key is the nearest to that of the string on that
 * side, and gives the bytes of its first character; -2 when there is none. The null character, an
 * empty string then, can be what comes before all others: the result is 0.
 *
 * Flag 0 is for a string that begins a collating element (vel_iscompchar gives 3): elements that
 * begin so are preferred, then any character may be nearer. Another flag is for all other strings,
 * and every element is looked at behind the characters. Characters whose first-pass key is that of
 * an expansion are left out. In a locale of the Thai kind the order is that of whole Thai keys, and
 * the elements are the leading vowels each with a consonant.
 *
 * `out` has room for the longest element, four bytes a character, and a terminator.
 *
 * -1 with VEL_EFAULT for a null string, with VEL_EBADLEN when the flag does not fit the string,
 * with VEL_EILSEQ for an invalid string, with VEL_ENOMEM when memory cannot be had.
 */
VEL_API int32_t vel_nextprimweight(vel_locale *locale, const char *string, int32_t flag, char *out);
VEL_API int32_t vel_prevprimweight(vel_locale *locale, const char *string, int32_t flag, char *out);

VEL_END_DECLS

#endif

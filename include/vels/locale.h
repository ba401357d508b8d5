/*
 * Locales: making, loading, sharing, setting, copying and freeing them.
 *
 * A locale has six categories, VEL_CTYPE to VEL_MESSAGES, each of which is either null (usable,
 * with built-in defaults) or loaded from a locale object file. VEL_ALL stands for all six. For each
 * category the locale remembers the name of its code set (up to 20 bytes) and of its file (up to 31
 * bytes, longer ones are cut); both are empty while the category is null.
 *
 * Every handle is released by the operation that matches its making: vel_lc_unload, or
 * vel_free_nonshared_loc for a locale whose categories were copied with vel_copy_cat.
 *
 * A handle that is stored together with a failure is never null: it is a locale whose error cell
 * holds the number, or one of two static records that stand for VEL_ENOMEM and VEL_ENOFILE. Either
 * may be released like any other; releasing a static record does nothing.
 *
 * Locales are made, set and released from one thread at a time. Any number of threads may read a
 * loaded locale.
 *
 * File names may hold "\" as the separator on every platform. Unless a function says otherwise
 * they are looked for beneath the installation directory, in vels\lc11, or in the directories of
 * the environment variable VEL_PATH.
 */
#ifndef VELS_LOCALE_H
#define VELS_LOCALE_H

#include "vels/types.h"

VEL_BEGIN_DECLS

/*
 * Makes a locale whose six categories are null and stores it in `*locale`.
 *
 * Returns 0. -1 with the static record for VEL_ENOMEM in `*locale` when memory cannot be had; -1
 * when `locale` is null.
 */
VEL_API int32_t vel_create_null_locale_4(vel_locale **locale);

/*
 * Makes a category null, without freeing what it held: call vel_free_category first. A category
 * outside VEL_CTYPE to VEL_MESSAGES changes nothing. Cannot fail.
 */
VEL_API void vel_make_null_category(vel_locale *locale, int32_t category);

/*
 * Frees what a category holds and leaves it null. What was copied from another locale stays with
 * its owner. A category outside VEL_CTYPE to VEL_MESSAGES changes nothing.
 */
VEL_API void vel_free_category(vel_locale *locale, int32_t category);

/*
 * Makes a locale from the installed file default.lco and stores it in `*locale`. The file name of
 * its six categories is "default.lco".
 *
 * Returns 0, or -1 with an error in the handle: VEL_ENOMEM and VEL_ENOFILE (a static record, or for
 * VEL_ENOMEM possibly a locale), VEL_EBADFILE, VEL_EVERSION, VEL_ECALENDAR, VEL_ENOPRINT (more than
 * 15 grouping sizes), VEL_ENOFILE (a string without the space after its length), VEL_EILSEQ (a
 * string that is not text of the code set), VEL_ENOERA (a code set without characters), VEL_ELOCALE
 * (any other reason).
 */
VEL_API int32_t vel_createlocale_4(vel_locale **locale);

/*
 * The same from `directory`, to which "default.lco" is appended as it stands: write the final
 * separator. When `directory` is null or the file cannot be opened there, the installed one is
 * taken.
 */
VEL_API int32_t vel_createlocale2_4(vel_locale **locale, const char *directory);

/*
 * Replaces one category of a locale, or with VEL_ALL all six in the order of their numbers, from
 * the files that `specification` names, and returns the names that are now set: the file name of
 * the one category, or "VEL_CTYPE = name ; VEL_COLLATE = name ; ..." with " ; " after each entry.
 * The text is the caller's, to be freed with vel_destroystring. A null specification changes
 * nothing and only returns the names.
 *
 * The specification of a category is the text after "VEL_xxx =" where the specification holds the
 * name of the category, up to a blank and at most 32 bytes, and else the whole text. When it is
 * empty, the first of these environment variables that is not empty takes its place: VEL_ALL, the
 * one named like the category, VEL_LANG; and then "default.lco". It names a file; "native" names
 * the installed default.lco.
 *
 * A category is loaded when its code set is that of VEL_CTYPE. VEL_CTYPE itself may change the code
 * set: categories that stay then belong to the old one until they are set too.
 *
 * Returns null on failure. A category whose file was opened but could not be read is null then;
 * those loaded before it stay loaded. Errors:
 *   VEL_EBADLEN   the category is none, or the specification is longer than 311 bytes
 *   VEL_ENOFILE   the file could not be opened; a string in it lacks the space after its length
 *   VEL_ENOMEM    memory could not be had; a string of VEL_TIME cannot be read
 *   VEL_EBADFILE  the file is not a locale object or does not hold what it announces
 *   VEL_EVERSION  its format version is another one
 *   VEL_ECODESET  its code set is not that of VEL_CTYPE, or VEL_CTYPE is null
 *   VEL_ECALENDAR VEL_TIME names an unknown calendar
 *   VEL_ENOPRINT  more than 15 grouping sizes
 *   VEL_EILSEQ    a string is not text of the code set
 *   VEL_ENOERA    the character table of VEL_CTYPE is empty
 *   VEL_ELOCALE   any other reason
 * For a null locale and for a static record the result is null and no number is stored.
 */
VEL_API char *vel_setlocale_4(vel_locale *locale, int32_t category, const char *specification);

/*
 * Loads the locale that `specification` names, or takes the one that is loaded under that name
 * already, and stores it in `*locale`. Each load is undone by one vel_lc_unload.
 *
 * `length` is the length of the specification in bytes, or -1 when it is terminated; counted text
 * also ends at a zero byte. A null specification is an empty one. A locale specification as
 * described in names.h is turned into the names of files; anything else is taken as the name of a
 * file, as vel_setlocale_4 takes it. The files are looked for in `directory`, or as above when that
 * is null; the directory is no part of the name under which the locale is shared. In a directory,
 * "native" names the file of that name.
 *
 * Returns 0, or -1 with an error in the handle: those of vel_setlocale_4, with VEL_EBADLEN for a
 * specification of more than 311 bytes or a length below -1. -1 when `locale` is null. A locale
 * that comes with a failure is not shared, and is released with vel_lc_unload.
 */
VEL_API int32_t vel_lc_load(vel_locale **locale, const char *specification, int32_t length,
                            const char *directory);

/*
 * Releases a locale. A shared one is freed when every load of it has been undone. Null and the
 * static records are ignored.
 */
VEL_API void vel_lc_unload(vel_locale *locale);

/*
 * Copies one category, or with VEL_ALL all six, from `source` into null categories of
 * `destination`. Nothing is duplicated: the source has to outlive the destination, and the category
 * must not be set anew in the source meanwhile.
 *
 * Returns 0, or -1 with an error in the destination, which is then unchanged:
 *   VEL_EBADLEN    the category is none
 *   VEL_ENOCAT     a category is not loaded in the source
 *   VEL_ECATLOADED a category is already loaded in the destination
 *   VEL_ENOMEM     memory for what is derived from the category could not be had
 * With a null locale, or a static record as the destination, -1 and no number is stored.
 */
VEL_API int32_t vel_copy_cat(vel_locale *destination, vel_locale *source, int32_t category);

/*
 * Releases a locale whose categories were copied: what the locale itself owns is freed, its
 * categories never are. For a shared locale one load is undone first, and nothing is freed before
 * the last. Null and the static records are ignored.
 */
VEL_API void vel_free_nonshared_loc(vel_locale *locale);

VEL_END_DECLS

#endif

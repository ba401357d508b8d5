/*
 * Charmaps: the characters of one code set and their symbolic names, from a charmap object (.cmo).
 *
 * The handle is its own error context. `charmap` is never null unless a function says so.
 */
#ifndef VELS_CHARMAP_H
#define VELS_CHARMAP_H

#include "vels/types.h"

VEL_BEGIN_DECLS

/*
 * Loads the charmap of a code set. `name` is a code-set name or a locale specification that the
 * registry turns into a code-set number, and the file is then that number in four hexadecimal
 * digits and ".cmo"; a name that the registry does not know is itself the name of the file.
 * `name_length` is the number of bytes of the name; below 1 the name is terminated. `directory` is
 * the directory to read from; null means the directory of charmaps beneath the installation
 * directory. No argument is kept.
 *
 * 0 with the new charmap in `*charmap`, which the caller releases with vel_cm_unload.
 * -1 on failure; `*charmap` then points to a record of the library's own whose error cell holds the
 * number and which need not be unloaded: VEL_ENOMEM; VEL_ENOFILE when the file cannot be opened;
 * VEL_EBADFILE when it is not a charmap object or is damaged; VEL_EVERSION when it is one of another
 * version.
 */
VEL_API int32_t vel_cm_load(vel_charmap **charmap, const char *name, int32_t name_length,
                            const char *directory);

/* Releases a loaded charmap; null, and what a failed vel_cm_load gave, are ignored. */
VEL_API void vel_cm_unload(vel_charmap *charmap);

/*
 * The bytes of the character at `s`, of which `n` bytes may be read. A null `s` gives 0.
 * -1 on failure: VEL_EILSEQ when no character begins there, VEL_EINVAL when n is below 1 or the
 * character goes on behind the n bytes.
 */
VEL_API int32_t vel_cm_mblen(vel_charmap *charmap, const char *s, int32_t n);

/* The bytes of the longest and of the shortest character; 0 and 4 when there are no characters. */
VEL_API int32_t vel_mb_cm_max(const vel_charmap *charmap);
VEL_API int32_t vel_mb_cm_min(const vel_charmap *charmap);

/* The name of the code set, at most 21 bytes; it lives as long as the charmap. */
VEL_API const char *vel_cm_csname(const vel_charmap *charmap);

/* The version of the source, 0 when the object tells none, and the version of the object format. */
VEL_API int32_t vel_cm_srcver(const vel_charmap *charmap);
VEL_API int32_t vel_cm_cmpver(const vel_charmap *charmap);

VEL_END_DECLS

#endif

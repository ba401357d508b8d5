/*
 * The code-set registry: the file that gives every code-set name its 16-bit number.
 *
 * The file is read for every look-up until vel_cache_registry is called. The cache is process-wide
 * and unguarded: nobody may look a name up while it is made or freed.
 *
 * `context` is the handle whose error cell receives error numbers; with a null context no number
 * is stored. `path` names the registry file; null means the file "registry" of the installed data
 * (vels\cm3\registry beneath the installation directory). No argument is kept.
 */
#ifndef VELS_REGISTRY_H
#define VELS_REGISTRY_H

#include "vels/types.h"

VEL_BEGIN_DECLS

/* One line of the registry, in the order of the file. */
typedef struct vel_registry_entry {
    char *name;      /* lower case, 1 to 21 bytes and a terminating zero */
    uint16_t number; /* code-set number */
    struct vel_registry_entry *next;
} vel_registry_entry;

/*
 * Reads the whole registry into memory, in place of what was cached before. An empty `path` counts
 * as null here.
 *
 * Returns the first entry, which stays the library's and is valid until the cache is made anew or
 * freed; null when the file holds no entries. After a failure it is null too, and the built-in
 * table of code sets answers look-ups until the cache is freed or made: VEL_EFORMAT when the file
 * cannot be opened, VEL_ENOMEM, VEL_EBADFILE for an entry without a usable number.
 */
VEL_API const vel_registry_entry *vel_cache_registry(void *context, const char *path);

/* Frees the cache; later look-ups read the file again. */
VEL_API void vel_free_registry_cache(void);

/*
 * The number of a code-set name, compared without regard to case and cut to 21 bytes. A name that
 * the registry lacks may itself be a decimal number up to 65535. `path` is used only while nothing
 * is cached, and an empty one is a file that cannot be opened.
 *
 * VEL_CS_INVALID on failure: VEL_EINVAL for an unknown name, VEL_EFORMAT when the registry cannot
 * be opened, VEL_EBADFILE when the name has no usable number there or the file ends inside a line
 * before the name is found.
 */
VEL_API uint16_t vel_cs_name2cs_num(void *context, const char *name, const char *path);

/*
 * The one code set of a locale specification of at most 285 bytes: short ("en_us.8859-1"), long
 * (every entry followed by " ; ", the last included), or a bare code-set name or number.
 *
 * VEL_CS_INVALID on failure: VEL_EINVAL for a malformed long specification and for entries of
 * different code sets; for the other forms the numbers of vel_cs_name2cs_num.
 */
VEL_API uint16_t vel_lc_spec2cs_num(void *context, const char *spec, const char *path);

VEL_END_DECLS

#endif

/*
 * The host-function table: how the library reaches memory, files, the environment, the clock and
 * the error cell, and how an embedding program replaces each of them.
 *
 * The table is process-wide and unguarded. Install hooks from one thread, before the first locale
 * is created: a block must be freed by the same hook family that allocated it.
 */
#ifndef VELS_HOST_H
#define VELS_HOST_H

#include "vels/types.h"

/* Slots of the table. */
#define VEL_HOOK_GETENV 0
#define VEL_HOOK_ERRNO 1
#define VEL_HOOK_FCLOSE 2
#define VEL_HOOK_FEOF 3
#define VEL_HOOK_FERROR 4
#define VEL_HOOK_FGETC 5
#define VEL_HOOK_FGETS 6
#define VEL_HOOK_FOPEN 7
#define VEL_HOOK_FREE 8
#define VEL_HOOK_FSEEK 9
#define VEL_HOOK_FTELL 10
#define VEL_HOOK_FWRITE 11
#define VEL_HOOK_GETC 12
#define VEL_HOOK_MALLOC 13
#define VEL_HOOK_UNGETC 14
#define VEL_HOOK_PUTENV 15
#define VEL_HOOK_CURRDATE 16
#define VEL_HOOK_CURRTIME 17
#define VEL_HOOK_COUNT 18

VEL_BEGIN_DECLS

/* Any hook, cast; the library casts it back to the type of the slot's default before a call. */
typedef void (*vel_hook)(void);

/*
 * Installs `function` in `slot`; null brings the slot's default back. The function must have the
 * type of the default `vel_ext_<hook>` declared below. Nothing checks it.
 *
 * Returns 0, or -1 with VEL_EBADLEN for a slot outside 0 to 17 (the table is then unchanged).
 */
VEL_API int32_t vel_setextfunc(void *context, int32_t slot, vel_hook function);

/*
 * What is installed in `slot`, so that a host hook can chain to an earlier one: null while the
 * default is in use. Null with VEL_EBADLEN for a slot outside 0 to 17.
 */
VEL_API vel_hook vel_getextfunc(void *context, int32_t slot);

/*
 * The dispatchers: each calls what is installed in its slot, or else its default. These are what
 * the library itself calls. Streams are opaque pointers that only the hooks look into.
 */
VEL_API char *_vel_ext_getenv(const char *name);
VEL_API int32_t *_vel_ext_errno(void *context);
VEL_API int32_t _vel_ext_fclose(void *stream);
VEL_API int32_t _vel_ext_feof(void *stream);
VEL_API int32_t _vel_ext_ferror(void *stream);
VEL_API int32_t _vel_ext_fgetc(void *stream);
VEL_API char *_vel_ext_fgets(char *buffer, int32_t size, void *stream);
VEL_API void *_vel_ext_fopen(const char *path, const char *mode);
VEL_API void _vel_ext_free(void *block);
VEL_API int32_t _vel_ext_fseek(void *stream, int32_t offset, int32_t whence);
VEL_API int32_t _vel_ext_ftell(void *stream);
VEL_API size_t _vel_ext_fwrite(const void *buffer, size_t size, size_t count, void *stream);
VEL_API int32_t _vel_ext_getc(void *stream);
VEL_API void *_vel_ext_malloc(size_t size);
VEL_API int32_t _vel_ext_ungetc(int32_t c, void *stream);
VEL_API int32_t _vel_ext_putenv(const char *assignment);
VEL_API int32_t _vel_ext_currdate(vel_date *date);
VEL_API int32_t _vel_ext_currtime(vel_time_record *time);

/*
 * The defaults, for host hooks to fall back on. They have the meanings and results of the C
 * library's functions of the same names, with these particulars:
 *
 * vel_ext_errno returns its argument: the first 32 bits of a handle are its error cell.
 * vel_ext_fopen refuses directories, on every platform.
 * vel_ext_putenv takes "NAME=value", copies it, and removes NAME when the value is empty; returns
 * 0 or -1.
 * vel_ext_ftell returns -1 for a position that 32 bits cannot hold.
 * vel_ext_currdate and vel_ext_currtime fill the record with the local date or time, leave
 * `subsecond` and `reserved` 0, and return 0.
 */
VEL_API char *vel_ext_getenv(const char *name);
VEL_API int32_t *vel_ext_errno(void *context);
VEL_API int32_t vel_ext_fclose(void *stream);
VEL_API int32_t vel_ext_feof(void *stream);
VEL_API int32_t vel_ext_ferror(void *stream);
VEL_API int32_t vel_ext_fgetc(void *stream);
VEL_API char *vel_ext_fgets(char *buffer, int32_t size, void *stream);
VEL_API void *vel_ext_fopen(const char *path, const char *mode);
VEL_API void vel_ext_free(void *block);
VEL_API int32_t vel_ext_fseek(void *stream, int32_t offset, int32_t whence);
VEL_API int32_t vel_ext_ftell(void *stream);
VEL_API size_t vel_ext_fwrite(const void *buffer, size_t size, size_t count, void *stream);
VEL_API int32_t vel_ext_getc(void *stream);
VEL_API void *vel_ext_malloc(size_t size);
VEL_API int32_t vel_ext_ungetc(int32_t c, void *stream);
VEL_API int32_t vel_ext_putenv(const char *assignment);
VEL_API int32_t vel_ext_currdate(vel_date *date);
VEL_API int32_t vel_ext_currtime(vel_time_record *time);

/*
 * Frees a string that an exported function allocated and handed to the caller. Null is ignored.
 */
VEL_API void vel_destroystring(void *block);

/* The library's release. */
VEL_API const char *vel_version(void);
/* The format versions of the charmap, locale and conversion objects that the loaders accept. */
VEL_API const char *vel_cm_version(void);
VEL_API const char *vel_lc_version(void);
VEL_API const char *vel_cv_version(void);

/*
 * Stream operations for the host, each a plain call of the hook of the same name. No error number
 * is stored.
 */
VEL_API void *vel_fopen(const char *path, const char *mode);
VEL_API int32_t vel_fclose(void *stream);
VEL_API int32_t vel_feof(void *stream);
VEL_API int32_t vel_ferror(void *stream);
VEL_API int32_t vel_fseek(void *stream, int32_t offset, int32_t whence);
VEL_API int32_t vel_ftell(void *stream);

VEL_END_DECLS

#endif

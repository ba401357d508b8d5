// The table of host functions and its dispatchers.
#include "ext/host_table.h"

#include "ext/error.h"
#include "ext/memory.h"

namespace vel {
namespace {

struct {
    vel_hook slot[VEL_HOOK_COUNT];
    int32_t installed; // set by the first installation, never cleared
} host;

bool valid_slot(int32_t slot) {
    return slot >= 0 && slot < VEL_HOOK_COUNT;
}

// What to call for a slot: its hook, with the type of its default, or the default itself.
template <typename Function> Function *hook_or(int32_t slot, Function *fallback) {
    if (!host.installed || !host.slot[slot]) return fallback;
    return reinterpret_cast<Function *>(host.slot[slot]);
}

} // namespace

bool hooks_are_default(std::initializer_list<int32_t> slots) {
    if (!host.installed) return true;
    for (int32_t slot : slots) {
        if (host.slot[slot]) return false;
    }
    return true;
}

void *vel_alloc(size_t size) {
    return size ? _vel_ext_malloc(size) : nullptr;
}

void vel_free(void *block) {
    if (block) _vel_ext_free(block);
}

} // namespace vel

using vel::hook_or;

int32_t vel_setextfunc(void *context, int32_t slot, vel_hook function) {
    if (!vel::valid_slot(slot)) return vel::fail(context, VEL_EBADLEN);
    vel::host.slot[slot] = function;
    vel::host.installed = 1;
    return 0;
}

vel_hook vel_getextfunc(void *context, int32_t slot) {
    if (!vel::valid_slot(slot)) return vel::fail_null(context, VEL_EBADLEN);
    return vel::host.slot[slot];
}

char *_vel_ext_getenv(const char *name) {
    return hook_or(VEL_HOOK_GETENV, vel_ext_getenv)(name);
}
int32_t *_vel_ext_errno(void *context) {
    return hook_or(VEL_HOOK_ERRNO, vel_ext_errno)(context);
}
int32_t _vel_ext_fclose(void *stream) {
    return hook_or(VEL_HOOK_FCLOSE, vel_ext_fclose)(stream);
}
int32_t _vel_ext_feof(void *stream) {
    return hook_or(VEL_HOOK_FEOF, vel_ext_feof)(stream);
}
int32_t _vel_ext_ferror(void *stream) {
    return hook_or(VEL_HOOK_FERROR, vel_ext_ferror)(stream);
}
int32_t _vel_ext_fgetc(void *stream) {
    return hook_or(VEL_HOOK_FGETC, vel_ext_fgetc)(stream);
}
char *_vel_ext_fgets(char *buffer, int32_t size, void *stream) {
    return hook_or(VEL_HOOK_FGETS, vel_ext_fgets)(buffer, size, stream);
}
void *_vel_ext_fopen(const char *path, const char *mode) {
    return hook_or(VEL_HOOK_FOPEN, vel_ext_fopen)(path, mode);
}
void _vel_ext_free(void *block) {
    hook_or(VEL_HOOK_FREE, vel_ext_free)(block);
}
int32_t _vel_ext_fseek(void *stream, int32_t offset, int32_t whence) {
    return hook_or(VEL_HOOK_FSEEK, vel_ext_fseek)(stream, offset, whence);
}
int32_t _vel_ext_ftell(void *stream) {
    return hook_or(VEL_HOOK_FTELL, vel_ext_ftell)(stream);
}
size_t _vel_ext_fwrite(const void *buffer, size_t size, size_t count, void *stream) {
    return hook_or(VEL_HOOK_FWRITE, vel_ext_fwrite)(buffer, size, count, stream);
}
int32_t _vel_ext_getc(void *stream) {
    return hook_or(VEL_HOOK_GETC, vel_ext_getc)(stream);
}
void *_vel_ext_malloc(size_t size) {
    return hook_or(VEL_HOOK_MALLOC, vel_ext_malloc)(size);
}
int32_t _vel_ext_ungetc(int32_t c, void *stream) {
    return hook_or(VEL_HOOK_UNGETC, vel_ext_ungetc)(c, stream);
}
int32_t _vel_ext_putenv(const char *assignment) {
    return hook_or(VEL_HOOK_PUTENV, vel_ext_putenv)(assignment);
}
int32_t _vel_ext_currdate(vel_date *date) {
    return hook_or(VEL_HOOK_CURRDATE, vel_ext_currdate)(date);
}
int32_t _vel_ext_currtime(vel_time_record *time) {
    return hook_or(VEL_HOOK_CURRTIME, vel_ext_currtime)(time);
}

void vel_destroystring(void *block) {
    vel::vel_free(block);
}

void *vel_fopen(const char *path, const char *mode) {
    return _vel_ext_fopen(path, mode);
}
int32_t vel_fclose(void *stream) {
    return _vel_ext_fclose(stream);
}
int32_t vel_feof(void *stream) {
    return _vel_ext_feof(stream);
}
int32_t vel_ferror(void *stream) {
    return _vel_ext_ferror(stream);
}
int32_t vel_fseek(void *stream, int32_t offset, int32_t whence) {
    return _vel_ext_fseek(stream, offset, whence);
}
int32_t vel_ftell(void *stream) {
    return _vel_ext_ftell(stream);
}

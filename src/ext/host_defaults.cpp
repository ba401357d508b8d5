// The default host functions: the C library, and nothing else.
#include <climits>
#include <cstdio>
#include <cstdlib>

#include "ext/platform.h"
#include "vels/host.h"

namespace {

FILE *file(void *stream) {
    return static_cast<FILE *>(stream);
}

} // namespace

char *vel_ext_getenv(const char *name) {
    return getenv(name);
}
int32_t *vel_ext_errno(void *context) {
    return static_cast<int32_t *>(context);
}
int32_t vel_ext_fclose(void *stream) {
    return fclose(file(stream));
}
int32_t vel_ext_feof(void *stream) {
    return feof(file(stream));
}
int32_t vel_ext_ferror(void *stream) {
    return ferror(file(stream));
}
int32_t vel_ext_fgetc(void *stream) {
    return fgetc(file(stream));
}
char *vel_ext_fgets(char *buffer, int32_t size, void *stream) {
    return fgets(buffer, size, file(stream));
}
void *vel_ext_fopen(const char *path, const char *mode) {
    return vel::platform::open_file(path, mode);
}
void vel_ext_free(void *block) {
    free(block);
}
int32_t vel_ext_fseek(void *stream, int32_t offset, int32_t whence) {
    return fseek(file(stream), offset, whence);
}
int32_t vel_ext_ftell(void *stream) {
    long position = ftell(file(stream));
    return position > INT32_MAX ? -1 : static_cast<int32_t>(position);
}
size_t vel_ext_fwrite(const void *buffer, size_t size, size_t count, void *stream) {
    return fwrite(buffer, size, count, file(stream));
}
int32_t vel_ext_getc(void *stream) {
    return getc(file(stream));
}
void *vel_ext_malloc(size_t size) {
    return malloc(size);
}
int32_t vel_ext_ungetc(int32_t c, void *stream) {
    return ungetc(c, file(stream));
}
int32_t vel_ext_putenv(const char *assignment) {
    return vel::platform::put_environment(assignment);
}

int32_t vel_ext_currdate(vel_date *date) {
    tm now = vel::platform::local_time();
    *date = {static_cast<uint16_t>(now.tm_mon + 1), static_cast<uint16_t>(now.tm_mday),
             static_cast<uint16_t>(now.tm_year + 1900)};
    return 0;
}

int32_t vel_ext_currtime(vel_time_record *time) {
    tm now = vel::platform::local_time();
    *time = {0,           now.tm_sec,  now.tm_min,  now.tm_hour,  now.tm_mday, now.tm_mon,
             now.tm_year, now.tm_wday, now.tm_yday, now.tm_isdst, {0, 0}};
    return 0;
}

// What differs between operating systems. One implementation file each.
#pragma once

#include <cstddef>
#include <cstdio>
#include <ctime>

namespace vel::platform {

extern const char separator;      // between the directories of a path
extern const char default_root[]; // installation directory, separator included

// fopen, but a directory is refused.
FILE *open_file(const char *path, const char *mode);
int put_environment(const char *assignment);
tm local_time();

// The value of a key of section "VELS" of the profile file; returns its length, 0 when absent.
size_t read_profile(const char *key, char *value, size_t size);
// The log file opened for appending, or null.
FILE *open_log();
// Shows a message to the person at the machine.
void show_message(const char *message);

} // namespace vel::platform

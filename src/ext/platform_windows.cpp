// Windows.
#define WIN32_LEAN_AND_MEAN
#include <cstdlib>
#include <cstring>
#include <windows.h>

#include "ext/platform.h"

#ifndef VELS_DEFAULT_ROOT
#define VELS_DEFAULT_ROOT "c:\\corvane\\"
#endif

namespace vel::platform {

const char separator = '\\';
const char default_root[] = VELS_DEFAULT_ROOT;

FILE *open_file(const char *path, const char *mode) {
    return fopen(path, mode); // the runtime itself refuses directories
}

int put_environment(const char *assignment) {
    return _putenv(assignment);
}

tm local_time() {
    time_t now = time(nullptr);
    const tm *local = localtime(&now); // this runtime keeps one result per thread
    return local ? *local : tm{};
}

size_t read_profile(const char *key, char *value, size_t size) {
    return GetPrivateProfileStringA("VELS", key, "", value, static_cast<DWORD>(size), "VELS.INI");
}

FILE *open_log() {
    return fopen("c:\\vels.log", "a");
}

void show_message(const char *message) {
    MessageBoxA(nullptr, message, "VELS", MB_OK);
}

} // namespace vel::platform

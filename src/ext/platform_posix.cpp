// Everything that is not Windows.
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <strings.h>
#include <sys/stat.h>
#include <unistd.h>

#include "ext/environment.h"
#include "ext/memory.h"
#include "ext/platform.h"

#ifndef VELS_DEFAULT_ROOT
#define VELS_DEFAULT_ROOT "/usr/local/share/corvane/"
#endif

namespace vel::platform {
namespace {

constexpr char profile_path[] = "/etc/VELS.INI";
constexpr char log_name[] = "/vels.log";

bool is_directory(int descriptor) {
    struct stat status;
    return fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode);
}

char *skip_blanks(char *text) {
    return text + strspn(text, " \t");
}

void cut_trailing_blanks(char *text) {
    size_t length = strlen(text);
    while (length > 0 && strchr(" \t\r\n", text[length - 1])) text[--length] = '\0';
}

} // namespace

const char separator = '/';
const char default_root[] = VELS_DEFAULT_ROOT;

FILE *open_file(const char *path, const char *mode) {
    FILE *file = fopen(path, mode);
    if (!file) return nullptr;
    if (!is_directory(fileno(file))) return file;
    fclose(file);
    errno = EISDIR;
    return nullptr;
}

int put_environment(const char *assignment) {
    const char *equals = strchr(assignment, '=');
    if (!equals || equals == assignment) return -1;
    size_t length = static_cast<size_t>(equals - assignment);
    stack_or_heap<char, 256> name(length + 1);
    if (!name) return -1;
    memcpy(name.data(), assignment, length);
    name[length] = '\0';
    return equals[1] ? setenv(name.data(), equals + 1, 1) : unsetenv(name.data());
}

tm local_time() {
    time_t now = time(nullptr);
    tm result{};
    localtime_r(&now, &result);
    return result;
}

// A profile is lines of "[section]" and "key=value"; names are compared without regard to case.
size_t read_profile(const char *key, char *value, size_t size) {
    FILE *profile = open_file(profile_path, "r");
    if (!profile) return 0;
    char line[256];
    bool ours = false;
    size_t length = 0;
    while (fgets(line, sizeof line, profile)) {
        char *text = skip_blanks(line);
        cut_trailing_blanks(text);
        if (*text == '[') {
            ours = strcasecmp(text, "[VELS]") == 0;
            continue;
        }
        char *equals = strchr(text, '=');
        if (!ours || !equals) continue;
        *equals = '\0';
        cut_trailing_blanks(text);
        if (strcasecmp(text, key) != 0) continue;
        char *found = skip_blanks(equals + 1);
        length = strnlen(found, size - 1);
        memcpy(value, found, length);
        value[length] = '\0';
        break;
    }
    fclose(profile);
    return length;
}

// The log may be opened by a privileged host in a directory that others can write to, so a link
// is not followed and nobody else may read it.
FILE *open_log() {
    const char *directory = vel_getenv_nonempty("TMPDIR");
    if (!directory) directory = "/tmp";
    size_t length = strlen(directory);
    stack_or_heap<char, 1024> path(length + sizeof log_name);
    if (!path) return nullptr;
    memcpy(path.data(), directory, length);
    memcpy(path.data() + length, log_name, sizeof log_name);
    int descriptor =
        open(path.data(), O_WRONLY | O_APPEND | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600);
    if (descriptor < 0) return nullptr;
    FILE *log = fdopen(descriptor, "a");
    if (!log) close(descriptor);
    return log;
}

void show_message(const char *message) {
    fprintf(stderr, "VELS: %s\n", message);
}

} // namespace vel::platform

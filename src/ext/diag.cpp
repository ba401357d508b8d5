#include "ext/diag.h"

#include <cstdio>
#include <ctime>

#include "ext/environment.h"
#include "ext/platform.h"

namespace vel {
namespace {

// Written once by the first message. Threads that record their first messages at once may both
// read the settings, to the same result.
struct {
    bool log;
    bool popup;
    bool read;
} settings;

// "on" and "On" switch a setting on. "ON" does not: the second letter is compared as it stands,
// and installations rely on it.
bool is_on(const char *value) {
    return (value[0] == 'o' || value[0] == 'O') && value[1] == 'n';
}

bool read_switch(const char *key, const char *variable) {
    char value[10];
    if (platform::read_profile(key, value, sizeof value) > 0) return is_on(value);
    const char *text = vel_getenv_nonempty(variable);
    return text && is_on(text);
}

void start_log() {
    FILE *log = platform::open_log();
    if (!log) return;
    time_t now = time(nullptr);
    const char *text = ctime(&now);
    fprintf(log, "----\nVELS log started %s----\n", text ? text : "\n");
    fclose(log);
}

void read_settings() {
    settings.log = read_switch("Logging", "VELSLOG");
    if (settings.log) start_log();
    settings.popup = read_switch("Popups", "VELSDEBUG");
    settings.read = true;
}

} // namespace

void vel_diag(const char *message) {
    if (!settings.read) read_settings();
    if (settings.log) {
        if (FILE *log = platform::open_log()) {
            fprintf(log, "%s\n", message);
            fclose(log);
        }
    }
    if (settings.popup) platform::show_message(message);
}

} // namespace vel

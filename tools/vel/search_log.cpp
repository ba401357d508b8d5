#include "vel/search_log.h"

#include <cerrno>
#include <cstring>
#include <set>

#include "vels.h"

namespace vel_tool::search_log {
namespace {

// The hooks are plain functions, so what they know is one object of the process.
struct {
    std::string data;
    bool refuse = false;
    std::vector<attempt> attempts;
} state;

char *answer_getenv(const char *name) {
    if (state.data.empty()) return vel_ext_getenv(name);
    if (strcmp(name, "CORVANEDIR") == 0) return state.data.data();
    if (strcmp(name, "VEL_PATH") == 0) return nullptr;
    return vel_ext_getenv(name);
}

void *record_open(const char *path, const char *mode) {
    if (state.refuse) {
        state.attempts.push_back({path, ENOENT});
        return nullptr;
    }
    errno = 0;
    void *stream = vel_ext_fopen(path, mode);
    int error = stream ? 0 : errno ? errno : ENOENT;
    state.attempts.push_back({path, error});
    return stream;
}

} // namespace

void install(const std::string &data) {
    state.data = data;
    vel_setextfunc(nullptr, VEL_HOOK_GETENV, reinterpret_cast<vel_hook>(answer_getenv));
    vel_setextfunc(nullptr, VEL_HOOK_FOPEN, reinterpret_cast<vel_hook>(record_open));
}

std::string environment(const char *name) {
    const char *value = answer_getenv(name);
    return value ? value : "";
}

void clear() {
    state.attempts.clear();
}

const std::vector<attempt> &attempts() {
    return state.attempts;
}

std::string failed_paths() {
    std::string text;
    std::set<std::string> seen;
    for (const attempt &tried : state.attempts) {
        if (tried.error == 0 || !seen.insert(tried.path).second) continue;
        if (!text.empty()) text += ", ";
        text += tried.path;
        if (tried.error != ENOENT) text += std::string(" (") + strerror(tried.error) + ")";
    }
    return text;
}

void refuse_all(bool refuse) {
    state.refuse = refuse;
}

} // namespace vel_tool::search_log

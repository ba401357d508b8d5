// What the library looked for and where, learnt through host hooks.
#pragma once

#include <string>
#include <vector>

namespace vel_tool {

struct attempt {
    std::string path;
    int error; // errno, 0 when the file opened
};

namespace search_log {

// Installs the hooks. With a non-empty `data` the library finds its files beneath that directory
// for this run: CORVANEDIR has this value and VEL_PATH, which would come first, is not set.
void install(const std::string &data);

// An environment variable as the library sees it; empty when unset.
std::string environment(const char *name);

void clear();
const std::vector<attempt> &attempts();
// The paths that did not open, joined for a message.
std::string failed_paths();

// The paths that the library tries for the files that `action` asks for. Nothing is opened.
template <class Action> std::vector<std::string> paths_tried(Action action);

void refuse_all(bool refuse);

} // namespace search_log

template <class Action> std::vector<std::string> search_log::paths_tried(Action action) {
    clear();
    refuse_all(true);
    action();
    refuse_all(false);
    std::vector<std::string> result;
    for (const attempt &tried : attempts()) result.push_back(tried.path);
    clear();
    return result;
}

} // namespace vel_tool

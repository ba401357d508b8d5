#include "vel/input.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

#include <fmt/format.h>

#include "vel/failure.h"

namespace vel_tool {

input::input(const std::string &path)
    : name_(path == "-" ? "standard input" : path), descriptor_(STDIN_FILENO) {
    if (path == "-") return;
    descriptor_ = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor_ < 0) {
        throw failure(fmt::format("cannot open {}: {}", path, strerror(errno)));
    }
    posix_fadvise(descriptor_, 0, 0, POSIX_FADV_SEQUENTIAL);
}

input::~input() {
    if (descriptor_ != STDIN_FILENO) close(descriptor_);
}

size_t input::read(char *buffer, size_t size) {
    for (;;) {
        ssize_t got = ::read(descriptor_, buffer, size);
        if (got >= 0) return static_cast<size_t>(got);
        if (errno != EINTR) {
            throw failure(fmt::format("cannot read {}: {}", name_, strerror(errno)));
        }
    }
}

std::vector<std::string> files_or_input(const std::vector<std::string> &files) {
    return files.empty() ? std::vector<std::string>{"-"} : files;
}

} // namespace vel_tool

#include "vel/output.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include <fmt/format.h>

#include "vel/failure.h"

namespace vel_tool {
namespace {

constexpr size_t buffer_size = 64 * 1024;

std::string follow_links(const std::string &path) {
    std::error_code error;
    std::filesystem::path real = std::filesystem::canonical(path, error);
    return error ? path : real.string();
}

mode_t mode_of_new_file() {
    mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

[[noreturn]] void cannot(const char *action, const std::string &name) {
    throw failure(fmt::format("cannot {} {}: {}", action, name, strerror(errno)));
}

} // namespace

output::output(int descriptor, std::string name)
    : descriptor_(descriptor), name_(std::move(name)) {}

void output::write(std::string_view text) {
    if (buffer_.size() + text.size() > buffer_size) flush();
    if (text.size() > buffer_size) return write_now(text);
    buffer_.append(text);
}

void output::flush() {
    std::string text;
    text.swap(buffer_);
    write_now(text);
    text.clear();
    buffer_.swap(text); // keeps the memory
}

void output::write_now(std::string_view text) {
    while (!text.empty()) {
        ssize_t written = ::write(descriptor_, text.data(), text.size());
        if (written >= 0) {
            text.remove_prefix(static_cast<size_t>(written));
            continue;
        }
        if (errno == EINTR) continue;
        if (errno == EPIPE) throw reader_gone();
        cannot("write", name_);
    }
}

replacement_file::replacement_file(const std::string &path) : replacement_file(open_beside(path)) {}

replacement_file::replacement_file(opened files)
    : files_(std::move(files)), output_(files_.descriptor, files_.target) {}

replacement_file::opened replacement_file::open_beside(const std::string &path) {
    opened result{follow_links(path), "", -1};
    struct stat status;
    bool exists = stat(result.target.c_str(), &status) == 0;
    if (exists && !S_ISREG(status.st_mode)) {
        result.descriptor = open(result.target.c_str(), O_WRONLY | O_CLOEXEC);
        if (result.descriptor < 0) cannot("write", path);
        return result;
    }
    result.temporary = result.target + ".XXXXXX";
    result.descriptor = mkstemp(result.temporary.data());
    if (result.descriptor < 0) cannot("write beside", path);
    fchmod(result.descriptor, exists ? status.st_mode & 07777 : mode_of_new_file());
    return result;
}

replacement_file::~replacement_file() {
    if (files_.descriptor >= 0) close(files_.descriptor);
    if (!files_.temporary.empty()) unlink(files_.temporary.c_str());
}

void replacement_file::commit() {
    output_.flush();
    int descriptor = std::exchange(files_.descriptor, -1);
    if (close(descriptor) != 0) cannot("write", files_.target);
    if (files_.temporary.empty()) return;
    if (rename(files_.temporary.c_str(), files_.target.c_str()) != 0) {
        cannot("replace", files_.target);
    }
    files_.temporary.clear();
}

void complain(std::string_view text) {
    while (!text.empty()) {
        ssize_t written = ::write(STDERR_FILENO, text.data(), text.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return;
        text.remove_prefix(static_cast<size_t>(written));
    }
}

} // namespace vel_tool

#include "velc/output_file.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <utility>

#if defined(_WIN32)
#include <process.h>
#define getpid _getpid
#else
#include <unistd.h>
#endif

#include "velc/tool_error.h"

namespace velc {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const fs::path &path, int error) {
    throw tool_error("{}: cannot be written: {}", path.string(), std::strerror(error));
}

void write_all(std::FILE *file, const fs::path &path, std::string_view content) {
    const bool written = std::fwrite(content.data(), 1, content.size(), file) == content.size();
    if (!written || std::fflush(file) != 0) fail(path, errno);
}

// Into something that is there and no regular file: a device or a pipe is not to be replaced.
void write_into(const fs::path &path, std::string_view content) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE *)> file(
        std::fopen(path.string().c_str(), "wb"), std::fclose);
    if (!file) fail(path, errno);
    write_all(file.get(), path, content);
}

fs::path name_beside(const fs::path &target) {
    static std::atomic<unsigned> count = 0;
    fs::path name = target;
    return name.replace_filename(
        fmt::format(".{}.{}-{}.new", target.filename().string(), getpid(), count++));
}

// A file that goes away again unless it is put in its place.
class new_file {
public:
    explicit new_file(const fs::path &target) : target_(target), name_(name_beside(target)) {
        file_ = std::fopen(name_.string().c_str(), "wb");
        if (!file_) fail(target_, errno);
    }
    new_file(const new_file &) = delete;
    new_file &operator=(const new_file &) = delete;
    ~new_file() {
        if (file_) std::fclose(file_);
        std::error_code ignored;
        if (!name_.empty()) fs::remove(name_, ignored);
    }

    void write(std::string_view content) { write_all(file_, target_, content); }

    void put_in_place() {
        std::FILE *file = std::exchange(file_, nullptr);
        if (std::fclose(file) != 0) fail(target_, errno);
        std::error_code error;
        fs::rename(name_, target_, error);
        if (error) throw tool_error("{}: cannot be written: {}", target_.string(), error.message());
        name_.clear();
    }

private:
    fs::path target_, name_;
    std::FILE *file_;
};

void make_directory_of(const fs::path &path) {
    if (!path.has_parent_path()) return;
    std::error_code error;
    fs::create_directories(path.parent_path(), error);
    if (error)
        throw tool_error("{}: cannot be made: {}", path.parent_path().string(), error.message());
}

} // namespace

void write_output(const fs::path &path, std::string_view content) {
    if (path == "-") return write_all(stdout, "standard output", content);
    std::error_code ignored;
    const fs::file_status there = fs::status(path, ignored);
    if (fs::exists(there) && !fs::is_regular_file(there) && !fs::is_directory(there))
        return write_into(path, content);
    make_directory_of(path);
    new_file file(path);
    file.write(content);
    file.put_in_place();
}

void write_link(const fs::path &file, const fs::path &name) {
    const fs::path link = file.parent_path() / name, made = name_beside(link);
    std::error_code error;
    fs::create_symlink(file.filename(), made, error);
    if (error) fs::copy_file(file, made, fs::copy_options::overwrite_existing, error);
    if (!error) fs::rename(made, link, error);
    if (!error) return;
    std::error_code ignored;
    fs::remove(made, ignored);
    throw tool_error("{}: cannot be written: {}", link.string(), error.message());
}

} // namespace velc

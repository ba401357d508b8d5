#include "vel/convert_progress.h"

#include <algorithm>
#include <sys/stat.h>
#include <unistd.h>

#include <fmt/format.h>

#include "vel/output.h"

namespace vel_tool {
namespace {

constexpr auto patience = std::chrono::milliseconds(700);
constexpr auto interval = std::chrono::milliseconds(200);

std::optional<uint64_t> size_of(const std::vector<std::string> &files) {
    uint64_t sum = 0;
    for (const std::string &path : files) {
        struct stat status;
        int result = path == "-" ? fstat(STDIN_FILENO, &status) : stat(path.c_str(), &status);
        if (result != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
        sum += static_cast<uint64_t>(status.st_size);
    }
    return sum;
}

std::string size_text(double bytes) {
    constexpr const char *units[] = {"B", "kB", "MB", "GB", "TB"};
    size_t unit = 0;
    while (bytes >= 1000 && unit + 1 < std::size(units)) {
        bytes /= 1000;
        ++unit;
    }
    return fmt::format("{:.{}f} {}", bytes, unit > 0 && bytes < 100 ? 1 : 0, units[unit]);
}

} // namespace

convert_progress::convert_progress(const std::vector<std::string> &files, bool is_wanted)
    : total_(size_of(files)), is_wanted_(is_wanted), begin_(clock::now()),
      next_(begin_ + patience) {}

void convert_progress::add(size_t bytes) {
    done_ += bytes;
    if (!is_wanted_) return;
    clock::time_point now = clock::now();
    if (now >= next_) show(now);
}

void convert_progress::show(clock::time_point now) {
    next_ = now + interval;
    is_shown_ = true;
    auto done = static_cast<double>(done_);
    std::string text = size_text(done);
    if (total_ && *total_ > 0) {
        auto total = static_cast<double>(std::max(*total_, done_));
        text += fmt::format(" of {}, {:.0f} %", size_text(total), 100 * done / total);
    }
    double seconds = std::chrono::duration<double>(now - begin_).count();
    complain(fmt::format("\r{}, {}/s\x1b[K", text, size_text(done / seconds)));
}

void convert_progress::clear() {
    if (is_shown_) complain("\r\x1b[K");
    is_shown_ = false;
}

} // namespace vel_tool

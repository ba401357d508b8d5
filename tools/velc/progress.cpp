#include "velc/progress.h"

#include <cstdio>
#include <string>

#if defined(_WIN32)
#include <io.h>
#define isatty _isatty
#define fileno _fileno
#else
#include <unistd.h>
#endif

#include <fmt/format.h>

namespace velc {

namespace {

constexpr std::size_t bar_width = 30;
constexpr std::size_t title_width = 28;

} // namespace

progress::progress(std::size_t total, bool wanted)
    : total_(total), shown_(wanted && total > 0 && isatty(fileno(stderr))) {}

progress::~progress() {
    if (shown_) fmt::print(stderr, "\r\x1b[K");
}

void progress::done(std::string_view title) {
    if (!shown_) return;
    std::lock_guard lock(mutex_);
    const std::size_t filled = ++done_ * bar_width / total_;
    fmt::print(stderr, "\r[{:=<{}}{: <{}}] {}/{} {}\x1b[K", "", filled, "", bar_width - filled,
               done_, total_, title.substr(0, title_width));
    std::fflush(stderr);
}

} // namespace velc

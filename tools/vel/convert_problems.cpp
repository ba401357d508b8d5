#include "vel/convert_problems.h"

#include <fmt/format.h>

#include "vel/display.h"
#include "vel/failure.h"

namespace vel_tool {
namespace {

std::string counted(uint64_t count, const char *what) {
    return fmt::format("{} {}{}", count, what, count == 1 ? "" : "s");
}

} // namespace

void problem_log::add(problem kind, std::string_view bytes, uint64_t offset) {
    if (remedy_ == remedy::stop) throw failure(message(kind, bytes, offset));
    ++(kind == problem::lacking ? lacking_ : invalid_);
    if (count() > most_) return;
    progress_.clear();
    run_.warn(message(kind, bytes, offset));
}

std::string problem_log::message(problem kind, std::string_view bytes, uint64_t offset) {
    std::string text = fmt::format("{}: byte {}: {}", file_, offset, hex_bytes(bytes));
    switch (kind) {
    case problem::invalid:
        return fmt::format("{} is no character of {}", text, chain_.from().name);
    case problem::cut_off:
        return fmt::format("{} begins a character of {} that the end of the text cuts off", text,
                           chain_.from().name);
    case problem::lacking:
        break;
    }
    return fmt::format("{}{} has no counterpart in {}", text, names(bytes), chain_.to().name);
}

std::string problem_log::names(std::string_view bytes) {
    if (!charmap_was_tried_) charmap_ = try_load_charmap(chain_.from().number);
    charmap_was_tried_ = true;
    if (!charmap_) return "";
    std::string text = names_of(charmap_.get(), bytes).description();
    return text.empty() ? "" : fmt::format(" ({})", text);
}

void problem_log::summarize() {
    if (count() == 0) return;
    progress_.clear();
    std::string what;
    if (lacking_ > 0) {
        what = fmt::format("{} that {} lacks", counted(lacking_, "character"), chain_.to().name);
    }
    if (invalid_ > 0) {
        what += (what.empty() ? "" : " and ") + counted(invalid_, "invalid sequence");
    }
    run_.warn(fmt::format("{}: {} {} {}", file_, what, count() == 1 ? "was" : "were",
                          remedy_ == remedy::skip ? "left out" : "replaced"));
}

} // namespace vel_tool

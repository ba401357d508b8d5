#include "vel/invalid_report.h"

#include <fmt/format.h>

#include "vel/display.h"

namespace vel_tool {

void invalid_report::add(std::string_view text, uint64_t offset) {
    if (count_++ < most_) tell(fmt::format("byte {}", offset), text);
}

void invalid_report::add(std::string_view text, uint64_t offset, uint64_t line) {
    if (count_++ < most_) tell(fmt::format("line {}, byte {}", line, offset), text);
}

void invalid_report::tell(const std::string &place, std::string_view text) {
    run_.warn(
        fmt::format("{}: {}: {} is no character of {}", file_, place, hex_bytes(text), codeset_));
}

void invalid_report::finish() const {
    if (count_ <= most_) return;
    run_.warn(
        fmt::format("{}: {} more invalid sequences (--all lists them)", file_, count_ - most_));
}

void add_report_options(CLI::App *command, report_options &options) {
    command->add_option("--list", options.list, "report the first N invalid sequences of a file")
        ->type_name("N")
        ->capture_default_str();
    command->add_flag("--all", options.all, "report all invalid sequences");
}

} // namespace vel_tool

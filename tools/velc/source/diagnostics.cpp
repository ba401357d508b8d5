#include "velc/source/diagnostics.h"

#include <array>

#include <fmt/format.h>

namespace velc {

std::string to_string(const source_place &place) {
    return place.line == 0 ? place.file : fmt::format("{}:{}", place.file, place.line);
}

source_error::source_error(source_place place, std::string_view text)
    : std::runtime_error(fmt::format("{}: {}", to_string(place), text)), place_(std::move(place)),
      text_(text) {}

std::string_view to_string(warning_kind kind) {
    static constexpr std::array<std::string_view, 6> names = {
        "syntax", "duplicate", "unknown-name", "prefix-dropped", "unmapped", "not-kept"};
    return names[static_cast<std::size_t>(kind)];
}

std::string to_string(const warning &one) {
    return fmt::format("{}: warning: {}", to_string(one.place), one.text);
}

} // namespace velc

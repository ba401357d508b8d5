#pragma once

#include <optional>
#include <string_view>

namespace velc {

// Names of the portable character set: "space", "hyphen-minus", "A", "NUL", ...
std::optional<char32_t> portable_character(std::string_view name);

} // namespace velc

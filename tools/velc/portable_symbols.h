#pragma once

#include <string_view>
#include <vector>

namespace velc {

// The names of the portable character set that lead to a character, the usual one last; none for
// characters outside that set.
std::vector<std::string_view> names_of_portable_character(char32_t code);

} // namespace velc

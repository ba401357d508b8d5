#pragma once

#include <string>
#include <string_view>

namespace velc {

// A date and time format of a locale source in the letters that the library's time functions know.
// Throws tool_error for a conversion that has no counterpart; the keyword is for its message.
std::u32string library_time_format(std::string_view keyword, std::u32string_view written);

} // namespace velc

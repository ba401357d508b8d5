// Text that the library writes by a format.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "vel/code_set.h"

namespace vel_tool {

// Calls `write` with a buffer and its size, and with larger ones while the text does not fit.
// `format` is named when it fails for another reason.
std::string formatted(const code_set &codes, const std::string &format,
                      const std::function<int32_t(char *buffer, int32_t size)> &write);

// "length or index is out of range (error 9)", of the error that the locale holds.
std::string error_text(const vel_locale *locale);

} // namespace vel_tool

#pragma once

#include <string>
#include <vector>

#include "velc/source/model.h"

namespace velc {

// Reads the list of locales; one a line, the name and its charmap. Throws source_error.
std::vector<supported_locale> read_supported(const std::string &path);

} // namespace velc

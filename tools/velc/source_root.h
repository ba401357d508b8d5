#pragma once

#include <string>

namespace velc {

// Throws tool_error, with the paths that were tried, unless sources are there.
void require_sources(const std::string &root);

} // namespace velc

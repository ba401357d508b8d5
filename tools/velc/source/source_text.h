#pragma once

#include <string>

namespace velc {

// The whole of a file, unpacked when it is gzip. Throws source_error.
std::string read_source_text(const std::string &path);

} // namespace velc

#pragma once

#include <filesystem>
#include <string_view>

namespace velc {

// Puts a whole file in its place in one step: it is written beside under another name and then
// renamed, so that there is never a part of it to be seen. Directories are made as needed; "-" is
// the standard output. Throws tool_error and leaves nothing behind.
void write_output(const std::filesystem::path &path, std::string_view content);

} // namespace velc

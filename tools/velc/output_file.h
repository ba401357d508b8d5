#pragma once

#include <filesystem>
#include <string_view>

namespace velc {

// Puts a whole file in its place in one step: it is written beside under another name and then
// renamed, so that there is never a part of it to be seen. Directories are made as needed; "-" is
// the standard output. Throws tool_error and leaves nothing behind.
void write_output(const std::filesystem::path &path, std::string_view content);

// Lets `name`, in the directory of the file, lead to the file: a relative symbolic link, or a copy
// where the system has none. Takes the place of what is there. Throws tool_error.
void write_link(const std::filesystem::path &file, const std::filesystem::path &name);

} // namespace velc

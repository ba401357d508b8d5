#pragma once

#include <filesystem>
#include <optional>

#include "velc/codesets.h"

namespace velc {

// A registry read strictly, as the library would read it but without its tolerance: every line is a
// name and a number, names are in lower case and not too long, the last line has a line break.
// Throws tool_error.
registry_names read_registry(const std::filesystem::path &path);

// The registry of the tree that an object is in; nothing when it is in none.
std::optional<std::filesystem::path> registry_beside(const std::filesystem::path &object);

} // namespace velc

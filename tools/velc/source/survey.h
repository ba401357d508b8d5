#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "velc/source/diagnostics.h"

namespace velc {

// How one file of a source directory could be read.
struct survey_row {
    enum class what : std::uint8_t { charmap, locale };
    what kind = what::charmap;
    std::string name;
    bool readable = false;
    std::string error;     // why not
    warning_list warnings; // of charmaps, and of locales those of the file and its copies
};

// Reads every charmap and every locale, the latter with all copies and substitutions resolved.
std::vector<survey_row> survey(const std::filesystem::path &root);

} // namespace velc

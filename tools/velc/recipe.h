#pragma once

// The recipe of a data pack: which number each code set has, what else people call it, and which
// locales the standard pack holds. It lives in data/ and is built into velc; --recipe reads
// another.

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace velc {

struct standard_recipe_text {
    std::string_view codesets, aliases, locales;
};
extern const standard_recipe_text standard_recipe;

// A line that is not blank and no comment, cut at white space.
struct recipe_line {
    std::uint32_t line = 0;
    std::vector<std::string> words; // at least one
};

struct recipe_file {
    std::string name; // for messages: "codesets", or the path when it was read from a directory
    std::vector<recipe_line> lines;
};

struct recipe {
    recipe_file codesets; // charmap number [number...]
    recipe_file aliases;  // name charmap
    recipe_file locales;  // source charmap [charmap...], and one line: default source charmap
};

// The built-in recipe when the directory is empty. Throws tool_error.
recipe read_recipe(const std::filesystem::path &directory);

recipe_file parse_recipe_file(std::string name, std::string_view text);

// "file:line"
std::string place(const recipe_file &file, const recipe_line &line);

} // namespace velc

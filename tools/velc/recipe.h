#pragma once

// The recipe of a data pack: which number each code set has, what else people call it, which
// locales and conversions the standard pack holds, and the overlays that give some locales another
// calendar. It lives in data/ and is built into velc; --recipe reads another.

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velc {

struct named_text {
    std::string_view name, text;
};

struct standard_recipe_text {
    std::string_view codesets, aliases, locales, conversions;
    std::span<const named_text> overlays;
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

// What changes the LC_TIME of a locale; read when it is applied.
struct overlay_source {
    std::string name; // "hebrew-he"
    std::string file; // for messages
    std::string text;
};
using overlay_pointer = std::shared_ptr<const overlay_source>;

struct recipe {
    recipe_file codesets; // charmap number [number...]
    recipe_file aliases;  // name charmap
    // source [thai_smo] charmap..., name source+overlay charmap [charmap...], and one line: default
    // source charmap
    recipe_file locales;
    std::vector<overlay_pointer> overlays = {}; // by name
    // each charmap, pairs charmap charmap..., and names charmap name...; a recipe need not have it
    recipe_file conversions = {};

    // Null when there is none.
    overlay_pointer find_overlay(std::string_view name) const;
};

// The built-in recipe when the directory is empty. Throws tool_error.
recipe read_recipe(const std::filesystem::path &directory);

// An overlay by its name in the recipe, or by its path, which has a '/' in it. Throws tool_error.
overlay_pointer get_overlay(const recipe &from, const std::string &name_or_path);

recipe_file parse_recipe_file(std::string name, std::string_view text);

// "file:line"
std::string place(const recipe_file &file, const recipe_line &line);

} // namespace velc

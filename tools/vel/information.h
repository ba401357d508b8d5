// What a loaded locale says of itself, by name: the table of the items and conventions that the
// library hands out.
#pragma once

#include <string>
#include <vector>

#include "vel/code_set.h"

namespace vel_tool {

struct info_value {
    std::string name; // "d_fmt", "day_1"
    std::string text; // of a text in the code set of the locale, else ASCII
    bool is_text;
};

// A row of the table: one value, or as many as there are days or months.
struct info_group {
    const char *name;
    std::vector<info_value> values;
};

// Everything of a category, VEL_CTYPE to VEL_MESSAGES.
std::vector<info_group> information_of(const code_set &codes, int32_t category);

// What one word asks for: a name, the number of an item, or a category (LC_TIME, VEL_TIME, time).
// Gives up when there is no such thing.
std::vector<info_value> information_named(const code_set &codes, const std::string &word);

constexpr int32_t number_not_given = 127;

} // namespace vel_tool

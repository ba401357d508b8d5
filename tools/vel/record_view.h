// What the interface does not tell of a loaded locale, read from its record.
#pragma once

#include <string>
#include <vector>

#include "vels/types.h"

namespace vel_tool {

// The ASCII code of a letter, digit or common sign, given by its value in the code set; else 0.
char portable_character(const vel_locale *locale, vel_wchar value);

// Names of the classes that the locale defines beside the built-in ones.
std::vector<std::string> locale_classes(const vel_locale *locale);

struct record_item {
    const char *name;
    std::string value;
};

// A category: its files, and for characters and collation what their tables hold.
struct record_section {
    const char *name;
    int32_t category;
    std::string file;
    std::string codeset;
    std::vector<record_item> items;
};

// The six categories, in order.
std::vector<record_section> record_sections(const vel_locale *locale);

} // namespace vel_tool

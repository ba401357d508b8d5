// What a loaded locale holds, read from its record: names, formats, conventions.
#pragma once

#include <string>
#include <vector>

#include "vels/types.h"

namespace vel_tool {

// The code set of the character category, as its file names it.
std::string codeset_of(const vel_locale *locale);

// Names of the classes that the locale defines beside the built-in ones.
std::vector<std::string> locale_classes(const vel_locale *locale);

// A named value: numbers, and texts in the bytes of the locale's code set.
struct record_item {
    const char *name;
    std::vector<std::string> texts;
    std::string number; // when there are no texts
    bool is_text;
};

struct record_section {
    const char *name;
    std::string file;
    std::string codeset;
    std::vector<record_item> items;
};

// The six categories, in order.
std::vector<record_section> record_sections(const vel_locale *locale);

} // namespace vel_tool

#pragma once

// Locale objects (.lco) from a locale source and a code set.

#include <string>
#include <vector>

#include "velc/codesets.h"
#include "velc/collate_section.h"
#include "velc/ctype_section.h"
#include "velc/section_cache.h"
#include "velc/source/source_library.h"
#include "velc/text_encoder.h"

namespace velc {

struct locale_object {
    std::string text;
    std::vector<substitution> substitutions;
    std::vector<std::string> dropped_classes;
    warning_list overlay_warnings;
    std::vector<std::string> collate_warnings;
};

// What an object has that its source does not say.
struct locale_variant {
    const overlay_source *overlay = nullptr; // null leaves the locale as it is
    collate_options collate = {};
};

// Writes objects, from many threads if need be. CTYPE and COLLATE sections are kept: most locales
// copy theirs, and a code set makes the same section of equal ones every time.
class locale_writer {
public:
    locale_writer(source_library &sources, const codeset_table &codesets)
        : sources_(sources), codesets_(codesets) {}

    // The number is one of those of the charmap; it decides the name in the head. Throws
    // source_error and tool_error.
    locale_object write(std::string_view source, std::string_view charmap, std::uint16_t number,
                        const locale_variant &variant = {});

private:
    source_library &sources_;
    const codeset_table &codesets_;
    section_cache<ctype_section> ctypes_;
    section_cache<collate_section> collations_;
};

} // namespace velc

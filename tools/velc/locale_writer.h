#pragma once

// Locale objects (.lco) from a locale source and a code set.

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "velc/codesets.h"
#include "velc/ctype_section.h"
#include "velc/source/source_library.h"
#include "velc/text_encoder.h"

namespace velc {

struct locale_object {
    std::string text;
    std::vector<substitution> substitutions;
    std::vector<std::string> dropped_classes;
    warning_list overlay_warnings;
};

// Writes objects, from many threads if need be. CTYPE sections are kept: most locales have the same
// classes and case maps, and a code set makes the same section of them every time.
class locale_writer {
public:
    locale_writer(source_library &sources, const codeset_table &codesets)
        : sources_(sources), codesets_(codesets) {}

    // The number is one of those of the charmap; it decides the name in the head. A null overlay
    // leaves the locale as it is. Throws source_error and tool_error.
    locale_object write(std::string_view source, std::string_view charmap, std::uint16_t number,
                        const overlay_source *overlay = nullptr);

private:
    struct kept_section {
        std::once_flag made;
        ctype_section section;
    };
    const ctype_section &ctype_of(const ctype &from, const std::shared_ptr<const charmap> &codeset);

    source_library &sources_;
    const codeset_table &codesets_;
    std::mutex mutex_;
    // By what the section is made of and by the code set.
    std::map<std::pair<std::string, std::shared_ptr<const charmap>>, std::unique_ptr<kept_section>>
        kept_;
};

} // namespace velc

#pragma once

// A whole data tree: locale objects, charmap objects, conversions and the registry.

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "velc/codesets.h"
#include "velc/recipe.h"
#include "velc/source/source_library.h"

namespace velc {

// One object of a pack and what it is made of.
struct pack_item {
    enum class kind { locale, charmap, conversion, registry };
    kind what = kind::locale;
    std::string source;           // of a locale: "de_DE@euro"
    std::string charmap;          // of a locale and of a charmap; of a conversion the source
    std::uint16_t number = 0;     // under which it is installed
    std::filesystem::path file;   // beneath the root
    overlay_pointer overlay = {}; // of a locale, often null
    bool thai = false;            // a locale in the order of the Thai algorithm
    std::string target = {};      // of a conversion, and its number
    std::uint16_t target_number = 0;
    std::vector<std::string> links = {}; // further names of a conversion, beside its file
    std::string title() const;
};

// Directories beneath the root, as the library looks for them.
inline constexpr const char *charmap_directory = "vels/cm3";
inline constexpr const char *locale_directory = "vels/lc11";
inline constexpr const char *conversion_directory = "vels/cv9";
inline constexpr const char *registry_file = "vels/cm3/registry";

// The items of the recipe, or with everything those of all supported locales and all charmaps as
// well; large ones first. Throws tool_error when two items would be one file.
std::vector<pack_item> plan_pack(const recipe &from, const codeset_table &codesets,
                                 const source_library &sources, bool everything);

struct pack_options {
    std::filesystem::path root;
    unsigned jobs = 0;  // 0: as many as there are processors
    bool quiet = false; // no progress, no warnings
};

struct pack_result {
    std::size_t locales = 0, charmaps = 0, conversions = 0;
    std::uintmax_t bytes = 0;
    std::size_t substituted = 0;    // objects with at least one substitution
    std::size_t lossy = 0;          // objects with a character for which nothing was known
    std::vector<std::string> notes; // sorted: substitutions and lost classes of each object
    // Orders that do not fit and code sets that are not to be had, in the order of the plan.
    std::vector<std::string> warnings;
    std::vector<std::string> errors; // in the order of the plan
};

pack_result make_pack(const std::vector<pack_item> &plan, const codeset_table &codesets,
                      source_library &sources, const pack_options &options);

} // namespace velc

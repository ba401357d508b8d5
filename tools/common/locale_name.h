#pragma once

// Locale names as people type them and as the library wants them. Pure text: no registry, no files,
// no library. The pack places its objects by these rules and the command-line tool looks for them
// by the same rules, so what one writes the other finds.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tools {

// name := language [ '_' territory ] [ '.' codeset ] [ '@' modifier ]
// All in lower case; the parts that are not given are empty.
struct locale_name {
    std::string language;  // "de", "ast", "c"
    std::string territory; // "de"
    std::string codeset;   // "utf-8", "819"
    std::string modifier;  // "euro", "latin"
};

// Nothing when the text is no locale name (a file name, a specification by categories, ...).
std::optional<locale_name> parse_locale_name(std::string_view typed);

// The object with the built-in conventions: C in UTF-8.
inline constexpr std::string_view default_object = "default.lco";

// The most characters of a file name that a locale record keeps.
inline constexpr std::size_t longest_object_name = 31;

// What vel_lc_load is to be given for a name that somebody typed:
//   de_DE.UTF-8@euro        de_de.utf-8@euro
//   de_DE                   de_de.utf8          (no code set: UTF-8)
//   ca_ES@valencia          ca_es.utf8@vale     (modifiers have at most four letters)
//   C, POSIX                default.lco
//   ast_ES.utf8, eo, C.UTF-8   ast_es.utf-8, eo.utf-8, c.utf-8   (plain file names)
// Anything that is not a locale name, specifications of the library among them, comes back as it
// is.
std::string locale_specification(std::string_view typed);

// True for names that the specification syntax can say: two letters, '_', two letters.
bool fits_specification(const locale_name &name);

// The file of a locale below the directory of locale objects, with '/': "de_de/0333euro.lco", or
// for a name that does not fit "ast_es.utf-8". The codeset is asked for in both forms.
std::string locale_object_file(const locale_name &name, std::uint16_t codeset_number,
                               std::string_view codeset_name);

// At most four letters: "latin" gives "latn", "euro" stays.
std::string short_modifier(std::string_view modifier);

// The spelling of a code set in plain file names: "utf8" gives "utf-8", "ISO8859-15" and
// "iso885915" give "iso-8859-15"; others are only lower-cased.
std::string plain_codeset(std::string_view codeset);

std::string lower_case(std::string_view text);

} // namespace tools

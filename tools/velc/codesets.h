#pragma once

// Which number each charmap has, and which names lead to it.

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "velc/recipe.h"

namespace velc {

inline constexpr std::uint16_t first_own_number = 0xE100;
inline constexpr std::size_t longest_codeset_name = 21; // that the registry holds
inline constexpr std::size_t longest_header_name = 19;  // that the head of a locale object holds

struct codeset {
    std::string charmap;                // "EUC-JP"
    std::vector<std::uint16_t> numbers; // the first is its own, the others get copies
    std::uint16_t number() const { return numbers.front(); }
};

// Names and numbers in the order of the registry file; of equal names the first counts.
class registry_names {
public:
    // False when the name cannot stand in a registry or stands there already.
    bool add(std::string_view name, std::uint16_t number);
    // As the library looks names up: a decimal number that is no name stands for itself.
    std::optional<std::uint16_t> find(std::string_view name) const;
    const std::vector<std::pair<std::string, std::uint16_t>> &rows() const { return rows_; }

private:
    std::vector<std::pair<std::string, std::uint16_t>> rows_;
    std::map<std::string, std::uint16_t, std::less<>> first_;
};

class codeset_table {
public:
    // Throws tool_error for a recipe that gives a number or a charmap twice.
    explicit codeset_table(const recipe &from);

    const std::vector<codeset> &all() const { return codesets_; }
    // Null when the recipe has no line for the charmap.
    const codeset *find(std::string_view charmap) const;
    // The same, but throws tool_error.
    const codeset &at(std::string_view charmap) const;
    // By any name that leads to one: "utf8", "latin1". Throws tool_error.
    const codeset &named(std::string_view name) const;
    // The charmap that has the number; null when none does.
    const codeset *find(std::uint16_t number) const;

    // The built-in rows, then the charmaps' own names, then the aliases of the recipe. What the
    // charmaps call themselves comes behind these, in the registry file.
    const registry_names &names() const { return names_; }

    // What the head of an object says: the charmap's name when that leads to the number, else
    // another name that does, else the number itself. At most longest_header_name characters.
    std::string header_name(const codeset &of, std::uint16_t number) const;

private:
    void read_codesets(const recipe_file &file);
    void read_aliases(const recipe_file &file);

    std::vector<codeset> codesets_;
    registry_names names_;
};

// A charmap's further names: aliases and what it calls itself.
struct charmap_names {
    std::string charmap;
    std::vector<std::string> names;
};

// The registry file: everything in the table, then the charmaps' own aliases, then the spellings
// without punctuation ("iso88591", "euckr").
std::string registry_text(const codeset_table &table, const std::vector<charmap_names> &aliases);

} // namespace velc

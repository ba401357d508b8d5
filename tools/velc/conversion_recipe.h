#pragma once

// Which conversions a pack holds, and by which names they are found.

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "velc/codesets.h"
#include "velc/recipe.h"

namespace velc {

class conversion_recipe {
public:
    // Throws tool_error for lines that it does not understand.
    conversion_recipe(const recipe_file &file, const codeset_table &codesets);

    using pair = std::pair<const codeset *, const codeset *>; // from, to
    const std::vector<pair> &pairs() const { return pairs_; }
    // The names of a set in names of files; when the recipe has none, one that leads to it.
    std::vector<std::string> names(const codeset &of) const;

private:
    void add_names(const recipe_line &line, const codeset &of);
    void add_both_ways(const codeset &one, const codeset &other);

    const recipe_file &file_;
    const codeset_table &codesets_;
    std::vector<pair> pairs_;
    std::map<std::string, std::vector<std::string>, std::less<>> names_;
};

} // namespace velc

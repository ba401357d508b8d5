#include "velc/conversion_recipe.h"

#include <algorithm>

#include "common/locale_name.h"
#include "velc/tool_error.h"

namespace velc {

conversion_recipe::conversion_recipe(const recipe_file &file, const codeset_table &codesets)
    : file_(file), codesets_(codesets) {
    for (const recipe_line &line : file.lines) {
        const std::string &word = line.words[0];
        const bool is_each = word == "each";
        if (!is_each && word != "pairs" && word != "names")
            throw tool_error("{}: found {}, expected each, pairs or names", place(file, line),
                             word);
        if (is_each ? line.words.size() != 2 : line.words.size() < 3)
            throw tool_error("{}: found {} words, expected {}", place(file, line),
                             line.words.size(), is_each ? "two" : "at least three");
        const codeset &first = codesets.named(line.words[1]);
        if (is_each)
            for (const codeset &other : codesets.all()) add_both_ways(other, first);
        else if (word == "names")
            add_names(line, first);
        else
            for (std::size_t i = 2; i < line.words.size(); ++i)
                add_both_ways(first, codesets.named(line.words[i]));
    }
}

void conversion_recipe::add_both_ways(const codeset &one, const codeset &other) {
    if (&one == &other) return;
    for (const pair &way : {pair{&one, &other}, pair{&other, &one}})
        if (!std::ranges::count(pairs_, way)) pairs_.push_back(way);
}

// Programs give the names as they like; those of a file should mean what they mean elsewhere.
void conversion_recipe::add_names(const recipe_line &line, const codeset &of) {
    for (std::size_t i = 2; i < line.words.size(); ++i) {
        const std::string &name = line.words[i];
        const auto number = codesets_.names().find(name);
        if (number && !std::ranges::count(of.numbers, *number))
            throw tool_error("{}: found {}, the name of another code set than {}, expected one "
                             "of its own",
                             place(file_, line), name, of.charmap);
        names_[of.charmap].push_back(name);
    }
}

std::vector<std::string> conversion_recipe::names(const codeset &of) const {
    const auto found = names_.find(of.charmap);
    if (found != names_.end()) return found->second;
    return {tools::lower_case(codesets_.header_name(of, of.number()))};
}

} // namespace velc

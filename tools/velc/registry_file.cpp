#include "velc/registry_file.h"

#include "common/locale_name.h"
#include "velc/object_input.h"
#include "velc/recipe.h"
#include "velc/tool_error.h"

namespace velc {

namespace {

std::uint16_t number_of(const recipe_file &file, const recipe_line &line) {
    const std::string &word = line.words[1];
    const bool digits = word.find_first_not_of("0123456789") == word.npos;
    const unsigned long number = digits && word.size() <= 5 ? std::stoul(word) : 0;
    if (number == 0 || number > 0xFFFF || number == VEL_CS_INVALID)
        throw tool_error("{}: found {}, expected a number from 1 to 65535", place(file, line),
                         word);
    return static_cast<std::uint16_t>(number);
}

} // namespace

registry_names read_registry(const std::filesystem::path &path) {
    const std::string text = read_file(path);
    if (!text.empty() && text.back() != '\n')
        throw tool_error("{}: found no line break at the end, expected one", path.string());
    const recipe_file file = parse_recipe_file(path.string(), text);
    registry_names names;
    for (const recipe_line &line : file.lines) {
        if (line.words.size() < 2)
            throw tool_error("{}: found {} alone, expected a name and a number", place(file, line),
                             line.words[0]);
        const std::string &name = line.words[0];
        const std::uint16_t number = number_of(file, line);
        if (name != tools::lower_case(name))
            throw tool_error("{}: found {}, expected lower case", place(file, line), name);
        if (!names.add(name, number) && !names.find(name))
            throw tool_error("{}: found {}, expected a name of at most {} characters",
                             place(file, line), name, longest_codeset_name);
    }
    if (names.rows().empty()) throw tool_error("{}: found no names, expected some", path.string());
    return names;
}

std::optional<std::filesystem::path> registry_beside(const std::filesystem::path &object) {
    std::error_code ignored;
    std::filesystem::path at = std::filesystem::absolute(object, ignored).parent_path();
    for (; at.has_relative_path(); at = at.parent_path())
        for (const char *place : {"cm3/registry", "vels/cm3/registry"})
            if (std::filesystem::is_regular_file(at / place, ignored)) return at / place;
    return std::nullopt;
}

} // namespace velc

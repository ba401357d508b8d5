#include "velc/recipe.h"

#include <fstream>
#include <iterator>

#include "velc/tool_error.h"

namespace velc {

namespace {

constexpr std::string_view blanks = " \t\r";

std::vector<std::string> words_of(std::string_view line) {
    std::vector<std::string> words;
    for (;;) {
        const std::size_t start = line.find_first_not_of(blanks);
        if (start == line.npos || line[start] == '#') return words;
        line.remove_prefix(start);
        words.emplace_back(line.substr(0, line.find_first_of(blanks)));
        line.remove_prefix(words.back().size());
    }
}

recipe_file read_file(const std::filesystem::path &directory, const char *name) {
    const std::filesystem::path path = directory / name;
    std::ifstream in(path, std::ios::binary);
    if (!in) throw tool_error("{}: cannot be read, expected a file of the recipe", path.string());
    const std::string text{std::istreambuf_iterator<char>(in), {}};
    return parse_recipe_file(path.string(), text);
}

} // namespace

recipe_file parse_recipe_file(std::string name, std::string_view text) {
    recipe_file file{std::move(name), {}};
    for (std::uint32_t number = 1; !text.empty(); ++number) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        recipe_line line{number, words_of(text.substr(0, end))};
        if (!line.words.empty()) file.lines.push_back(std::move(line));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return file;
}

recipe read_recipe(const std::filesystem::path &directory) {
    if (directory.empty())
        return {parse_recipe_file("codesets", standard_recipe.codesets),
                parse_recipe_file("aliases", standard_recipe.aliases),
                parse_recipe_file("locales", standard_recipe.locales)};
    return {read_file(directory, "codesets"), read_file(directory, "aliases"),
            read_file(directory, "locales")};
}

std::string place(const recipe_file &file, const recipe_line &line) {
    return fmt::format("{}:{}", file.name, line.line);
}

} // namespace velc

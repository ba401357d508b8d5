#include "velc/recipe.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include <fmt/ranges.h>

#include "velc/tool_error.h"

namespace velc {

namespace {

constexpr std::string_view blanks = " \t\r";
constexpr std::size_t longest_overlay_name = 64; // it stands in a header line

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

std::string read_text(const std::filesystem::path &path) {
    std::ifstream in(path, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(in), {}};
    if (!in)
        throw tool_error("{}: cannot be read, expected a file of the recipe or an overlay",
                         path.string());
    return text;
}

recipe_file read_file(const std::filesystem::path &directory, const char *name) {
    const std::filesystem::path path = directory / name;
    return parse_recipe_file(path.string(), read_text(path));
}

bool is_overlay_name(std::string_view name) {
    const auto passes = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               c == '-' || c == '_' || c == '.';
    };
    return !name.empty() && name.size() <= longest_overlay_name && name[0] != '.' &&
           std::ranges::all_of(name, passes);
}

overlay_pointer read_overlay(const std::filesystem::path &path) {
    return std::make_shared<const overlay_source>(
        overlay_source{path.filename().string(), path.string(), read_text(path)});
}

// A recipe need not have any; what editors leave beside them is none.
std::vector<overlay_pointer> read_overlays(const std::filesystem::path &directory) {
    std::vector<overlay_pointer> overlays;
    std::error_code absent;
    for (const auto &entry : std::filesystem::directory_iterator(directory, absent))
        if (entry.is_regular_file() && is_overlay_name(entry.path().filename().string()))
            overlays.push_back(read_overlay(entry.path()));
    std::ranges::sort(overlays, {}, [](const overlay_pointer &one) { return one->name; });
    return overlays;
}

std::vector<overlay_pointer> standard_overlays() {
    std::vector<overlay_pointer> overlays;
    for (const auto &[name, text] : standard_recipe.overlays)
        overlays.push_back(std::make_shared<const overlay_source>(overlay_source{
            std::string(name), fmt::format("overlays/{}", name), std::string(text)}));
    return overlays;
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
                parse_recipe_file("locales", standard_recipe.locales), standard_overlays(),
                parse_recipe_file("conversions", standard_recipe.conversions)};
    recipe from{read_file(directory, "codesets"), read_file(directory, "aliases"),
                read_file(directory, "locales"), read_overlays(directory / "overlays")};
    if (std::filesystem::exists(directory / "conversions"))
        from.conversions = read_file(directory, "conversions");
    return from;
}

overlay_pointer recipe::find_overlay(std::string_view name) const {
    const auto found =
        std::ranges::find(overlays, name, [](const overlay_pointer &one) { return one->name; });
    return found == overlays.end() ? nullptr : *found;
}

overlay_pointer get_overlay(const recipe &from, const std::string &name_or_path) {
    if (const std::size_t slash = name_or_path.rfind('/'); slash != name_or_path.npos) {
        if (!is_overlay_name(std::string_view(name_or_path).substr(slash + 1)))
            throw tool_error("{}: found a name that is too long or has other characters, expected "
                             "up to {} letters, digits and - _ .",
                             name_or_path, longest_overlay_name);
        return read_overlay(name_or_path);
    }
    if (overlay_pointer known = from.find_overlay(name_or_path)) return known;
    std::vector<std::string_view> names;
    for (const overlay_pointer &one : from.overlays) names.push_back(one->name);
    throw tool_error("{}: found no overlay of that name, expected a path or one of: {}",
                     name_or_path, fmt::join(names, " "));
}

std::string place(const recipe_file &file, const recipe_line &line) {
    return fmt::format("{}:{}", file.name, line.line);
}

} // namespace velc

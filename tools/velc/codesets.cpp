#include "velc/codesets.h"

#include <algorithm>
#include <charconv>

#include "common/locale_name.h"
#include "names/registry.h"
#include "velc/tool_error.h"

namespace velc {

namespace {

bool is_registry_name(std::string_view name) {
    const auto allowed = [](char c) { return c > ' ' && c < 0x7F && c != '@' && c != ';'; };
    const bool digits = std::ranges::all_of(name, [](char c) { return c >= '0' && c <= '9'; });
    return !name.empty() && name.size() <= longest_codeset_name && name.front() != '#' &&
           std::ranges::all_of(name, allowed) && !digits;
}

std::uint16_t number_in(const recipe_file &file, const recipe_line &line, const std::string &word) {
    unsigned number = 0;
    const char *end = word.data() + word.size();
    const auto [stop, error] = std::from_chars(word.data(), end, number);
    if (error != std::errc() || stop != end || number < 1 || number > 0xFFFF ||
        number == VEL_CS_INVALID)
        throw tool_error("{}: found {}, expected a code-set number from 1 to 65535",
                         place(file, line), word);
    return static_cast<std::uint16_t>(number);
}

// Letters and digits only: "ISO-8859-1" gives "iso88591".
std::string without_punctuation(std::string_view name) {
    std::string rest = tools::lower_case(name);
    std::erase_if(rest, [](char c) { return !(c >= 'a' && c <= 'z') && !(c >= '0' && c <= '9'); });
    return rest;
}

// "ISO-8859-1" gives "iso8859-1", the way it is most often typed.
std::string without_first_hyphen(std::string_view name) {
    std::string rest = tools::lower_case(name);
    if (rest.starts_with("iso-8859")) rest.erase(3, 1);
    return rest;
}

} // namespace

bool registry_names::add(std::string_view name, std::uint16_t number) {
    if (!is_registry_name(name)) return false;
    std::string lower = tools::lower_case(name);
    if (!first_.emplace(lower, number).second) return false;
    rows_.emplace_back(std::move(lower), number);
    return true;
}

std::optional<std::uint16_t> registry_names::find(std::string_view name) const {
    const auto found = first_.find(tools::lower_case(name));
    if (found != first_.end()) return found->second;
    unsigned number = 0;
    const char *end = name.data() + name.size();
    const auto [stop, error] = std::from_chars(name.data(), end, number);
    if (error != std::errc() || stop != end || number > 0xFFFF) return std::nullopt;
    return static_cast<std::uint16_t>(number);
}

codeset_table::codeset_table(const recipe &from) {
    for (const vel::builtin_codeset *row = vel::vel_builtin_codesets; row->name; ++row)
        names_.add(row->name, row->number);
    read_codesets(from.codesets);
    read_aliases(from.aliases);
}

void codeset_table::read_codesets(const recipe_file &file) {
    std::map<std::uint16_t, std::string> taken;
    for (const recipe_line &line : file.lines) {
        codeset one{line.words[0], {}};
        if (line.words.size() < 2)
            throw tool_error("{}: found {} alone, expected a charmap and its number",
                             place(file, line), one.charmap);
        if (find(one.charmap))
            throw tool_error("{}: found {} again, expected one line for each charmap",
                             place(file, line), one.charmap);
        for (std::size_t i = 1; i < line.words.size(); ++i) {
            one.numbers.push_back(number_in(file, line, line.words[i]));
            const auto [other, is_new] = taken.emplace(one.numbers.back(), one.charmap);
            if (!is_new)
                throw tool_error("{}: found number {} again, expected one that {} does not have",
                                 place(file, line), one.numbers.back(), other->second);
        }
        codesets_.push_back(std::move(one));
    }
    for (const codeset &one : codesets_) names_.add(one.charmap, one.number());
}

void codeset_table::read_aliases(const recipe_file &file) {
    for (const recipe_line &line : file.lines) {
        if (line.words.size() != 2)
            throw tool_error("{}: found {} words, expected a name and a charmap", place(file, line),
                             line.words.size());
        const codeset *known = find(line.words[1]);
        if (!known)
            throw tool_error("{}: found {}, expected a charmap that has a number",
                             place(file, line), line.words[1]);
        if (!is_registry_name(line.words[0]))
            throw tool_error("{}: found {}, expected a name of at most {} characters without @ "
                             "and ;",
                             place(file, line), line.words[0], longest_codeset_name);
        names_.add(line.words[0], known->number());
    }
}

const codeset *codeset_table::find(std::string_view charmap) const {
    const auto found = std::ranges::find(codesets_, charmap, &codeset::charmap);
    return found == codesets_.end() ? nullptr : &*found;
}

const codeset &codeset_table::at(std::string_view charmap) const {
    if (const codeset *known = find(charmap)) return *known;
    std::uint16_t next = first_own_number;
    for (const codeset &one : codesets_)
        for (std::uint16_t number : one.numbers)
            if (number >= next) next = static_cast<std::uint16_t>(number + 1);
    throw tool_error("{}: has no code-set number, expected a line in the recipe's file codesets "
                     "(the next free number is {})",
                     charmap, next);
}

const codeset &codeset_table::named(std::string_view name) const {
    if (const codeset *known = find(name)) return *known;
    const auto number = names_.find(name);
    const codeset *known = number ? find(*number) : nullptr;
    if (known) return *known;
    throw tool_error(
        "{}: is no code set of the recipe, expected a charmap by its own name or by an "
        "alias of the recipe",
        name);
}

const codeset *codeset_table::find(std::uint16_t number) const {
    const auto found = std::ranges::find_if(
        codesets_, [&](const codeset &one) { return std::ranges::count(one.numbers, number) > 0; });
    return found == codesets_.end() ? nullptr : &*found;
}

std::string codeset_table::header_name(const codeset &of, std::uint16_t number) const {
    const auto leads_there = [&](std::string_view name) {
        return name.size() <= longest_header_name && names_.find(name) == number;
    };
    if (leads_there(of.charmap)) return of.charmap;
    for (const auto &[name, known] : names_.rows())
        if (known == number && leads_there(name)) return name;
    return std::to_string(number);
}

std::string registry_text(const codeset_table &table, const std::vector<charmap_names> &aliases) {
    registry_names names = table.names();
    for (const charmap_names &one : aliases)
        if (const codeset *known = table.find(one.charmap))
            for (const std::string &name : one.names) names.add(name, known->number());
    for (auto *spelling : {without_first_hyphen, without_punctuation})
        for (const codeset &one : table.all()) names.add(spelling(one.charmap), one.number());

    std::string text = "# Code-set names and their numbers. Of equal names the first counts.\n";
    for (const auto &[name, number] : names.rows())
        text += fmt::format("{:<22} {}\n", name, number);
    return text;
}

} // namespace velc

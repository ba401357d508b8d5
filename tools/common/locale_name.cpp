#include "common/locale_name.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tools {

namespace {

constexpr bool is_letter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
constexpr bool is_digit(char c) {
    return c >= '0' && c <= '9';
}
constexpr bool is_alnum(char c) {
    return is_letter(c) || is_digit(c);
}
constexpr bool is_codeset_char(char c) {
    return c > ' ' && c < 0x7F && c != '@' && c != ';' && c != '/' && c != '\\' && c != '=';
}

// Takes a prefix of the text whose characters all pass the test.
template <typename Test> std::string_view take_while(std::string_view &text, Test passes) {
    const auto end = std::ranges::find_if_not(text, passes);
    const std::string_view taken = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    text.remove_prefix(taken.size());
    return taken;
}

// One part behind its separator. True when the separator is not there or the part is fine.
template <typename Test>
bool take_part(std::string_view &text, char separator, Test passes, std::size_t least,
               std::size_t most, std::string &part) {
    if (!text.starts_with(separator)) return true;
    text.remove_prefix(1);
    const std::string_view taken = take_while(text, passes);
    part = lower_case(taken);
    return taken.size() >= least && taken.size() <= most;
}

constexpr std::pair<std::string_view, std::string_view> short_modifiers[] = {
    {"abegede", "abeg"},   {"arabic", "arab"}, {"cyrillic", "cyrl"}, {"devanagari", "deva"},
    {"gurmukhi", "guru"},  {"hebrew", "hebr"}, {"iqtelif", "iqte"},  {"latin", "latn"},
    {"mongolian", "mong"}, {"phone", "phon"},  {"pinyin", "piny"},   {"radical", "radi"},
    {"saaho", "saah"},     {"stroke", "stro"}, {"tifinagh", "tfng"}, {"traditional", "trad"},
    {"valencia", "vale"},
};

bool is_builtin(const locale_name &name) {
    return name.territory.empty() && (name.language == "c" || name.language == "posix");
}

std::string with_modifier(std::string text, std::string_view modifier) {
    if (!modifier.empty()) text.append("@").append(modifier);
    return text;
}

// The name as a plain file, which the library takes when a specification does not parse.
std::string plain_file(const locale_name &name, std::string_view codeset) {
    std::string file = is_builtin(name) ? "c" : name.language;
    if (!name.territory.empty()) file += "_" + name.territory;
    file += "." + plain_codeset(codeset);
    return with_modifier(std::move(file), name.modifier);
}

// "iso88591", "iso_8859-1", "iso8859-1" -> "1"; empty when it is no part of ISO 8859.
std::string_view part_of_iso_8859(std::string_view codeset) {
    const auto skip_joint = [&] {
        if (codeset.starts_with('-') || codeset.starts_with('_')) codeset.remove_prefix(1);
    };
    if (!codeset.starts_with("iso")) return {};
    codeset.remove_prefix(3);
    skip_joint();
    if (!codeset.starts_with("8859")) return {};
    codeset.remove_prefix(4);
    skip_joint();
    return std::ranges::all_of(codeset, is_digit) ? codeset : std::string_view();
}

} // namespace

std::string lower_case(std::string_view text) {
    std::string lower(text);
    for (char &c : lower)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return lower;
}

std::optional<locale_name> parse_locale_name(std::string_view typed) {
    if (typed.ends_with(".lco")) return std::nullopt;
    locale_name name;
    name.language = lower_case(take_while(typed, is_letter));
    const bool parts = take_part(typed, '_', is_alnum, 2, 3, name.territory) &&
                       take_part(typed, '.', is_codeset_char, 1, 21, name.codeset) &&
                       take_part(typed, '@', is_alnum, 1, 16, name.modifier);
    if (!parts || !typed.empty() || name.codeset.starts_with('#')) return std::nullopt;
    const bool known = name.language.size() == 2 || name.language.size() == 3 || is_builtin(name);
    return known ? std::optional(std::move(name)) : std::nullopt;
}

bool fits_specification(const locale_name &name) {
    return name.language.size() == 2 && name.territory.size() == 2 &&
           std::ranges::all_of(name.territory, is_letter);
}

std::string locale_specification(std::string_view typed) {
    const auto name = parse_locale_name(typed);
    if (!name) return std::string(typed);
    if (is_builtin(*name) && name->codeset.empty() && name->modifier.empty())
        return std::string(default_object);
    const std::string codeset = name->codeset.empty() ? "utf8" : name->codeset;
    if (!fits_specification(*name)) return plain_file(*name, codeset);
    return with_modifier(name->language + "_" + name->territory + "." + codeset,
                         short_modifier(name->modifier));
}

std::string locale_object_file(const locale_name &name, std::uint16_t codeset_number,
                               std::string_view codeset_name) {
    if (!fits_specification(name)) return plain_file(name, codeset_name);
    constexpr char digits[] = "0123456789abcdef";
    std::string file = name.language + "_" + name.territory + "/";
    for (int shift = 12; shift >= 0; shift -= 4) file += digits[codeset_number >> shift & 15];
    return file + short_modifier(name.modifier) + ".lco";
}

std::string short_modifier(std::string_view modifier) {
    const std::string lower = lower_case(modifier);
    const auto *known = std::ranges::find(short_modifiers, std::string_view(lower),
                                          &std::pair<std::string_view, std::string_view>::first);
    return known != std::end(short_modifiers) ? std::string(known->second) : lower.substr(0, 4);
}

std::string plain_codeset(std::string_view codeset) {
    std::string lower = lower_case(codeset);
    if (lower == "utf8" || lower == "57372") return "utf-8";
    const std::string_view part = part_of_iso_8859(lower);
    return part.empty() ? lower : "iso-8859-" + std::string(part);
}

} // namespace tools

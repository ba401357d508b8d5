// Words in the languages of the locales: the texts of their sources, and the names of languages,
// countries and currencies in the message catalogues of the package iso-codes where they are there.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <regex>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace differential {

inline constexpr const char *source_folder = "/usr/share/i18n/locales/";
inline constexpr const char *catalogue_folder = "/usr/share/locale/";

using words = std::vector<std::u32string>;

inline std::string file_content(const std::string &path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Of UTF-8 that is known to be valid.
inline std::u32string code_points(std::string_view text) {
    std::u32string codes;
    for (unsigned char byte : text) {
        if (byte < 0x80)
            codes += byte;
        else if (byte >= 0xC0)
            codes += byte & (byte < 0xE0 ? 0x1F : byte < 0xF0 ? 0x0F : 0x07);
        else
            codes.back() = codes.back() << 6 | (byte & 0x3F);
    }
    return codes;
}

inline std::string utf8(const std::u32string &codes) {
    std::string text;
    for (char32_t code : codes) {
        const int more = code < 0x80 ? 0 : code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
        text +=
            static_cast<char>(more == 0 ? code : (0xFF00 >> (more + 1) & 0xFF) | code >> 6 * more);
        for (int i = more; i-- > 0;) text += static_cast<char>(0x80 | (code >> 6 * i & 0x3F));
    }
    return text;
}

// The characters that a source writes as <U20AC>, or orders as <S20AC>, as they come in the text.
inline std::u32string written_characters(const std::string &text) {
    static const std::regex name("<[US]([0-9A-Fa-f]{1,8})>");
    std::u32string codes;
    for (std::sregex_iterator at(text.begin(), text.end(), name), end; at != end; ++at)
        codes += static_cast<char32_t>(std::stoul((*at)[1], nullptr, 16));
    std::erase_if(codes, [](char32_t code) { return code <= 0x20; });
    return codes;
}

// What stands between quotation marks on one line, which is nearly all text that a source has.
inline void add_texts_of_source(const std::string &source, std::set<std::u32string> &to) {
    static const std::regex quoted("\"([^\"\n]*)\"");
    const std::string content = file_content(source_folder + source);
    for (std::sregex_iterator at(content.begin(), content.end(), quoted), end; at != end; ++at) {
        const std::string text = (*at)[1];
        if (text.find_first_of("<%/") == text.npos) to.insert(code_points(text));
    }
}

// The translations of a compiled catalogue but the first, which describes it.
inline void add_translations(const std::string &catalogue, std::set<std::u32string> &to) {
    const std::string content = file_content(catalogue);
    const auto number = [&](size_t at) {
        uint32_t value = 0;
        if (at + 4 <= content.size()) memcpy(&value, content.data() + at, 4);
        return value;
    };
    if (number(0) != 0x950412DE) return;
    for (uint32_t i = 1; i < number(8); ++i) {
        const uint32_t length = number(number(16) + 8 * i), from = number(number(16) + 8 * i + 4);
        if (from < content.size()) to.insert(code_points(content.substr(from, length)));
    }
}

// In the order of their code points.
inline words words_of(const std::string &source) {
    std::set<std::u32string> found;
    add_texts_of_source(source, found);
    const size_t at = source.find('@');
    const std::string modifier = at == source.npos ? "" : source.substr(at);
    const std::string plain = source.substr(0, at), language = plain.substr(0, plain.find('_'));
    for (const std::string &name : {plain + modifier, language + modifier, plain, language}) {
        for (const char *of : {"iso_639-3", "iso_639-2", "iso_3166-1", "iso_3166-2", "iso_4217"})
            add_translations(catalogue_folder + name + "/LC_MESSAGES/" + of + ".mo", found);
    }
    found.erase(U"");
    return {found.begin(), found.end()};
}

// The characters that the order of a source names, or that of the one it copies; those of the
// common template are not given.
inline std::u32string characters_in_order_of(const std::string &source) {
    const std::string content = file_content(source_folder + source);
    const size_t from = content.find("\nLC_COLLATE"), to = content.find("\nEND LC_COLLATE");
    if (from == content.npos || to == content.npos) return {};
    const std::string section = content.substr(from, to - from);
    const std::u32string codes = written_characters(section);
    const size_t copy = section.find("\ncopy \"");
    if (!codes.empty() || copy == section.npos) return codes;
    const size_t name = copy + 7;
    const std::string other = section.substr(name, section.find('"', name) - name);
    return other == "iso14651_t1" ? codes : characters_in_order_of(other);
}

} // namespace differential

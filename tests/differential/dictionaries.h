// The words of a language, as the dictionaries that Debian packages have them.
#pragma once

#include <iconv.h>

#include "differential/words.h"

namespace differential {

struct dictionary {
    std::string_view language, file, code_set;
};

// The packages are named in scripts/common.sh.
inline constexpr dictionary dictionaries[] = {
    {"cs", "/usr/share/hunspell/cs_CZ.dic", "UTF-8"},
    {"de", "/usr/share/dict/ngerman", "UTF-8"},
    {"es", "/usr/share/dict/spanish", "UTF-8"},
    {"fr", "/usr/share/dict/french", "UTF-8"},
    {"hr", "/usr/share/hunspell/hr_HR.dic", "UTF-8"},
    {"hu", "/usr/share/hunspell/hu_HU.dic", "UTF-8"},
    {"kk", "/usr/share/hunspell/kk_KZ.dic", "UTF-8"},
    {"lt", "/usr/share/hunspell/lt_LT.dic", "ISO-8859-13"},
    {"ru", "/usr/share/hunspell/ru_RU.dic", "UTF-8"},
    {"sv", "/usr/share/dict/swedish", "ISO-8859-1"},
    {"th", "/usr/share/hunspell/th_TH.dic", "UTF-8"},
    {"vi", "/usr/share/hunspell/vi_VN.dic", "UTF-8"},
};

// Null for a language without one.
inline const dictionary *dictionary_for(std::string_view source) {
    const auto *at =
        std::ranges::find(dictionaries, source.substr(0, source.find('_')), &dictionary::language);
    return at == std::end(dictionaries) ? nullptr : at;
}

inline std::string to_utf8(std::string text, std::string_view code_set) {
    const iconv_t converter = iconv_open("UTF-8", std::string(code_set).c_str());
    std::string made(text.size() * 3, '\0');
    char *from = text.data(), *to = made.data();
    size_t left = text.size(), room = made.size();
    const bool whole = iconv(converter, &from, &left, &to, &room) != static_cast<size_t>(-1);
    iconv_close(converter);
    made.resize(whole ? made.size() - room : 0);
    return made;
}

// Without what a spelling checker notes behind a word, and without the line that counts the words;
// none when the file is not there.
inline words words_in(const dictionary &of) {
    const std::string text = to_utf8(file_content(std::string(of.file)), of.code_set);
    words found;
    for (size_t at = 0, end; (end = text.find('\n', at)) != text.npos; at = end + 1) {
        const std::string line = text.substr(at, end - at);
        const std::string word = line.substr(0, line.find_first_of("/\t\r"));
        const bool is_count = at == 0 && of.file.ends_with(".dic");
        if (!word.empty() && !is_count) found.push_back(code_points(word));
    }
    return found;
}

} // namespace differential

#include "velc/source/supported.h"

#include <sstream>

#include "velc/source/source_text.h"

namespace velc {

namespace {

// "de_DE.UTF-8@euro" -> "de_DE@euro"
std::string source_of(const std::string &name) {
    const std::size_t dot = name.find('.');
    if (dot == name.npos) return name;
    const std::size_t modifier = name.find('@', dot);
    return name.substr(0, dot) + (modifier == name.npos ? "" : name.substr(modifier));
}

} // namespace

// supported := { name blank charmap newline }
std::vector<supported_locale> read_supported(const std::string &path) {
    std::vector<supported_locale> list;
    std::istringstream lines(read_source_text(path));
    std::string line;
    for (std::uint32_t number = 1; std::getline(lines, line); ++number) {
        std::istringstream words(line);
        std::string name, charmap, rest;
        words >> name;
        if (name.empty() || name[0] == '#') continue;
        words >> charmap >> rest;
        if (charmap.empty() || !rest.empty())
            throw source_error({path, number},
                               "found '" + line + "', expected a locale and its charmap");
        list.push_back({name, source_of(name), charmap});
    }
    return list;
}

} // namespace velc

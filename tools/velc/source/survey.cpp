#include "velc/source/survey.h"

#include "velc/source/source_library.h"

namespace velc {

namespace {

template <typename Read>
survey_row tried(survey_row::what kind, const std::string &name, Read &&read) {
    survey_row row{kind, name, false, {}, {}};
    try {
        row.warnings = read();
        row.readable = true;
    } catch (const source_error &error) {
        row.error = error.what();
    }
    return row;
}

} // namespace

std::vector<survey_row> survey(const std::filesystem::path &root) {
    source_library library(root);
    std::vector<survey_row> rows;
    for (const std::string &name : library.charmap_names())
        rows.push_back(tried(survey_row::what::charmap, name,
                             [&] { return library.charmap(name)->warnings(); }));
    for (const std::string &name : library.locale_names())
        rows.push_back(tried(survey_row::what::locale, name, [&] {
            library.translit(name);
            return library.locale(name)->warnings;
        }));
    return rows;
}

} // namespace velc

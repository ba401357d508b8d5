#include "locale/complete.h"

#include "locale/era_list.h"
#include "locale/query_texts.h"
#include "locale/time_names.h"

namespace vel {
namespace {

// The wide value of a character of these names is its byte in every code set: in those of longer
// characters the bytes before it are zero.
template <size_t N> void widen_name(const char (&name)[N], vel_wchar (&wide)[N]) {
    size_t i = 0;
    for (; name[i]; ++i) wide[i] = static_cast<unsigned char>(name[i]);
    wide[i] = 0;
}

} // namespace

int32_t complete_locale(vel_locale *locale) {
    for (int32_t i = 0; i < category_count; ++i) {
        widen_name(locale->codeset_names[i], locale->wide_codeset_names[i]);
        widen_name(locale->file_names[i], locale->wide_file_names[i]);
    }
    if (build_era_list(locale) != 0 || build_time_names(locale) != 0) return -1;
    return build_query_texts(locale);
}

} // namespace vel

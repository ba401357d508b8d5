// Collating wide strings.
#include "collate/faces.h"
#include "vels/collate.h"

namespace vel {
namespace {

int32_t collate_thai(vel_locale *locale, wide_text a, wide_text b) {
    encoded_text bytes_a(locale, a);
    if (!bytes_a) return 0;
    encoded_text bytes_b(locale, b);
    if (!bytes_b) return 0;
    return sign_of(compare_thai(bytes_a.text(), bytes_b.text()));
}

} // namespace
} // namespace vel

using namespace vel;

int32_t vel_full_wcscoll(vel_locale *locale, const vel_wchar *s1, const vel_wchar *s2) {
    return tuk_vel_full_wcscoll(locale, s1, -1, s2, -1);
}

int32_t tuk_vel_full_wcscoll(vel_locale *locale, const vel_wchar *s1, int32_t len1,
                             const vel_wchar *s2, int32_t len2) {
    if (!locale) return 0;
    if (int32_t number = pair_error(s1, len1, s2, len2)) return fail_zero(locale, number);
    wide_text a = find_text(s1, len1), b = find_text(s2, len2);
    if (locale->collate.code_order) return sign_of(compare_values(a, b));
    if (locale->collate.kind == collation_thai) return collate_thai(locale, a, b);
    return collate_texts(locale, a, b);
}

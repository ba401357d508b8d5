// Collating strings of single-byte code sets, by functions that each take some features of a
// collation into account: a host picks the one that fits the locale.
#include "collate/faces.h"
#include "collate/validity.h"
#include "vels/collate.h"

namespace vel {
namespace {

constexpr collation_scope with_expansions{false, true, false, false};
constexpr collation_scope with_elements{true, false, false, false};
constexpr collation_scope with_backward{false, false, true, false};
constexpr collation_scope with_both{true, true, false, false};

int32_t collate_bytes(vel_locale *locale, collation_scope scope, const char *s1, int32_t len1,
                      const char *s2, int32_t len2) {
    if (!locale) return 0;
    if (int32_t number = pair_error(s1, len1, s2, len2)) return fail_zero(locale, number);
    if (len1 < -1 || len2 < -1) return fail_zero(locale, VEL_EILSEQ);
    byte_text a = text_in<byte_text>(s1, len1), b = text_in<byte_text>(s2, len2);
    const collate_category &collate = locale->collate;
    if (collate.code_order) return sign_of(compare_values(a, b));
    if (collate.kind == collation_thai) return sign_of(compare_thai(a, b));
    return settle(locale, compare_texts(weighing(collate, scope), a, b));
}

} // namespace
} // namespace vel

using namespace vel;

int32_t vel_is_mbscoll_exp(vel_locale *locale, const char *s1, const char *s2) {
    return collate_bytes(locale, with_expansions, s1, -1, s2, -1);
}

int32_t tuk_vel_is_mbfscoll_exp(vel_locale *locale, const char *s1, int32_t len1, const char *s2,
                                int32_t len2) {
    return collate_bytes(locale, with_expansions, s1, len1, s2, len2);
}

int32_t vel_is_mbscoll_elem(vel_locale *locale, const char *s1, const char *s2) {
    return collate_bytes(locale, with_elements, s1, -1, s2, -1);
}

int32_t tuk_vel_is_mbfscoll_elem(vel_locale *locale, const char *s1, int32_t len1, const char *s2,
                                 int32_t len2) {
    return collate_bytes(locale, with_elements, s1, len1, s2, len2);
}

int32_t vel_is_mbscoll_back(vel_locale *locale, const char *s1, const char *s2) {
    return collate_bytes(locale, with_backward, s1, -1, s2, -1);
}

int32_t tuk_vel_is_mbfscoll_back(vel_locale *locale, const char *s1, int32_t len1, const char *s2,
                                 int32_t len2) {
    return collate_bytes(locale, with_backward, s1, len1, s2, len2);
}

int32_t vel_is_mbscoll_exp_elem(vel_locale *locale, const char *s1, const char *s2) {
    return collate_bytes(locale, with_both, s1, -1, s2, -1);
}

int32_t tuk_vel_is_mbfscoll_exp_elem(vel_locale *locale, const char *s1, int32_t len1,
                                     const char *s2, int32_t len2) {
    return collate_bytes(locale, with_both, s1, len1, s2, len2);
}

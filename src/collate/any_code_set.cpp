// Collating multibyte strings of any code set: single-byte text and UTF-8 as they stand, all other
// as wide values.
#include "collate/faces.h"
#include "collate/validity.h"
#include "vels/collate.h"
#include "vels/multibyte.h"

namespace vel {
namespace {

// Two strings, both terminated or both counted.
struct string_pair {
    const char *s1;
    int32_t len1;
    const char *s2;
    int32_t len2;
};

// Any texts. What they have in common is checked once.
[[gnu::noinline]] bool find_checked(vel_locale *locale, const string_pair &strings, utf8_text *a,
                                    utf8_text *b) {
    *a = text_in<utf8_text>(strings.s1, strings.len1);
    *b = text_in<utf8_text>(strings.s2, strings.len2);
    size_t common = common_start(*a, *b);
    return is_valid(locale, *a) && is_valid(locale, utf8_text{b->at + common, b->end});
}

// Texts of which long parts are the same and the rest is short and plain; `common` is in bytes.
[[gnu::noinline]] bool find_similar(vel_locale *locale, const string_pair &strings, size_t common,
                                    utf8_text *a, utf8_text *b) {
    const unsigned char *begin_a = as_bytes(strings.s1), *begin_b = as_bytes(strings.s2);
    // A character that lies across the end of the common part belongs to the rest.
    for (size_t back = 1; back < max_character_bytes && back < common; ++back) {
        unsigned char byte = begin_a[common - back];
        if (byte < 0x80) break;
        if (byte < 0xC0) continue;
        common -= back;
        break;
    }
    int32_t used = static_cast<int32_t>(common);
    int32_t rest1 = strings.len1 == -1 ? -1 : strings.len1 - used;
    int32_t rest2 = strings.len2 == -1 ? -1 : strings.len2 - used;
    bool plain = find_plain(strings.s1 + common, rest1, a) &&
                 find_plain(strings.s2 + common, rest2, b) &&
                 is_valid(locale, utf8_text{begin_a, begin_a + common});
    a->at = begin_a;
    b->at = begin_b;
    return plain;
}

int32_t collate_utf8(vel_locale *locale, const string_pair &strings) {
    if (strings.len1 < -1 || strings.len2 < -1) return fail_zero(locale, VEL_EILSEQ);
    utf8_text a, b;
    size_t same = equal_blocks(strings.s1, strings.len1, strings.s2, strings.len2);
    bool found = same == 0 ? find_plain(strings.s1, strings.len1, &a) &&
                                 find_plain(strings.s2, strings.len2, &b)
                           : find_similar(locale, strings, same, &a, &b);
    if (!found && !find_checked(locale, strings, &a, &b)) return fail_zero(locale, VEL_EILSEQ);
    if (locale->collate.code_order) [[unlikely]]
        return compare_values(a, b);
    return collate_texts(locale, a, b, same);
}

int32_t collate_bytes(vel_locale *locale, const string_pair &strings) {
    if (strings.len1 < -1 || strings.len2 < -1) return fail_zero(locale, VEL_EILSEQ);
    byte_text a = text_in<byte_text>(strings.s1, strings.len1);
    byte_text b = text_in<byte_text>(strings.s2, strings.len2);
    return locale->collate.code_order ? compare_values(a, b) : collate_texts(locale, a, b);
}

int32_t collate_decoded(vel_locale *locale, const string_pair &strings) {
    decoded_text a(locale, strings.s1, strings.len1);
    if (!a) return 0;
    decoded_text b(locale, strings.s2, strings.len2);
    if (!b) return 0;
    if (locale->collate.code_order) return compare_values(a.text(), b.text());
    return collate_texts(locale, a.text(), b.text());
}

// The order is one of bytes; other code sets than single-byte ones only have to be valid.
int32_t collate_thai(vel_locale *locale, const string_pair &strings) {
    if (tuk_vel_im_mbfslen(locale, strings.s1, strings.len1) < 0) return 0;
    if (tuk_vel_im_mbfslen(locale, strings.s2, strings.len2) < 0) return 0;
    byte_text a = text_in<byte_text>(strings.s1, strings.len1);
    byte_text b = text_in<byte_text>(strings.s2, strings.len2);
    return sign_of(compare_thai(a, b));
}

} // namespace
} // namespace vel

using namespace vel;

int32_t vel_im_mbscoll(vel_locale *locale, const char *s1, const char *s2) {
    return tuk_vel_im_mbfscoll(locale, s1, -1, s2, -1);
}

int32_t tuk_vel_im_mbfscoll(vel_locale *locale, const char *s1, int32_t len1, const char *s2,
                            int32_t len2) {
    if (!locale) return 0;
    if (int32_t number = pair_error(s1, len1, s2, len2)) return fail_zero(locale, number);
    string_pair strings{s1, len1, s2, len2};
    if (locale->collate.kind == collation_thai) [[unlikely]]
        return collate_thai(locale, strings);
    if (is_utf8(locale)) return collate_utf8(locale, strings);
    if (locale->single_byte) return collate_bytes(locale, strings);
    return collate_decoded(locale, strings);
}

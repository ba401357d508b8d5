// Collating multibyte strings of any code set: single-byte text and UTF-8 as they stand, all other
// as wide values.
#include "collate/faces.h"
#include "collate/plain_text.h"
#include "collate/validity.h"
#include "vels/collate.h"
#include "vels/multibyte.h"

namespace vel {
namespace {

// Any texts, and the bytes that they have in common. What those are is checked once.
bool find_checked(vel_locale *locale, const string_pair &strings, utf8_text *a, utf8_text *b,
                  size_t *same) {
    *a = text_in<utf8_text>(strings.s1, strings.len1);
    *b = text_in<utf8_text>(strings.s2, strings.len2);
    *same = common_start(*a, *b);
    return is_valid(locale, *a) && is_valid(locale, utf8_text{b->at + *same, b->end});
}

// How many bytes in common are left when a character that goes on behind them is not counted.
size_t up_to_character(const unsigned char *text, size_t common) {
    for (size_t back = 1; back < max_character_bytes && back < common; ++back) {
        unsigned char byte = text[common - back];
        if (byte < 0x80) return common;
        if (byte >= 0xC0) return common - back;
    }
    return common;
}

// The same where long parts are the same and the rest is plain, or for any texts.
[[gnu::noinline]] bool find_long(vel_locale *locale, const string_pair &strings, utf8_text *a,
                                 utf8_text *b, size_t *same) {
    const unsigned char *begin_a = as_bytes(strings.s1), *begin_b = as_bytes(strings.s2);
    size_t common = up_to_character(begin_a, equal_pieces(strings));
    int32_t used = static_cast<int32_t>(common);
    string_pair rest{strings.s1 + common, strings.len1 == -1 ? -1 : strings.len1 - used,
                     strings.s2 + common, strings.len2 == -1 ? -1 : strings.len2 - used};
    bool plain = common > 0 && find_plain_pair(rest, a, b, same) &&
                 is_valid(locale, utf8_text{begin_a, begin_a + common});
    if (!plain) return find_checked(locale, strings, a, b, same);
    a->at = begin_a;
    b->at = begin_b;
    *same += common;
    return true;
}

int32_t collate_utf8(vel_locale *locale, const string_pair &strings) {
    if (strings.len1 < -1 || strings.len2 < -1) return fail_zero(locale, VEL_EILSEQ);
    utf8_text a, b;
    size_t same;
    bool found =
        find_plain_pair(strings, &a, &b, &same) || find_long(locale, strings, &a, &b, &same);
    if (!found) return fail_zero(locale, VEL_EILSEQ);
    const collate_category &collate = locale->collate;
    if (collate.code_order) [[unlikely]]
        return compare_values(a, b);
    if (!utf8_text::covered(collate.layout)) same = 0;
    return settle(locale, compare_behind(same, weighing(collate), a, b));
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

// Classes and case of characters and strings.
#include <gtest/gtest.h>

#include "support/make_locale.h"
#include "vels/errors.h"
#include "vels/multibyte.h"

namespace {

using namespace vel_test;

constexpr int32_t pair(int32_t read, int32_t written) {
    return read << 8 | written;
}

class ctype : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        utf8_set = make_utf8();
        byte_set = make_single_byte();
        // i and dotted I as in Turkish; B and b map to what is no character.
        turkish_set = make_utf8_base();
        turkish_set->add_ascii_letters();
        turkish_set->add_mapped('i', VEL_CLASS_LOWER, {utf8(0x130), 0});
        turkish_set->add_mapped(utf8(0x130), VEL_CLASS_UPPER, {0, 'i'});
        turkish_set->add_mapped('b', VEL_CLASS_LOWER, {0xFFFF, 0});
        turkish_set->finish();
    }
    static inline locale_ptr utf8_set, byte_set, turkish_set;

    vel_locale *utf = utf8_set->get(), *single = byte_set->get(), *turkish = turkish_set->get();
};

TEST_F(ctype, class_names_have_masks) {
    const std::pair<const char *, int32_t> names[] = {
        {"upper", 1},    {"lower", 2},    {"alpha", 4},   {"digit", 8},   {"space", 16},
        {"cntrl", 32},   {"punct", 64},   {"graph", 128}, {"print", 256}, {"xdigit", 512},
        {"blank", 1024}, {"alnum", 12},   {"Upper", 0},   {"", 0},        {"kana", 2048},
        {"wide", 4096},  {"kana2", 2048},
    };
    char kana[] = "kana", wide[] = "wide", again[] = "wide", kana2[] = "kana2", upper[] = "upper";
    vel::locale_class own[] = {{0, kana}, {1, wide}, {3, again}, {32, kana2}, {7, upper}};
    utf->ctype.classes = own;
    utf->ctype.class_count = 5;
    for (auto [name, mask] : names) EXPECT_EQ(mask, vel_ctype(utf, name)) << name;
    utf->ctype.class_count = 0;
}

TEST_F(ctype, values_have_classes) {
    constexpr int32_t alnum = VEL_CLASS_ALNUM;
    for (auto test : {vel_im_iswctype, im_iswctype}) {
        EXPECT_EQ(VEL_CLASS_ALPHA, test(utf, 'a', alnum));
        EXPECT_RESULT(0, 0, utf, test(utf, 0xF09F9880, alnum));
        for (vel_wchar none : {0x80u, 0xC341u, 0xEDA080u, 0xFFFFFFFFu})
            EXPECT_RESULT(0, VEL_EILSEQ, utf, test(utf, none, alnum));
    }
    EXPECT_RESULT(0xFF41u, VEL_EILSEQ, utf, vel_im_towupper(utf, 0xFF41));
    EXPECT_RESULT(0x80000000, VEL_EILSEQ, utf, im_towlower(utf, 0x80000000));
    for (auto test : {vel_im_ismctype, im_ismctype})
        EXPECT_RESULT(0, VEL_EILSEQ, utf, test(utf, "\xD0", alnum));
    const std::tuple<const char *, int32_t, int32_t, int32_t> rows[] = {
        {"\xD0\x96", 2, VEL_CLASS_ALPHA, 0},
        {"\xD0\x96", 1, 0, VEL_EINVAL},
        {"a", 0, 0, VEL_EINVAL},
        {"\xFF", 1, 0, VEL_EILSEQ}};
    for (auto [bytes, n, result, error] : rows)
        EXPECT_RESULT(result, error, utf, tuk_vel_im_ismctype(utf, bytes, n, alnum));
}

TEST_F(ctype, multibyte_characters_have_case) {
    struct row {
        vel_locale *locale;
        const char *in, *upper, *lower;
        int32_t upper_result, lower_result, error; // counted forms give 0 on an error
    };
    const row rows[] = {
        {utf, "a", "A", "a", pair(1, 1), pair(1, 1), 0},
        {utf, "\xD0\x96z", "\xD0\x96", "\xD0\xB6", pair(2, 2), pair(2, 2), 0},
        {turkish, "i", "\xC4\xB0", "i", pair(1, 2), pair(1, 1), 0},
        {turkish, "\xC4\xB0", "\xC4\xB0", "i", pair(2, 2), pair(2, 1), 0},
        {utf, "\xE3\x41z", "\xE3\x41", "\xE3\x41", pair(2, 2), pair(2, 2), VEL_EILSEQ},
        {turkish, "b", "", "b", pair(1, 0xFF), pair(1, 1), VEL_EILSEQ},
    };
    for (const row &r : rows) {
        SCOPED_TRACE(&r - rows);
        char upper[8] = {}, lower[8] = {};
        EXPECT_RESULT(r.upper_result, r.error, r.locale, vel_im_tomupper(r.locale, upper, r.in));
        EXPECT_EQ(r.lower_result, vel_im_tomlower(r.locale, lower, r.in));
        EXPECT_STREQ(r.upper, upper);
        EXPECT_STREQ(r.lower, lower);
        EXPECT_EQ(r.lower_result, im_tomlower(r.locale, lower, r.in));
    }
    char out[8] = {};
    EXPECT_EQ(pair(1, 2), tuk_vel_im_tomupper(turkish, out, "i", 1));
    EXPECT_EQ(pair(2, 1), tuk_vel_im_tomlower(turkish, out, "\xC4\xB0", 9));
    EXPECT_RESULT(0, VEL_EINVAL, utf, tuk_vel_im_tomupper(utf, out, "\xD0\xB6", 1));
    EXPECT_RESULT(0, VEL_EINVAL, utf, tuk_vel_im_tomlower(utf, out, "a", 0));
    EXPECT_RESULT(0, VEL_EILSEQ, utf, tuk_vel_im_tomupper(utf, out, "\xFF", 3));
}

TEST_F(ctype, strings_fail_at_the_first_invalid_character) {
    char out[16] = "????????";
    EXPECT_RESULT(-1, VEL_EILSEQ, utf, vel_tombslower(utf, out, "AB\xFFz"));
    EXPECT_STREQ("ab??????", out);
    // A mapping to no character moves the output back by one.
    EXPECT_RESULT(2, VEL_EILSEQ, turkish, vel_tombsupper(turkish, out, "acbd"));
    EXPECT_STREQ("AD", out);
    vel_wchar wide[] = {'A', 0xFF, 0}, lower[] = {7, 7, 7};
    EXPECT_RESULT(-1, VEL_EILSEQ, utf, vel_towcslower(utf, lower, wide));
    EXPECT_EQ((std::vector<vel_wchar>{'a', 7, 7}), std::vector<vel_wchar>(lower, lower + 3));
    wide[1] = 0x141;
    EXPECT_RESULT(-1, VEL_EILSEQ, single, vel_towcslower(single, lower, wide));
}

TEST_F(ctype, buffers_grow_by_the_factor_rounded_up) {
    utf->case_growth = 1.0;
    EXPECT_EQ(10, vel_case_conv_outbuflen(utf, 10));
    utf->case_growth = 1.5;
    EXPECT_EQ(20, vel_case_conv_outbuflen(utf, 10));
}

TEST_F(ctype, trailing_blanks_are_cut) {
    for (vel_locale *locale : {utf, single}) {
        const std::pair<std::string, std::ptrdiff_t> rows[] = {
            {"ab  ", 2}, {"ab\t", -1}, {"a b", -1}, {" \t  ", 2}, {"  ", 0}, {"", -1}};
        for (auto [text, expected] : rows) { // -1 for none
            SCOPED_TRACE(text);
            const std::string before = text;
            const char *cut = vel_mbsntstrunc(locale, text.data());
            EXPECT_EQ(expected, cut ? cut - text.data() : -1);
            EXPECT_STREQ(before.substr(0, static_cast<size_t>(expected)).c_str(), text.c_str());
        }
        vel_wchar wide[] = {'a', ' ', 'b', '\t', ' ', 0}, none[] = {' ', 0xFFFF, 0};
        EXPECT_EQ(wide + 3, vel_wcsntstrunc(locale, wide));
        EXPECT_EQ(3, vel_wcslen(wide));
        EXPECT_EQ(nullptr, vel_wcsntstrunc(locale, wide));
        EXPECT_RESULT(nullptr, VEL_EILSEQ, locale, vel_wcsntstrunc(locale, none));
        EXPECT_RESULT(nullptr, VEL_EFAULT, locale, vel_mbsntstrunc(locale, nullptr));
        EXPECT_RESULT(nullptr, VEL_EFAULT, locale, vel_wcsntstrunc(locale, nullptr));
    }
    std::string text = "a\xE3\x80\x80 ", bad = "a \xFF";
    EXPECT_EQ(text.data() + 1, vel_mbsntstrunc(utf, text.data()));
    EXPECT_RESULT(nullptr, VEL_EILSEQ, utf, vel_mbsntstrunc(utf, bad.data()));
}

} // namespace

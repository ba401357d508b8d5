// Items of locales by number.
#include <gtest/gtest.h>

#include "differential/cases.h"
#include "locale/query_texts.h"
#include "record/category.h"
#include "support/make_locale.h"
#include "vels/errors.h"
#include "vels/info.h"
#include "vels/multibyte.h"

namespace {

using namespace vel_test;
using differential::locale_case;
using differential::open_ours;
using differential::our_locale;

constexpr locale_case german = {"de_DE", "UTF-8"}, japanese = {"ja_JP", "EUC-JP"},
                      persian = {"fa_IR", "UTF-8"}, ebcdic = {"en_US", "IBM037"};

std::string text_of(vel_locale *locale, int32_t item) {
    const char *text = vel_nl_langinfo(locale, item);
    return text ? text : "null";
}

TEST(items, have_the_same_text_in_both_forms) {
    for (const locale_case &of : {german, japanese, persian, ebcdic}) {
        const our_locale locale = open_ours(of);
        for (int32_t item = -1; item <= 75; ++item) {
            SCOPED_TRACE(of.name() + ", " + std::to_string(item));
            const bool missing_month = (item >= 27 && item <= 34) || (item >= 47 && item <= 54);
            const int32_t number = missing_month ? VEL_EBADLEN : 0;
            const bool is_null = missing_month || item < 0 || item > 73;
            const char *text = nullptr;
            EXPECT_EQ(error_of(locale.get(), [&] { text = vel_nl_langinfo(locale.get(), item); }),
                      number);
            const vel_wchar *wide = vel_wc_nl_langinfo(locale.get(), item);
            ASSERT_EQ(text == nullptr, is_null);
            ASSERT_EQ(wide == nullptr, is_null);
            const bool is_format =
                item == 0 || (item >= 61 && item <= 63) || (item >= 67 && item <= 69);
            EXPECT_STREQ(vel_get_ltime_fmts(locale.get(), item), is_format ? text : "");
            if (is_null || item == VEL_ITEM_CODESET || item == VEL_ITEM_CALENDAR) continue;
            std::vector<vel_wchar> decoded(2000);
            const int32_t n = vel_im_mbstowcs(locale.get(), decoded.data(), text, 2000);
            ASSERT_GE(n, 0);
            decoded.resize(static_cast<size_t>(n));
            EXPECT_EQ(decoded, std::vector<vel_wchar>(wide, wide + vel_wcslen(wide)));
        }
    }
    const our_locale locale = open_ours(german);
    EXPECT_EQ(memcmp(vel_wc_nl_langinfo(locale.get(), VEL_ITEM_CALENDAR), U"gregorian\n", 11 * 4),
              0);
    EXPECT_EQ(vel_wc_nl_langinfo(locale.get(), VEL_ITEM_CODESET)[4], vel_wchar{'8'});
    EXPECT_EQ(vel_nl_langinfo(nullptr, VEL_ITEM_DAY_1), nullptr);
    EXPECT_EQ(vel_localeconv(nullptr), nullptr);
    EXPECT_STREQ(vel_get_ltime_fmts(nullptr, VEL_ITEM_D_FMT), "");
    EXPECT_STREQ(vel_localeconv(locale.get())->monetary.int_curr_symbol.bytes, "EUR ");
}

TEST(formats, have_a_greatest_length) {
    const struct row {
        locale_case of;
        const char *format;
        int32_t bytes, characters, error;
    } rows[] = {{german, "", 0, 0, 0},
                {german, "%A", 10, 10, 0},              // Donnerstag
                {german, "\xE2\x82\xAC %x", 14, 12, 0}, // the date by its format, dd.mm.yyyy
                {japanese, "%B", 4, 3, 0},              // the tenth month
                {german, "%?", -1, -1, VEL_ETIMEFMT}};
    for (const row &r : rows) {
        const our_locale locale = open_ours(r.of);
        SCOPED_TRACE(r.format);
        std::vector<vel_wchar> wide(20);
        ASSERT_GE(vel_im_mbstowcs(locale.get(), wide.data(), r.format, 20), 0);
        EXPECT_RESULT(r.bytes, r.error, locale, vel_mbsfmtexpand(locale.get(), 1, r.format));
        EXPECT_RESULT(r.characters, r.error, locale,
                      vel_wcsfmtexpand(locale.get(), 1, wide.data()));
        EXPECT_RESULT(-1, 0, locale, vel_wcsfmtexpand(locale.get(), 2, wide.data()));
    }
}

// What is joined belongs to the copy and goes with the category that it is made of.
TEST(items, of_null_copied_and_freed_categories) {
    const our_locale source = open_ours(japanese);
    vel_locale *made = nullptr;
    ASSERT_EQ(vel_create_null_locale_4(&made), 0);
    for (int32_t item = 0; item <= 75; ++item) {
        const bool is_month = item >= VEL_ITEM_MON_1 && item < VEL_ITEM_DECIMAL_POINT;
        const char *text = is_month || item >= VEL_ITEM_CALENDAR ? "null" : "";
        EXPECT_RESULT(text, is_month ? VEL_EBADLEN : 0, made, text_of(made, item));
    }
    ASSERT_EQ(vel_copy_cat(made, source.get(), VEL_ALL), 0);
    EXPECT_EQ(text_of(made, VEL_ITEM_ERA), text_of(source.get(), VEL_ITEM_ERA));
    EXPECT_NE(vel_nl_langinfo(made, VEL_ITEM_ERA), vel_nl_langinfo(source.get(), VEL_ITEM_ERA));
    vel_free_category(made, VEL_TIME);
    EXPECT_EQ(text_of(made, VEL_ITEM_ERA), "");
    EXPECT_EQ(text_of(made, VEL_ITEM_D_FMT), "");
    EXPECT_EQ(text_of(made, VEL_ITEM_CRNCYSTR), "-\xA1\xEF");
    vel_free_category(made, VEL_MONETARY);
    EXPECT_EQ(text_of(made, VEL_ITEM_CRNCYSTR), "");
    vel_free_nonshared_loc(made);
}

TEST(items, in_a_code_set_of_longer_characters) {
    const locale_ptr owner = make_two_byte();
    vel_locale *locale = owner->get();
    char a[] = "\0a\0\0", b[] = "\4B\0\0";
    vel_wchar wide_a[] = {'a', 0}, wide_b[] = {0x442, 0};
    vel_text digits[] = {{a, wide_a}, {b, wide_b}};
    locale->time.alt_digits = {2, digits};
    locale->conventions.monetary.currency_symbol = {a, wide_a};
    locale->conventions.monetary.p_cs_precedes = 1;
    ASSERT_EQ(vel::build_query_texts(locale), 0);
    EXPECT_EQ(memcmp(vel_nl_langinfo(locale, VEL_ITEM_ALT_DIGITS), "\0a\0;\4B\0\0", 8), 0);
    EXPECT_EQ(memcmp(vel_nl_langinfo(locale, VEL_ITEM_CRNCYSTR), "\0-\0a\0\0", 6), 0);
    EXPECT_EQ(vel_wc_nl_langinfo(locale, VEL_ITEM_ALT_DIGITS)[1], vel_wchar{';'});
    vel::release_query_texts(locale);
}

} // namespace

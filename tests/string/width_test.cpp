// Display columns of characters and strings.
#include <gtest/gtest.h>

#include <array>
#include <random>

#include "differential/cases.h"
#include "support/make_locale.h"
#include "vels/width.h"

namespace {

using namespace vel_test;
using differential::open_ours;
using differential::our_locale;

constexpr vel_wchar hiragana_a = 0xA4A2, half_kana = 0x8EB1; // in EUC-JP

TEST(width, of_one_character) {
    const our_locale japanese = open_ours({"ja_JP", "EUC-JP"});
    const our_locale german = open_ours({"de_DE", "ISO-8859-1"});
    const our_locale unicode = open_ours({"ja_JP", "UTF-8"});
    const our_locale arabic = open_ours({"ar_EG", "ISO-8859-6"});
    struct row {
        vel_locale *locale;
        const char *bytes;
        int32_t wide, wide_error, text, text_error;
    };
    const row rows[] = {
        {japanese.get(), "", 0, 0, 0, 0},
        {japanese.get(), "a", 1, 0, 1, 0},
        {japanese.get(), "\xA4\xA2", 2, 0, 2, 0},
        {japanese.get(), "\x8E\xB1", 1, 0, 1, 0},
        {japanese.get(), "\t", -1, VEL_EINVAL, 1, 0},
        {japanese.get(), "\xA4", -1, VEL_EINVAL, -1, VEL_EINVAL},
        {unicode.get(), "\xC2\x85", -1, VEL_EINVAL, -1, VEL_EINVAL}, // a control of two bytes
        {unicode.get(), "\xF0\xA0\x80\x8B", 2, 0, 2, 0},
        {unicode.get(), "\xFF", -1, VEL_EINVAL, -1, VEL_EINVAL},
        {german.get(), "\xE4", 1, 0, 1, 0},
        {german.get(), "\x85", -1, VEL_EINVAL, 1, 0},
        {arabic.get(), "\xA1", -1, VEL_EINVAL, 1, 0}, // unassigned
    };
    for (const row &r : rows) {
        EXPECT_RESULT(r.wide, r.wide_error, r.locale,
                      vel_wcwidth(r.locale, differential::packed(r.bytes)));
        EXPECT_RESULT(r.text, r.text_error, r.locale, vel_mbwidth(r.locale, r.bytes));
    }
    EXPECT_RESULT(-1, VEL_EFAULT, german, vel_mbwidth(german.get(), nullptr));
    EXPECT_RESULT(-1, VEL_EINVAL, german, vel_wcwidth(german.get(), 0x100));
}

TEST(width, of_strings_and_their_limits) {
    const our_locale owner = open_ours({"ja_JP", "EUC-JP"});
    vel_locale *locale = owner.get();
    const vel_wchar wide[] = {'a', hiragana_a, half_kana, '\n', 0, 'b'};
    const char text[] = "a\xA4\xA2\x8E\xB1\n\0b";
    for (auto [n, result, error] :
         {std::array{3, 4, 0}, {4, -1, VEL_EINVAL}, {-1, -1, VEL_ENOPRINT}}) {
        EXPECT_RESULT(result, error, locale, vel_wcswidth(locale, wide, n));
        EXPECT_RESULT(result, error, locale, vel_mbswidth(locale, text, n));
    }
    EXPECT_RESULT(0, 0, locale, vel_wcspwidth(locale, wide + 4, wide + 6));
    EXPECT_RESULT(0, 0, locale, vel_mbspwidth(locale, text + 6, text + 8));
    EXPECT_RESULT(-1, VEL_EBADPOS, locale, vel_wcspwidth(locale, wide + 1, wide));
    EXPECT_RESULT(-1, VEL_EBADPOS, locale, vel_mbspwidth(locale, text + 1, text));
    EXPECT_RESULT(-1, VEL_EFAULT, locale, vel_wcswidth(locale, nullptr, 0));
    EXPECT_RESULT(-1, VEL_EFAULT, locale, vel_mbswidth(locale, nullptr, 1));
    EXPECT_RESULT(-1, VEL_EFAULT, locale, vel_wcspwidth(locale, wide, nullptr));
    EXPECT_RESULT(-1, VEL_EFAULT, locale, vel_mbspwidth(locale, nullptr, text));
    EXPECT_RESULT(3, 0, locale, vel_mbspwidth(locale, text, text + 2)); // inside a character
    EXPECT_RESULT(-1, VEL_EILSEQ, locale, vel_mbswidth(locale, "a\xA4", 2));
    EXPECT_RESULT(-1, VEL_EILSEQ, locale, vel_mbspwidth(locale, text + 2, text + 4));

    std::vector<vel_wchar> block(65, 'a');
    block[64] = 0;
    EXPECT_RESULT(64, 0, locale, vel_wcswidth(locale, block.data(), 100));
    for (vel_wchar hidden : {vel_wchar{0x7F}, vel_wchar{0x01000000 + 'a'}}) {
        block[60] = hidden;
        EXPECT_RESULT(-1, VEL_EINVAL, locale, vel_wcswidth(locale, block.data(), 100));
    }

    locale->error = VEL_EIO;
    EXPECT_EQ(vel_mbspwidth(locale, text, text + 3), 3);
    EXPECT_EQ(locale->error, 0) << "cleared";
}

// Random texts, mostly of printable characters and with runs of ASCII, give what their characters
// give one by one, however they are cut.
void expect_sums(vel_locale *locale, const std::vector<vel_wchar> &printable, vel_wchar other,
                 size_t least = 1) {
    std::mt19937 random(5);
    for (int round = 0; round < 400; ++round) {
        std::vector<vel_wchar> values;
        std::string text;
        std::vector<size_t> ends = {0};
        const size_t length = random() % (round % 10 == 0 ? 3000 : 90);
        while (values.size() < length) {
            // ASCII comes first where there is any.
            const size_t among =
                random() % 4 ? printable.size() : std::min<size_t>(95, printable.size());
            for (size_t run = random() % 40; run > 0; --run) {
                values.push_back(printable[random() % among]);
            }
        }
        if (random() % 4 == 0 && !values.empty()) values[random() % values.size()] = other;
        for (vel_wchar value : values) ends.push_back((text += pack(value, least)).size());
        text.append(least, '\0');
        const size_t n = random() % (values.size() + 1);
        int32_t expected = 0;
        for (size_t i = 0; i < n && expected >= 0; ++i) {
            const int32_t one = vel_wcwidth(locale, values[i]);
            expected = one < 0 ? -1 : expected + one;
        }
        values.push_back(0);
        const int32_t count = static_cast<int32_t>(n);
        ASSERT_EQ(vel_wcswidth(locale, values.data(), count), expected) << round;
        ASSERT_EQ(vel_wcspwidth(locale, values.data(), values.data() + n), expected) << round;
        ASSERT_EQ(vel_mbswidth(locale, text.c_str(), count), expected) << round;
        const char *end = text.c_str() + ends[n];
        if (n > 0 && ends[n] - ends[n - 1] > 1) --end; // inside the last character
        ASSERT_EQ(vel_mbspwidth(locale, text.c_str(), end), expected) << round;
    }
}

TEST(width, of_a_string_is_the_sum_of_its_characters) {
    const differential::locale_case cases[] = {
        {"ja_JP", "UTF-8"}, {"ja_JP", "EUC-JP"}, {"zh_CN", "GB18030"}, {"en_US", "IBM037"}};
    for (const differential::locale_case &of : cases) {
        SCOPED_TRACE(of.name());
        const our_locale locale = open_ours(of);
        std::vector<vel_wchar> printable;
        for (vel_wchar value = 1; value < 0xF0A00000; value += value < 0x10000 ? 1 : 251) {
            if (vel_wcwidth(locale.get(), value) > 0) printable.push_back(value);
        }
        ASSERT_GT(printable.size(), 90u);
        expect_sums(locale.get(), printable, '\x05');
    }
    test_locale two_byte(2);
    for (vel_wchar value = 0; value < 0xD800; ++value) {
        two_byte.add(value, value < ' ' ? 0 : VEL_CLASS_PRINT | (value > 0x3000 ? 4096 : 0));
    }
    vel_locale *locale = two_byte.finish();
    char name[] = "full_width";
    vel::locale_class wide[] = {{1, name}};
    EXPECT_EQ(vel_wcwidth(locale, 0x3041), 1) << "without the class";
    locale->ctype.classes = wide;
    locale->ctype.class_count = 1;
    EXPECT_EQ(vel_wcwidth(locale, 0x3041), 2);
    std::vector<vel_wchar> printable = {0x100, 0x141, 0x3041, 0x4100, 0x4E00};
    for (vel_wchar value = '~'; value >= ' '; --value) printable.insert(printable.begin(), value);
    expect_sums(locale, printable, 1, 2);
}

} // namespace

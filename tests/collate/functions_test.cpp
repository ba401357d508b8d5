// The collating functions one by one: keys, errors, orders by value, Thai, and stepping.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <ranges>
#include <string_view>

#include "made_collation.h"
#include "support/host.h"
#include "vels/errors.h"
#include "vels/multibyte.h"

namespace {

using namespace vel_test;
using namespace std::string_literals;

const wide letters = {'a', 'b', 'c', 'h', 0xE4, '-'}; // indexes 1 to 6; 7 is for elements

class functions : public testing::Test {
protected:
    functions() {
        made.passes = {{2, 3, 4, 5, 6, 0x4000, 1, 0x8007},
                       {2, 0x8003, 0x8003, 3, 4, 2, 1, 4},
                       {2, 2, 3, 2, 2, 4, 2, 2}};
        made.directions = {1, 1, 2};
        made.elements = {{{'c', 'h'}, 7}};
        made.expansions = {{'a', 'b'}};
        made.max_weight = 300;
        locale = made.finish();
        thai->collate.kind = vel::collation_thai;
    }

    made_collation made{make_byte_base, letters, true};
    locale_ptr thai_set = make_single_byte(), euc_set = make_euc();
    vel_locale *locale, *thai = thai_set->get(), *euc = euc_set->get();
};

TEST_F(functions, keys_have_the_stated_bytes) {
    // An ignorable weight leaves nothing, an element has a value below every digit, weights of one
    // number are all positional, and the last pass runs backward.
    const std::pair<wide, std::string> rows[] = {
        {{'a', '-', 'b', 'c', 0}, "\2\3\2\4\2\5\1\2\3\2\x61\2\3\2\x62\2\3\2\x63\1\2\2\2\3\2\2\2\2"},
        {{'c', 'h', 0}, "\2\7\2\1\1\2\4\1\2\2"},
        {{0xE4, 0}, "\2\3\2\4\1\2\2\1\2\4"},
        {{0}, "\1\1"},
    };
    for (const auto &[text, key] : rows) {
        const int32_t length = static_cast<int32_t>(key.size());
        for (int32_t size = -1; size <= length + 10; ++size) {
            std::string out(key.size() + 20, '.');
            ASSERT_EQ(length, vel_wcsxfrm(locale, out.data(), text.data(), size));
            std::string expected = key + std::string(1, '\0');
            expected.resize(static_cast<size_t>(std::clamp(size, 0, length + 1)));
            expected.resize(out.size(), '.');
            ASSERT_EQ(expected, out) << size;
        }
    }
}

TEST_F(functions, failures_have_numbers) {
    const vel_wchar w[] = {'a', 0}, odd[] = {0x123456, 0};
    char out[8];
    EXPECT_RESULT(0, VEL_EFAULT, locale, vel_full_wcscoll(locale, w, nullptr));
    EXPECT_RESULT(0, VEL_EMIXEDLEN, locale, tuk_vel_im_mbfscoll(locale, "a", 1, "b", -1));
    EXPECT_RESULT(0, VEL_EFAULT, locale, vel_im_mbscoll(locale, nullptr, "b"));
    EXPECT_RESULT(0, VEL_EILSEQ, locale, tuk_vel_im_mbfscoll(locale, "a", -2, "b", 1));
    EXPECT_RESULT(0, VEL_EMIXEDLEN, locale, tuk_vel_is_mbfscoll_back(locale, "a", 1, "b", -1));
    EXPECT_RESULT(0, VEL_EMIXEDLEN, locale, tuk_vel_mbscmp(locale, "a", 1, "b", -1));
    EXPECT_RESULT(0, VEL_EMIXEDLEN, thai, tuk_vel_thaismoncoll(thai, "a", 1, "b", -1));
    EXPECT_RESULT(0, VEL_EILSEQ, thai, vel_full_wcscoll(thai, w, odd));
    EXPECT_RESULT(-1, VEL_EFAULT, locale, vel_wcsxfrm(locale, nullptr, w, 1));
    EXPECT_RESULT(-1, VEL_EFAULT, locale, vel_iscompchar(locale, nullptr));
    EXPECT_RESULT(-1, VEL_EBADLEN, locale, vel_nextprimweight(locale, "a", 0, out));
    EXPECT_RESULT(-1, VEL_EBADLEN, locale, vel_prevprimweight(locale, "c", 1, out));
    EXPECT_EQ(0, vel_im_mbscoll(nullptr, "a", "b"));
    EXPECT_EQ(-1, vel_getpassdirection(nullptr, 1));
    EXPECT_EQ(1, vel_getpassdirection(locale, 2));
    EXPECT_EQ(2, vel_getpassdirection(locale, 3));
    EXPECT_RESULT(-1, VEL_ENOPRINT, locale, vel_getpassdirection(locale, 0));
    EXPECT_RESULT(-1, VEL_ENOPRINT, locale, vel_getpassdirection(locale, 4));
    EXPECT_RESULT(-1, VEL_EBADMODE, thai, vel_getpassdirection(thai, 1));
    locale->collate.passes[0].direction = 3;
    EXPECT_RESULT(-1, VEL_ENOTFOUND, locale, vel_getpassdirection(locale, 1));
}

// Wherever the invalid bytes are, and whatever the strings have in common.
TEST(collating_utf8, invalid_text_is_refused) {
    made_collation made(make_utf8_base, {'a'}, true);
    made.passes = {{3, 2}};
    vel_locale *locale = made.finish();
    const std::string_view all_bad =
        "\x80 \xC3 \xC0\x80 \xE2\x82 \xE0\x80\x80 \xED\xA0\x80 "
        "\xF0\x80\x80\x80 \xF4\x90\x80\x80 \xC3\xA9\xA9 \xE2\x82\x28 \xFF";
    const auto compare = [&](const std::string &x, const std::string &y) {
        const int32_t error =
            error_of(locale, [&] { vel_im_mbscoll(locale, x.c_str(), y.c_str()); });
        // Without a terminator behind, and where no more can be read.
        const std::vector<char> p(x.begin(), x.end()), q(y.begin(), y.end());
        const int32_t n = static_cast<int32_t>(p.size()), m = static_cast<int32_t>(q.size());
        EXPECT_EQ(error, error_of(locale, [&] {
                      tuk_vel_im_mbfscoll(locale, n ? p.data() : "", n, m ? q.data() : "", m);
                  }));
        return error;
    };
    for (size_t before : {0, 1, 3, 14, 15, 16, 31, 63, 64, 130}) {
        for (const std::string &tail : {std::string(), std::string("z"), std::string(70, 'z')}) {
            const std::string start(before, 'a');
            for (const auto part : std::views::split(all_bad, ' ')) {
                const std::string b(part.begin(), part.end()), text = start + b + tail;
                for (const auto &y : {"b"s, start, start + "\xC3\xA9", text, start + "\xC3\xA8"}) {
                    ASSERT_EQ(VEL_EILSEQ, compare(text, y)) << before << b;
                    ASSERT_EQ(VEL_EILSEQ, compare(y, text)) << before << b;
                }
                EXPECT_RESULT(-1, VEL_EILSEQ, locale,
                              vel_full_mbsxfrm(locale, nullptr, text.c_str(), 0));
            }
            for (const char *good : {"", "x", "\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x98\x80"})
                ASSERT_EQ(0, compare(start + good + tail, start + tail));
        }
    }
}

TEST_F(functions, memory_is_taken_only_for_long_strings) {
    const std::string text(126, 'b'), longer(400, 'b');
    char out[10];
    test_host host;
    host.fail_allocation(1);
    EXPECT_RESULT(-1, 0, locale, vel_im_mbscoll(locale, (text + "-").c_str(), text.c_str()));
    EXPECT_FALSE(host.failed);
    EXPECT_RESULT(0, VEL_ENOMEM, locale,
                  vel_im_mbscoll(locale, ("-" + longer).c_str(), longer.c_str()));
    host.fail_allocation(1);
    EXPECT_RESULT(-1, VEL_ENOMEM, locale, vel_full_mbsxfrm(locale, out, longer.c_str(), 10));
    host.fail_allocation(1);
    EXPECT_RESULT(-1, VEL_ENOMEM, locale, vel_iscompchar(locale, longer.c_str()));
    EXPECT_TRUE(host.blocks.empty());
}

TEST_F(functions, orders_by_value) {
    const vel_wchar ab[] = {'a', 'b', 0}, abcd[] = {'a', 'b', 'c', 'd', 0},
                    high[] = {0xF0000000, 0};
    EXPECT_EQ(1, tuk_vel_wcfscmp(abcd, 2, ab, 1));
    EXPECT_EQ(-2, tuk_vel_wcfscmp(ab, -1, abcd, -1));
    EXPECT_EQ(-1, tuk_vel_wcfscmp(ab, 2, high, 1));
    EXPECT_EQ(-1, vel_wcscmp(ab, abcd));
    EXPECT_EQ(1, vel_wcscmp(high, ab));
    EXPECT_EQ(-'c', vel_wcsncmp(ab, abcd, 3));
    EXPECT_EQ(static_cast<int32_t>(0xF0000000 - 'a'), vel_wcsncmp(high, ab, 1));

    // A and 8EB1 have more bytes than z; ordering by bytes has 8EB1 below A4A2 below z.
    EXPECT_EQ(-1, vel_full_mbscmp(euc, "z", "\xA4\xA2"));
    EXPECT_EQ(-1, vel_full_mbscmp(euc, "\xA4\xA2", "\x8F\xB0\xA1"));
    EXPECT_EQ(1, vel_full_mbscmp(euc, "az", "a"));
    EXPECT_RESULT(0, VEL_EILSEQ, euc, vel_full_mbscmp(euc, "a\xA4", "ab"));
    EXPECT_EQ(1, vel_full_mbsncmp(euc, "a\xA4\xA2", "a\x8F\xB0\xA1", 2));
    EXPECT_EQ(0, vel_full_mbsncmp(euc, "a\xA4\xA2z", "a\xA4\xA2", 2));
    EXPECT_RESULT(0, VEL_EILSEQ, euc, vel_full_mbsncmp(euc, "a\xA4", "ab", 2));
    EXPECT_EQ(2, tuk_vel_mbscmp(euc, "abc", 3, "a", 1));

    // A locale without a collation.
    euc->collate.code_order = 1;
    EXPECT_EQ(-1, vel_im_mbscoll(euc, "z", "\xA4\xA2"));
    EXPECT_EQ(2, vel_im_mbscoll(euc, "z\xA4\xA2w", "z"));
    EXPECT_EQ(-1, vel_full_wcscoll(euc, ab, abcd));
    char key[8] = "......";
    EXPECT_EQ(4, vel_full_mbsxfrm(euc, key, "z\xA4\xA2w", 3));
    EXPECT_EQ(std::string("z\xA4\xA2..."), key);
}

TEST_F(functions, thai_has_its_own_order) {
    // Consonants, spaces behind, a mark, marks after all else; leading vowels after consonants.
    const std::string_view rows = "\xA1<\xA2,\xA1=\xA1  ,\xA1\xE8>\xA1  ,\xA1\xE8\xA2>\xA1\xE9\xA1,"
                                  "\xA1\xE8\xA2<\xA1\xE9\xA2,\xE0\xA1>\xA1,\xE0\xA1<\xA2,"
                                  "\xE0\xA2>\xE4\xA1,\xE0\xA1<\xE4\xA1,\xA1 \xA1>\xA1,=";
    for (const auto part : std::views::split(rows, ',')) {
        const std::string row(part.begin(), part.end());
        const size_t at = row.find_first_of("<=>");
        const std::string a = row.substr(0, at), b = row.substr(at + 1);
        const int expected = row[at] - '=';
        EXPECT_EQ(expected, sign(vel_thaismocoll(thai, a.c_str(), b.c_str()))) << row;
        EXPECT_EQ(-expected, vel_im_mbscoll(thai, b.c_str(), a.c_str())) << row;
        vel_wchar x[8] = {}, y[8] = {};
        vel_is_mbstowcs(thai, x, a.c_str(), 8);
        vel_is_mbstowcs(thai, y, b.c_str(), 8);
        EXPECT_EQ(expected, vel_full_wcscoll(thai, x, y)) << row;
    }
    const std::pair<std::string, std::string> keys[] = {
        {"\xA1\xA2", "\xA1\xA2"},           {"\xE0\xA1\xA2", "\xA1\xE0\xA2"},
        {"\xE0\xE4\xA1", "\xE4\xE0\xA1"},   {"\xA1\xE8\xA2\xEE", "\xA1\xA2\2\x8F\3\x95"},
        {"\xE0\xA1\xE7", "\xA1\xE0\3\x8E"}, {"\xE0\xE4\xE7\xA1\xE0", "\xE4\xE0\xA1\xE0\4\x8E"},
    };
    for (const auto &[text, key] : keys) {
        char out[20] = "..............";
        EXPECT_EQ(key.size(), vel_full_mbsxfrm(thai, out, text.c_str(), 20));
        EXPECT_EQ(key, out);
        EXPECT_EQ(key.size(), vel_thaismoxfrm(thai, nullptr, text.c_str(), 20));
    }
    std::string out(400, '.');
    const std::string text(300, '\xA1'), marks(300, '\xE8');
    EXPECT_EQ(300, vel_thaismoxfrm(thai, out.data(), text.c_str(), 400));
    EXPECT_EQ(text.substr(0, 256) + std::string(144, '.'), out);
    EXPECT_EQ(900, vel_thaismoxfrm(thai, out.data(), (text + marks).c_str(), 0));
    const std::pair<const char *, int> kinds[] = {{"\xA1", 2},  {"\xE0", 3},     {"\xE7", 3},
                                                  {"a", 1},     {"\xE0\xA1", 2}, {"\xA1\xE8", 3},
                                                  {"\xA1z", 1}, {"", 1}};
    for (auto [string, kind] : kinds) EXPECT_EQ(kind, vel_iscompchar(thai, string)) << string;
    char next[8];
    EXPECT_EQ(1, vel_nextprimweight(thai, "\xA1", 1, next));
    EXPECT_STREQ("\xE0\xA1", next);
    EXPECT_EQ(1, vel_prevprimweight(thai, "\xA2", 1, next));
    EXPECT_STREQ("\xE4\xA1", next);
}

// Expansions are no neighbours, elements are; what begins an element has the flag 0.
TEST_F(functions, stepping_finds_the_nearest) {
    const struct {
        const char *from, *next, *previous;
        int32_t flag = 1;
    } rows[] = {{"a", "b", "\1"},    {"b", "c", "a"},     {"c", "h", "b", 0}, {"h", "ch", "c"},
                {"ch", "none", "h"}, {"-", "\1", "none"}, {"x", "a", ""},     {"\xE4", "b", "a"}};
    for (const auto &[from, next, previous, flag] : rows) {
        for (bool ahead : {true, false}) {
            char out[16] = "none";
            const char *expected = ahead ? next : previous;
            const auto step = ahead ? vel_nextprimweight : vel_prevprimweight;
            const int32_t result = strcmp(expected, "none") == 0 ? -2 : *expected != 0;
            EXPECT_RESULT(result, 0, locale, step(locale, from, flag, out));
            EXPECT_STREQ(expected, out) << from;
        }
    }
}

TEST_F(functions, composite_characters_are_found) {
    made.elements = {{{'c', 'h'}, 7}, {{'c', 'h', 'a'}, 7}};
    made.finish();
    EXPECT_EQ(2, vel_iscompchar(locale, "ch"));
    made.elements = {{{'c'}, 7}, {{'c', 'h', 'a'}, 7}, {{'c', 'h'}, 7}};
    made.finish();
    const std::pair<const char *, int> kinds[] = {
        {"c", 3}, {"ch", 3}, {"cha", 2}, {"chab", 1}, {"", 1}};
    for (auto [string, kind] : kinds) EXPECT_EQ(kind, vel_iscompchar(locale, string)) << string;
}

} // namespace

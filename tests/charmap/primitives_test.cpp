// The stated results of the primitives that take one character or a position, and of the string
// functions where terminators, limits and null pointers decide.
#include <gtest/gtest.h>

#include "support/make_locale.h"
#include "vels/errors.h"
#include "vels/multibyte.h"

namespace {

using namespace vel_test;

class primitives : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        utf8_set = make_utf8();
        byte_set = make_single_byte();
        wide_set = make_two_byte();
    }
    static inline locale_ptr utf8_set, byte_set, wide_set;

    vel_locale *utf = utf8_set->get(), *single = byte_set->get(), *two = wide_set->get();
};

TEST_F(primitives, measure_and_convert_one_character) {
    struct row {
        vel_locale *locale;
        const char *bytes;
        int32_t n;
        int32_t length, counted_length, error; // the same for both converters
        vel_wchar value;
    };
    const row rows[] = {
        {utf, nullptr, 4, 0, 0, 0, 7},
        {utf, nullptr, 0, 0, 0, 0, 7},
        {utf, "a", 0, -1, -1, VEL_EINVAL, 7},
        {utf, "a", -2, -1, -1, VEL_EINVAL, 7},
        {utf, "a", 1, 1, 1, 0, 'a'},
        {utf, "", 1, 0, 1, 0, 0},
        {utf, "\xE3\x81\x82", 4, 3, 3, 0, 0xE38182},
        {utf, "\xE3\x81\x82", 3, 3, 3, 0, 0xE38182},
        {utf, "\xE3\x81\x82", 2, -1, -1, VEL_EINVAL, 7},
        {utf, "\xE3\x41", 4, -1, -1, VEL_EILSEQ, 7},
        {utf, "\xFF", 1, -1, -1, VEL_EILSEQ, 7},
        {utf, "\xF0\x9F\x98\x80", 4, 4, 4, 0, 0xF09F9880},
        {single, "\xE9", 1, 1, 1, 0, 0xE9},
        {single, "", 3, 0, 1, 0, 0},
        {two, "\0\0", 2, 0, 2, 0, 0},
        {two, "\0\0", 1, -1, -1, VEL_EINVAL, 7},
        {two, "\0A", 2, 2, 2, 0, 'A'},
        {two, "\xD8\x41", 2, -1, -1, VEL_EILSEQ, 7},
    };
    for (const row &r : rows) {
        SCOPED_TRACE(&r - rows);
        vel_wchar value = 7;
        EXPECT_RESULT(r.length, r.error, r.locale, vel_full_mblen(r.locale, r.bytes, r.n));
        EXPECT_RESULT(r.counted_length, r.error, r.locale,
                      tuk_vel_full_mblen(r.locale, r.bytes, r.n));
        EXPECT_RESULT(r.length, r.error, r.locale, vel_full_mbtowc(r.locale, &value, r.bytes, r.n));
        EXPECT_EQ(r.value, value);
        value = 7;
        EXPECT_RESULT(r.length, r.error, r.locale,
                      tuk_vel_full_mbtowc(r.locale, &value, r.bytes, r.n));
        EXPECT_EQ(r.value, value);
    }
}

TEST_F(primitives, convert_the_first_character_of_a_whole_string) {
    vel_wchar value = 7;
    EXPECT_RESULT(-1, VEL_EINVAL, utf, vel_full_mbtowc(utf, &value, "ab", -1));
    EXPECT_RESULT(1, 0, utf, tuk_vel_full_mbtowc(utf, &value, "ab", -1));
    EXPECT_EQ('a', static_cast<char>(value));
    EXPECT_RESULT(-1, VEL_EINVAL, utf, tuk_vel_full_mbtowc(utf, &value, "", -1));
    EXPECT_RESULT(-1, VEL_EILSEQ, utf, tuk_vel_full_mbtowc(utf, &value, "a\xFF", -1));
    EXPECT_RESULT(2, 0, two, tuk_vel_full_mbtowc(two, &value, "\0A\0\0", -1));
}

TEST_F(primitives, encode_one_value) {
    struct row {
        vel_locale *locale;
        vel_wchar value;
        int32_t length;
        std::string bytes; // on failure those that could begin a character
    };
    const row rows[] = {
        {utf, 'A', 1, "A"},
        {utf, 0, 1, std::string(1, '\0')},
        {utf, 0xE38182, 3, "\xE3\x81\x82"},
        {utf, 0xF09F9880, 4, "\xF0\x9F\x98\x80"},
        {utf, 0xFF, -1, ""},
        {utf, 0xE38141, -1, "\xE3\x81"},
        {utf, 0x4142, -1, ""},
        {utf, 0xFFFFFFFF, -1, ""},
        {two, 'A', 2, std::string("\0A", 2)},
        {two, 0x3042, 2, "\x30\x42"},
        {two, 0x10000, -1, "\x01"},
        {single, 0xE9, 1, "\xE9"},
        {single, 0x141, -1, ""},
    };
    for (const row &r : rows) {
        std::string out = "????";
        EXPECT_RESULT(r.length, r.length < 0 ? VEL_EILSEQ : 0, r.locale,
                      vel_full_wctomb(r.locale, out.data(), r.value));
        EXPECT_EQ((r.bytes + "????").substr(0, 4), out);
        out = "????";
        EXPECT_EQ(r.length, vel_sl_wctomb(r.locale, r.value, out.data()));
        EXPECT_EQ(r.locale == single ? 1 : r.length, vel_wclen(r.locale, r.value));
    }
}

TEST_F(primitives, step_forwards_and_backwards) {
    const char *text = "a\xC3\xA9\xE3\x81\x82z";
    EXPECT_RESULT(text + 3, 0, utf, vel_full_mbsnext(utf, text + 1));
    EXPECT_RESULT(text + 8, 0, utf, vel_full_mbsnext(utf, text + 7)); // beyond the terminator
    EXPECT_RESULT(nullptr, VEL_EILSEQ, utf, vel_full_mbsnext(utf, text + 2));
    EXPECT_RESULT(text + 3, 0, utf, tuk_vel_full_mbsnext(utf, text + 1, 2));
    EXPECT_RESULT(nullptr, VEL_EINVAL, utf, tuk_vel_full_mbsnext(utf, text + 1, 1));
    EXPECT_RESULT(nullptr, VEL_EINVAL, utf, tuk_vel_full_mbsnext(utf, text, 0));
    EXPECT_RESULT(nullptr, VEL_EILSEQ, utf, tuk_vel_full_mbsnext(utf, text + 2, 4));

    EXPECT_RESULT(text + 6, 0, utf, vel_full_mbsprev(utf, text, text + 7));
    EXPECT_RESULT(text, 0, utf, vel_full_mbsprev(utf, text, text + 1));
    EXPECT_RESULT(nullptr, VEL_EINVAL, utf, vel_full_mbsprev(utf, text, text + 5));
    EXPECT_RESULT(nullptr, VEL_EBADPOS, utf, vel_full_mbsprev(utf, text, text));
    EXPECT_RESULT(nullptr, VEL_EBADPOS, utf, vel_full_mbsprev(utf, text + 1, text));
    EXPECT_RESULT(nullptr, VEL_EILSEQ, utf, vel_full_mbsprev(utf, text + 2, text + 7));
    EXPECT_RESULT(text + 4, 0, single, vel_full_mbsprev(single, text, text + 5));
}

TEST_F(primitives, find_a_character_by_its_number) {
    const char *text = "a\xC3\xA9z\xFF";
    EXPECT_RESULT(text, 0, utf, vel_full_getmbsi(utf, text, 0));
    EXPECT_RESULT(text + 3, 0, utf, vel_full_getmbsi(utf, text, 2));
    EXPECT_RESULT(text + 2, 0, single, vel_full_getmbsi(single, text, 2));
    EXPECT_RESULT(nullptr, VEL_EILSEQ, utf, vel_full_getmbsi(utf, text, 4));
    EXPECT_RESULT(nullptr, VEL_ENOPRINT, utf, vel_full_getmbsi(utf, text, -1));
    EXPECT_RESULT(nullptr, VEL_ENOPRINT, single, vel_full_getmbsi(single, nullptr, -1));
    EXPECT_RESULT(nullptr, VEL_EFAULT, utf, vel_full_getmbsi(utf, nullptr, 0));
}

TEST_F(primitives, replace_a_character_by_its_number) {
    struct row {
        vel_locale *locale;
        const char *before;
        int32_t index;
        const char *character, *after;
        int32_t error;
    };
    const row rows[] = {
        {utf, "abz", 1, "\xE3\x81\x82x", "a\xE3\x81\x82z", 0},
        {utf, "a\xE3\x81\x82z", 1, "b", "abz", 0},
        {utf, "abc", 2, "d", "abd", 0},
        {single, "abz", 1, "\xE9", "a\xE9z", 0},
        {utf, "abc", 1, "\xFF", "abc", VEL_EILSEQ},
        {utf, "ab\xFF", 0, "x", "ab\xFF", VEL_EILSEQ},
        {utf, "abc", 1, nullptr, "abc", VEL_EFAULT},
        {utf, "abc", -1, "x", "abc", VEL_EFAULT},
        {single, "abc", -1, "x", "abc", VEL_ENOPRINT},
        {single, "abc", 0, nullptr, "abc", VEL_EFAULT},
    };
    for (const row &r : rows) {
        SCOPED_TRACE(&r - rows);
        std::string text = std::string(r.before) + std::string(8, '\0');
        char *position = nullptr;
        EXPECT_EQ(r.error, error_of(r.locale, [&] {
                      position = vel_full_putmbsi(r.locale, text.data(), r.index, r.character);
                  }));
        EXPECT_STREQ(r.after, text.c_str());
        if (r.error == 0) {
            ASSERT_NE(nullptr, position);
            EXPECT_EQ(r.character[0], *position);
        }
    }
    EXPECT_RESULT(nullptr, VEL_EFAULT, utf, vel_full_putmbsi(utf, nullptr, 0, "x"));
}

TEST_F(primitives, write_and_recognise_terminators) {
    char out[4] = {'?', '?', '?', '?'};
    EXPECT_EQ(2, vel_mbsterm(two, out));
    EXPECT_EQ(std::string("\0\0??", 4), std::string(out, 4));
    EXPECT_EQ(2, vel_ismbsterm(two, "\0\0"));
    EXPECT_EQ(0, vel_ismbsterm(two, "\0A"));
    EXPECT_EQ(0, vel_ismbsterm(two, "A\0"));
}

TEST_F(primitives, measure_strings) {
    EXPECT_RESULT(0, 0, utf, vel_mbsbytes(utf, nullptr));
    EXPECT_RESULT(0, VEL_EILSEQ, utf, vel_mbsbytes(utf, "a\xFF"));
    EXPECT_RESULT(5, 0, utf, vel_mbsbytes(utf, "a\xE3\x81\x82"));
    EXPECT_RESULT(6, 0, two, vel_mbsbytes(two, "\0A\x30\x42\0\0"));

    struct row {
        vel_locale *locale;
        const char *bytes;
        int32_t n, count;
    };
    const row rows[] = {{utf, "a\xE3\x81\x82", 3, -1},
                        {utf, "a\0b", 3, 3},
                        {utf, "", 0, 0},
                        {utf, "a", -2, -1},
                        {utf, nullptr, -1, -1},
                        {single, "a\0\xFF", 3, 3},
                        {two, "\0\0\0A", 4, 2},
                        {two, "\0A\0\0", 3, -1}};
    for (const row &r : rows) {
        SCOPED_TRACE(&r - rows);
        EXPECT_RESULT(r.count, r.count < 0 ? VEL_EILSEQ : 0, r.locale,
                      tuk_vel_im_mbfslen(r.locale, r.bytes, r.n));
    }
    const vel_wchar wide[] = {'a', 0xFFFFFFFF, 0};
    EXPECT_EQ(2, vel_wcslen(wide));
    EXPECT_EQ(12, vel_wcsbytes(wide));
}

TEST_F(primitives, step_over_long_null_characters_by_the_shortest_length) {
    // One character of one byte, and the null character of two.
    vel::vel_trie *trie = vel::vel_trie_create(2, 0, nullptr);
    const vel::vel_mbkey keys[] = {{1, {'a'}}, {2, {0, 0}}};
    for (const vel::vel_mbkey &key : keys) vel::vel_trie_insert(trie, &key, nullptr);
    vel_locale odd{};
    odd.ctype.characters = vel::seal(trie);
    EXPECT_RESULT(4, 0, &odd, tuk_vel_im_mbfslen(&odd, "a\0\0\0", 4));
    EXPECT_RESULT(1, 0, &odd, vel_im_mbslen(&odd, "a\0"));
    vel::release_table(odd.ctype.characters);
    vel::vel_trie_free(trie);
}

TEST_F(primitives, keep_the_particulars_of_counted_decoding) {
    struct row {
        vel_locale *locale;
        const char *bytes;
        int32_t n, room, result, stored;
    };
    const row rows[] = {
        {utf, "abc", 3, -5, 1, 0},        {utf, "abc", 0, 10, 1, 1},
        {utf, "abc", -2, 10, 1, 1},       {utf, "abc", -1, 0, 0, 0},
        {utf, "a\xC3\xA9", 2, 10, -1, 1}, {utf, "\xC3\xA9", 0, 10, -1, 0},
        {utf, "a\xC3\xA9", 2, 1, 2, 1},   {two, "\0A\0\0\0B", 6, 9, 3, 3},
    };
    for (const row &r : rows) {
        SCOPED_TRACE(&r - rows);
        std::vector<vel_wchar> out(6, 0xDEADBEEF);
        EXPECT_RESULT(r.result, r.result < 0 ? VEL_EILSEQ : 0, r.locale,
                      tuk_vel_im_mbfstowcfs(r.locale, out.data(), r.bytes, r.n, r.room));
        EXPECT_EQ(6 - r.stored, std::count(out.begin(), out.end(), 0xDEADBEEF));
    }
    std::vector<vel_wchar> out(4, 7);
    EXPECT_EQ(3, tuk_vel_is_mbfstowcfs(single, out.data(), "a\0\xFF", 3, 4));
    EXPECT_EQ((std::vector<vel_wchar>{'a', 0, 0xFF, 7}), out);
    EXPECT_EQ(0, tuk_vel_is_mbfstowcfs(single, out.data(), "a", 1, -1));
}

TEST_F(primitives, encode_strings_of_a_single_byte_set_without_and_with_a_check) {
    const vel_wchar wide[] = {'a', 0x1E9, 'b', 0};
    std::string out(8, '?');
    EXPECT_RESULT(4, 0, single, vel_full_wcstombs(single, out.data(), wide, 8));
    EXPECT_EQ(std::string("a\xE9?b\0???", 8), out); // what is too long leaves a gap
    out.assign(8, '?');
    EXPECT_RESULT(4, 0, single, tuk_vel_full_wcstombs(single, out.data(), wide, 3, 4));
    EXPECT_EQ("a\xE9?b????", out);
    EXPECT_RESULT(1, 0, single, vel_full_wcstombs(single, out.data(), wide, 2));
    for (auto encode : {vel_is_wcstombs, is_wcstombs}) {
        out.assign(8, '?');
        EXPECT_RESULT(-1, VEL_EILSEQ, single, encode(single, out.data(), wide, 8));
        EXPECT_EQ("a???????", out);
    }
}

TEST_F(primitives, compare_wide_and_multibyte_strings) {
    const vel_wchar wide[] = {'a', 0xC3A9, 'z', 0}, bytes[] = {'a', 0xE9, 0};
    const std::pair<const char *, int32_t> rows[] = {
        {"a\xC3\xA9z", 3}, {"a", 1}, {"", 0}, {"x", -1}, {"a\xC3\xA9zc", -1}};
    for (auto [text, result] : rows)
        EXPECT_RESULT(result, 0, utf, vel_compare_wc_to_mb(utf, wide, text));
    EXPECT_RESULT(-1, VEL_EILSEQ, utf, vel_compare_wc_to_mb(utf, wide, "a\xFF"));
    EXPECT_EQ(2, vel_compare_wc_to_mb(single, bytes, "a\xE9"));
}

} // namespace

// Integers and floating numbers in the text of real locales.
#include <cerrno>
#include <cmath>
#include <cstring>
#include <random>

#include "numeric/formatting.h"

namespace {

class conversions : public formatting {
protected:
    // '_' stands for the thousands separator of the locale.
    static wide_text widen(const vel_locale *locale, const std::string &ascii) {
        const vel::number_marks &marks = locale->numeric_marks;
        wide_text wide;
        for (vel_wchar value : formatting::widen(locale, ascii)) {
            if (value != vel::value_of(locale, '_'))
                wide.push_back(value);
            else
                wide.insert(wide.end(), marks.thousands_sep,
                            marks.thousands_sep + marks.thousands_sep_length);
        }
        return wide;
    }
    static std::string narrow(const vel_locale *locale, const std::string &ascii) {
        return formatting::narrow(widen(locale, ascii));
    }
};

struct integer_case {
    const char *text; // behind two blanks
    int32_t base;
    bool grouped;
    int32_t value;
    size_t used; // characters, '_' is one
    int32_t error = 0, host_error = 0;
};

constexpr int32_t top = INT32_MAX, bottom = INT32_MIN;
constexpr integer_case integer_cases[] = {{"1_234_567", 10, true, 1234567, 9},
                                          {"12_34", 10, true, top, 0, VEL_EINVAL},
                                          {"1234", 10, true, top, 0, VEL_EINVAL},
                                          {"1_234 ", 10, true, top, 0, VEL_EINVAL},
                                          {"1_23x_456", 10, true, 123, 4},
                                          {"1_234", 10, false, 1, 1},
                                          {"", 10, true, 0, 0},
                                          {"--1", 10, false, 0, 0},
                                          {"abc", 10, false, 0, 0},
                                          {"0x1F", 0, false, 31, 4},
                                          {"0X1f", 16, false, 31, 4},
                                          {"0xg", 16, false, 0, 1},
                                          {"078", 0, false, 7, 2},
                                          {"zZ", 36, false, 35 * 37, 2},
                                          {"12", 1, false, 0, 0, 0, EINVAL},
                                          {"12", -1, true, 0, 0, 0, EINVAL},
                                          {"2147483648", 10, false, top, 10, 0, ERANGE},
                                          {"-2147483648", 10, false, bottom, 11},
                                          {"-2_147_483_649", 10, true, bottom, 14, 0, ERANGE},
                                          {"99999999999999999999", 10, false, top, 20, 0, ERANGE}};

TEST_F(conversions, read_signed_integers) {
    // A separator of three bytes, one of one byte, and digits that are not ASCII.
    for (const char *name : {"fr_fr.utf8", "de_de.utf8", "ja_jp.sjis", "en_us.ibm037"}) {
        vel_locale *locale = load(name);
        for (const integer_case &each : integer_cases) {
            errno = 0;
            SCOPED_TRACE(std::string(name) + ": " + each.text);
            const wide_text wide = widen(locale, std::string("  ") + each.text);
            vel_wchar *wide_end;
            EXPECT_RESULT(each.value, each.error, locale,
                          vel_wcstol(locale, wide.data(), &wide_end, each.base, each.grouped));
            EXPECT_EQ(each.error ? 0 : each.host_error, errno);
            const size_t used = each.used + 2;
            EXPECT_EQ(wide.data() + used, wide_end);

            const std::string bytes = formatting::narrow(wide);
            const std::string before =
                narrow(locale, ("  " + std::string(each.text)).substr(0, used));
            const bool is_over = each.host_error == ERANGE;
            char *end;
            EXPECT_RESULT(is_over ? top : each.value, is_over ? VEL_ENONUM : each.error, locale,
                          vel_mbstol(locale, bytes.c_str(), &end, each.base, each.grouped));
            EXPECT_EQ(bytes.c_str() + before.size(), end);
        }
    }
}

TEST_F(conversions, read_unsigned_integers) {
    vel_locale *locale = load("de_ch.utf8");
    for (const char *text : {"4294967296", "-4294967296", "4_294_967_295", "-1"}) {
        const bool grouped = strchr(text, '_');
        const int32_t error = strlen(text) < 10 || grouped ? 0 : VEL_ENONUM;
        const std::string bytes = narrow(locale, text);
        EXPECT_RESULT(UINT32_MAX, error, locale,
                      vel_mbstoul(locale, bytes.c_str(), nullptr, 10, grouped));
        const wide_text wide = widen(locale, text);
        EXPECT_RESULT(UINT32_MAX, 0, locale,
                      vel_wcstoul(locale, wide.data(), nullptr, 10, grouped));
    }
}

TEST_F(conversions, refuse_what_is_no_text) {
    vel_locale *locale = load("de_de.utf8");
    for (const char *text : {"", "\xFF", "12\xFF", "12 x\xC3"}) {
        EXPECT_RESULT(top, VEL_ENONUM, locale, vel_mbstol(locale, text, nullptr, 10, 0));
        EXPECT_RESULT(UINT32_MAX, VEL_ENONUM, locale, vel_mbstoul(locale, text, nullptr, 10, 1));
        EXPECT_RESULT(2147483647.0, VEL_ENONUM, locale, vel_mbstod(locale, text, nullptr, 0));
    }
    // 255 characters are the most that are grouped; a character outside ASCII ends the digits.
    const std::string zeros = std::string(252, '0') + ".000";
    EXPECT_RESULT(top, VEL_EINVAL, locale, vel_mbstol(locale, zeros.c_str(), nullptr, 10, 1));
    std::string groups = "000";
    for (int i = 0; i < 63; ++i) groups += ".000";
    EXPECT_RESULT(0, 0, locale, vel_mbstol(locale, groups.c_str(), nullptr, 10, 1));
    groups = "0." + groups;
    EXPECT_RESULT(top, VEL_EINVAL, locale, vel_mbstol(locale, groups.c_str(), nullptr, 10, 1));
    EXPECT_RESULT(7, 0, locale, vel_mbstol(locale, "7\xE2\x82\xAC", nullptr, 10, 0));
}

struct floating_case {
    const char *text;
    bool grouped;
    double value;
    size_t used;
    int32_t error = 0;
};

// The point of the locales is '.' here.
constexpr floating_case floating_cases[] = {
    {".5", false, 0.5, 2},   {"1_2_345", true, 0.0, 0},     {".", false, 0.0, 0, VEL_ENOCONV},
    {"1e+", false, 1.0, 1},  {"1_234_ 5", true, 0.0, 0},    {"-.e5", true, 0.0, 0, VEL_ENOCONV},
    {"inf", false, 0.0, 0},  {" \t+12.", false, 12.0, 6},   {"1234.5", true, 0.0, 0, VEL_EINVAL},
    {"12_34", true, 0.0, 0}, {"-1.5E-1x", false, -0.15, 7}, {"1_234_567.25", true, 1234567.25, 12},
    {"0x10", false, 0.0, 1}, {"1_234.5_6", true, 1234.5, 7}};

TEST_F(conversions, read_floating_numbers) {
    for (const char *name : {"de_ch.utf8", "en_us.ibm037"}) {
        vel_locale *locale = load(name);
        for (const floating_case &each : floating_cases) {
            SCOPED_TRACE(std::string(name) + ": " + each.text);
            const wide_text wide = widen(locale, each.text);
            vel_wchar *wide_end;
            EXPECT_RESULT(each.value, each.error, locale,
                          vel_wcstod(locale, wide.data(), &wide_end, each.grouped));
            EXPECT_EQ(wide.data() + each.used, wide_end);
            const std::string bytes = narrow(locale, each.text);
            const std::string before = narrow(locale, std::string(each.text).substr(0, each.used));
            char *end;
            EXPECT_RESULT(each.value, each.error, locale,
                          vel_mbstod(locale, bytes.c_str(), &end, each.grouped));
            EXPECT_EQ(bytes.c_str() + before.size(), end);
        }
        EXPECT_TRUE(std::signbit(vel_mbstod(locale, narrow(locale, "-0").c_str(), nullptr, 0)));
    }
}

TEST_F(conversions, report_floating_numbers_out_of_range) {
    vel_locale *locale = load("en_us.utf8");
    const std::string long_one = "1." + std::string(2000, '0') + "e-99999999999999999999";
    for (const char *text : {"1e400", "-1e400", "1e-400", "3e-310", long_one.c_str()}) {
        EXPECT_RESULT(2147483647.0, VEL_ENONUM, locale, vel_mbstod(locale, text, nullptr, 0));
        EXPECT_RESULT(strtod(text, nullptr), 0, locale,
                      vel_wcstod(locale, widen(locale, text).data(), nullptr, 0));
        EXPECT_EQ(ERANGE, errno) << text;
    }
}

TEST_F(conversions, take_the_conventions_of_money) {
    vel_locale *locale = load("de_at.utf8"); // '.' groups numbers, U+202F or U+00A0 money
    const vel::number_marks &marks = locale->monetary_marks;
    ASSERT_NE(marks.thousands_sep[0], locale->numeric_marks.thousands_sep[0]);
    const vel_wchar money[] = {'-', '1', marks.thousands_sep[0], '2', '3', '4', ',', '5', 0};
    EXPECT_RESULT(-1234.5, 0, locale, vel_wcstod_num_mon(locale, money, nullptr, 1, 1));
    EXPECT_RESULT(-1.0, 0, locale, vel_wcstod_num_mon(locale, money, nullptr, 1, 0));
}

TEST_F(conversions, work_in_a_null_locale) {
    vel_locale *locale = load("");
    const vel_wchar text[] = {'-', '1', '.', '5', 0};
    EXPECT_RESULT(-1.5, 0, locale, vel_wcstod(locale, text, nullptr, 1));
    EXPECT_RESULT(-1, 0, locale, vel_wcstol(locale, text, nullptr, 10, 0));
    vel_wchar out[34];
    vel_ltowcs(locale, out, 34, -1234567, 10, 1);
    EXPECT_EQ(widen(locale, "-1234567"), wide_text(out, out + 9));
    char bytes[40];
    EXPECT_RESULT(-1, VEL_EILSEQ, locale, vel_ltombs(locale, bytes, 40, 1, 10, 0));
    EXPECT_RESULT(top, VEL_ENONUM, locale, vel_mbstol(locale, "1", nullptr, 10, 0));
}

struct written_case {
    const char *text;            // '_' is the separator
    int32_t value, base, length; // 0: no grouping
};

constexpr written_case written_cases[] = {
    {"", 5, 1, 0},         {"FF_FFF", 0xFFFFF, 16, 64},
    {"", 1, 10, -1},       {"1_234_567", 1234567, 10, 10},
    {"", -123, 10, 5},     {"-2147483648", INT32_MIN, 10, 0},
    {"", 1234567, 10, 9},  {"-2_147_483_648", INT32_MIN, 10, 64},
    {"-123", -123, 10, 6}, {"-10000000000000000000000000000000", INT32_MIN, 2, 0},
    {"ZZ", 35 * 37, 36, 0}};

TEST_F(conversions, write_integers) {
    for (const char *name : {"de_de.utf8", "ja_jp.sjis", "en_us.ibm037"}) {
        vel_locale *locale = load(name);
        for (const written_case &each : written_cases) {
            SCOPED_TRACE(std::string(name) + ": " + each.text);
            wide_text wide = widen(locale, each.text);
            wide_text out(64, each.length < 0 ? 0u : 'x');
            vel_ltowcs(locale, out.data(), each.length, each.value, each.base, each.length != 0);
            EXPECT_EQ(wide, wide_text(out.begin(), out.begin() + static_cast<long>(wide.size())));
            std::string bytes = narrow(locale, each.text);
            char text[64] = {};
            EXPECT_RESULT(
                static_cast<int32_t>(bytes.size()), 0, locale,
                vel_ltombs(locale, text, each.length, each.value, each.base, each.length != 0));
            EXPECT_EQ(bytes, text);
        }
    }
    char text[16]; // the room is in bytes
    EXPECT_EQ(0, vel_ltombs(load("fr_fr.utf8"), text, 13, 1234567, 10, 1));
    EXPECT_STREQ("", text);
}

TEST_F(conversions, read_back_what_they_write) {
    std::mt19937 random(7);
    const vel_grouping groupings[] = {{1, {3}}, {2, {3, 2}}, {3, {1, 2, -1}}, {1, {1}}, {0, {}}};
    for (const char *name : {"en_in.utf8", "fr_fr.utf8", "en_us.ibm037"}) {
        vel_locale *locale = load(name);
        const vel_grouping own = locale->conventions.numeric.grouping;
        for (int i = 0; i < 20000; ++i) {
            const int32_t base = i % 2 ? 10 : 2 + static_cast<int32_t>(random() % 35);
            const uint32_t value = static_cast<uint32_t>(random()) >> random() % 32;
            const int32_t grouped = random() % 4 != 0;
            locale->conventions.numeric.grouping = i % 3 ? own : groupings[random() % 5];
            char text[256];
            char *end;
            int32_t n = vel_ultombs(locale, text, sizeof text, value, base, grouped);
            ASSERT_GT(n, 0);
            ASSERT_EQ(value, vel_mbstoul(locale, text, &end, base, grouped)) << text;
            ASSERT_EQ(text + n, end);
            char exact[256]; // without room to spare
            ASSERT_EQ(n, vel_ultombs(locale, exact, n + 1, value, base, grouped)) << text;
            ASSERT_STREQ(text, exact);
            const int32_t number = static_cast<int32_t>(value);
            vel_wchar wide[256];
            vel_ltowcs(locale, wide, 256, number, base, grouped);
            ASSERT_EQ(number, vel_wcstol(locale, wide, nullptr, base, grouped)) << number;
            if (base != 10) continue;
            ASSERT_EQ(value, vel_mbstod(locale, text, &end, grouped)) << text;
            ASSERT_EQ(text + n, end);
            const std::string format = narrow(locale, grouped ? "%'u" : "%u");
            for (int32_t room : {256, n + 1}) {
                ASSERT_EQ(n, vel_mbsfnum(locale, exact, room, format.c_str(), value));
                ASSERT_STREQ(text, exact);
            }
        }
        locale->conventions.numeric.grouping = own;
    }
}

} // namespace

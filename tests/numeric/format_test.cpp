// The formatting of numbers and text.
#include <cmath>
#include <limits>

#include "numeric/formatting.h"

namespace {

constexpr char english[] = "en_us.utf8", ebcdic[] = "en_us.ibm-037";

// The common flags and widths are held against the host's for all locales elsewhere.
TEST_F(formatting, integers) {
    const format_row<int32_t> short_rows[] = {
        {"%q", 7, "13"},        {"%.d", 0, "0"},        {"%b", 5, "101"},
        {"%#o", 8, "010"},      {"%ld", 42, "42"},      {"%x", -255, "-ff"},
        {"%hu", -1, "65535"},   {"%d", -7, "-7", ""},   {"%#.5o", 8, "00010"},
        {"%#X", -255, "-0XFF"}, {"%05d", -42, "-0042"}, {"a%%b%ic", 7, "a%b7c"}};
    const format_row<int32_t> middle_rows[] = {
        {"%'10d|", 1234567, " 1\u202F234\u202F567|", "fr_fr.utf8"},
        {"%'+10d!", 12345, "   +12,345!", ebcdic},
        {"%8.5d", -42, "  -00042"},
        {"%'012d", 1234567, "0001,234,567"},
        {"%hd", 0x18000, "-32768"},
        {"%#06x", 0xAB, "000xab", ebcdic},
        {"%+'5d", 1234, "+1234", ""},
        {"%#08x|", 255, "00000xff|"}};
    check_formats(short_rows);
    check_formats(middle_rows);
    EXPECT_EQ(format(english, "%040d", 7), std::string(39, '0') + "7");
    EXPECT_EQ(format(english, "%*d|%-*d|%.*d|%*d", 4, 1, 3, 2, 3, 3, -4, 4), "   1|2  |003|4");
}

TEST_F(formatting, doubles) {
    const double infinite = std::numeric_limits<double>::infinity();
    const format_row<double> short_rows[] = {
        {"%100f", 1, "error 14"},           {"%.0E", 1e-123, "1E-123"},
        {"%9f|", -infinite, "-Inf|"},       {"%6f|", infinite, "   Inf|"},
        {"%+f", -std::nan(""), "NaN"},      {"%e", 1e100, "1.000000e+10"},
        {"%-6f|", infinite, "Inf   |"},     {"%.2147483647g", 0.5, "0.5"},
        {"%'e", 12345, "1.234500e+04"},     {"%f", infinite, "Inf", ebcdic},
        {"%.2147483647f", 1, "error 14"},   {"%.2147483647e", 1, "error 14"},
        {"%'.2f", -1234.5, "-1234.50", ""}, {"%#.2147483647g", 0.5, "error 14"}};
    const format_row<double> long_rows[] = {{"%99.1f", 2.5, std::string(96, ' ') + "2.5"},
                                            {"%120f", infinite, std::string(117, ' ') + "Inf"}};
    check_formats(short_rows);
    check_formats(long_rows);
}

TEST_F(formatting, text) {
    vel_locale *japanese = load("ja_jp.utf8");
    const wide_text kanji = widen(japanese, "\u65E5\u672C");
    EXPECT_EQ(format("ja_jp.utf8", "%6s|%-6s|%06s|%.1s", "\u65E5\u672C", "\u65E5", "ab", "xyz"),
              "  \u65E5\u672C|\u65E5    |0000ab|x");
    EXPECT_EQ(format("ja_jp.utf8", "%ls%5ls|", kanji.data(), kanji.data()),
              "\u65E5\u672C \u65E5\u672C|");
    EXPECT_EQ(format("ja_jp.utf8", "%c%3lc%-3c|%c", "\u65E5", kanji[0], "x", nullptr),
              "\u65E5 \u65E5x  |");
    EXPECT_EQ(format(english, "[%c%lc%2c]", "", 0, ""), "[  ]");
    EXPECT_EQ(format("en_us.8859-1", "%ls|", wide_text{0x41, 0}.data()), "A|");
    EXPECT_EQ(format(english, "%s", "\xC3"), "error 1");
    EXPECT_EQ(format(english, "%s", nullptr), "error 2");
    EXPECT_EQ(format(english, "%2147483647s", "x"), "error 14");
    char bytes[20];
    EXPECT_EQ(vel_mbsfnum(load("en_us.8859-1"), bytes, 20, "%ls", kanji.data()), -1);
    EXPECT_EQ(error_of(load("en_us.8859-1")), VEL_EILSEQ);
}

TEST_F(formatting, malformed_formats) {
    const std::pair<const char *, const char *> rows[] = {
        {"%", "error 15"},    {"%5", "error 15"},    {"%l", "error 15"},   {"%k", "error 22"},
        {"%F", "error 22"},   {"%1$d", "error 22"},  {"%lld", "error 22"}, {"%.", "error 45"},
        {"%.'d", "error 45"}, {"%0-5d", "error 22"}, {"%\xC3", "error 1"}, {"\x80", "error 1"}};
    for (auto [text, expected] : rows) {
        char bytes[50];
        vel_locale *locale = load(english);
        EXPECT_EQ(vel_mbsfnum(locale, bytes, 50, text, 1), -1) << text;
        EXPECT_EQ("error " + std::to_string(error_of(locale)), expected) << text;
    }
    for (const char *huge : {"%2147483647d", "%-99999999999d", "%.2147483647d", "%'0999999999d"})
        EXPECT_EQ(format(english, huge, 1), "error 14") << huge;
    const std::string whole = "%-+'12.5ld";
    for (size_t cut = 1; cut < whole.size(); ++cut) {
        const std::string result = format(english, whole.substr(0, cut), 1);
        EXPECT_TRUE(result == "error 15" || result == "error 45") << cut << " " << result;
    }
}

TEST_F(formatting, multibyte_copies) {
    vel_locale *utf8 = load(english);
    vel_locale *latin = load("en_us.8859-1");
    const wide_text euro = widen(utf8, "a\u20AC");
    char bytes[8];
    EXPECT_EQ(vel_get_mbstring(utf8, bytes, euro.data(), 5), 4);
    EXPECT_STREQ(bytes, "a\u20AC");
    EXPECT_EQ(vel_get_mbstring(utf8, bytes, euro.data(), 4), -1);
    EXPECT_EQ(error_of(utf8), VEL_E2BIG);
    EXPECT_EQ(vel_get_mbstring(utf8, bytes, euro.data() + 2, 0), -1);
    EXPECT_EQ(vel_get_mbstring(utf8, bytes, wide_text{0xFFFFFFFF, 0}.data(), 8), -1);
    EXPECT_EQ(error_of(utf8), VEL_EILSEQ);
    EXPECT_EQ(vel_get_mbstring(latin, bytes, wide_text{0xE4, 0x85, 0}.data(), 3), 2);
    EXPECT_STREQ(bytes, "\xE4\x85");
    EXPECT_EQ(vel_get_mbstring(latin, bytes, euro.data(), 8), -1);
    EXPECT_EQ(error_of(latin), VEL_EILSEQ);
}

} // namespace

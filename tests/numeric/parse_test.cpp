// The parsing of numbers and text. What formatting writes is read back for all locales elsewhere.
#include <span>

#include "numeric/formatting.h"

namespace {

constexpr char german[] = "de_de.utf8";
constexpr char english[] = "en_us.utf8";

class parsing : public formatting {
protected:
    // Reads by both faces, which agree; gives the count and the error, the target of the last.
    template <typename... Targets>
    std::string parse(const char *locale_name, const std::string &input, const std::string &text,
                      Targets... targets) {
        vel_locale *locale = load(locale_name);
        int32_t count = vel_wcspnum(locale, widen(locale, input).data(), widen(locale, text).data(),
                                    targets...);
        int32_t error = error_of(locale);
        if (*locale_name) {
            EXPECT_EQ(vel_mbspnum(locale, narrow(widen(locale, input)).c_str(),
                                  narrow(widen(locale, text)).c_str(), targets...),
                      count);
            EXPECT_EQ(error_of(locale), error) << input;
        }
        return std::to_string(count) + (error ? " error " + std::to_string(error) : "");
    }
};

constexpr int32_t untouched = -77;

TEST_F(parsing, integers) {
    struct row {
        const char *input, *format, *result;
        int32_t value = untouched;
        const char *locale = english;
    };
    const auto check = [&](std::span<const row> rows) {
        for (const row &each : rows) {
            int32_t value = untouched;
            EXPECT_EQ(parse(each.locale, each.input, each.format, &value), each.result)
                << each.input << " by " << each.format;
            EXPECT_EQ(value, each.value) << each.input << " by " << each.format;
        }
    };
    const row short_rows[] = {
        {"+7", "%i", "1", 7},          {"12345", "%3d", "1", 123},    {"13", "%q", "1", 7},
        {"-1", "%u", "0 error 22"},    {"0x", "%#x", "1", 0},         {"5", "%k", "-1 error 22"},
        {"789", "%o", "1", 7},         {"5", "%5", "-1 error 15"},    {"fF", "%x", "1", 255},
        {"5", "%.", "-1 error 45"},    {"0xff", "%x", "1", 0},        {"ffffffff", "%x", "1", -1},
        {"1012", "%b", "1", 5},        {"x", "y%d", "-1 error 22"},   {"1,234", "%d", "1", 1},
        {"1234,", "%'d,", "1", 1234},  {"", "%d", "0 error 46"},      {"4294967295", "%u", "1", -1},
        {"-", "%d", "0 error 46"},     {"-000xff", "%#x", "1", -255}, {"5 6", "%*d %d", "1", 6},
        {"12,34", "%'d", "0 error 7"}, {" -42x", "%dx", "1", -42},    {"-12 ", "%d ", "1", -12, ""},
        {"a  \t5", "a %d", "1", 5},    {"5", "%2.1c", "-1 error 22"}, {"100%", "%d%%", "1", 100}};
    const row middle_rows[] = {
        {"0001,234", "%'d", "1", 1234},       {"5", "%d%", "-1 error 15", 5},
        {"5", "%dx", "-1 error 22", 5},       {"1234,567", "%'d", "0 error 7"},
        {"2147483648", "%d", "0 error 6"},    {"1,234,567", "%'d", "1", 1234567},
        {"-2147483648", "%d", "1", INT32_MIN}};
    const row long_rows[] = {{"99999999999999999999999", "%u", "0 error 6"},
                             {"-1,234", "%'d", "1", -1234, "en_us.ibm-037"},
                             {"12,34,567", "%'d", "1", 1234567, "bn_bd.utf8"},
                             {"1,234,567", "%'d", "0 error 7", untouched, "bn_bd.utf8"}};
    check(short_rows);
    check(middle_rows);
    check(long_rows);
    int16_t shorts[3] = {1, 2, 3};
    EXPECT_EQ(parse(english, "-32768 ffff 32768", "%hd%hx%hd", shorts, shorts + 1, shorts + 2),
              "2 error 6");
    EXPECT_EQ(shorts[0], INT16_MIN);
    EXPECT_EQ(shorts[1], -1);
    EXPECT_EQ(shorts[2], 3);
}

TEST_F(parsing, doubles) {
    const struct {
        const char *locale, *input, *format, *result;
        double value = untouched;
    } rows[] = {{german, " -1,5e3x", "%fx", "1", -1500}, {german, "1.234,5", "%'f", "1", 1234.5},
                {german, "1.23,4", "%'f", "0 error 45"}, {german, "1234,5", "%'f", "0 error 7"},
                {german, "1,2345", "%4f", "1", 1.23},    {english, "1e400", "%g", "0 error 6"},
                {english, "x", "%e", "0 error 45"},      {english, ".", "%f", "0 error 45"},
                {english, "1 2.5", "%*f %lf", "1", 2.5}, {"", "2.5", "%f", "1", 2.5}};
    for (const auto &row : rows) {
        double value = untouched;
        EXPECT_EQ(parse(row.locale, row.input, row.format, &value), row.result) << row.input;
        EXPECT_EQ(value, row.value) << row.input;
    }
}

TEST_F(parsing, text) {
    vel_locale *utf8 = load("ja_jp.utf8");
    char bytes[20];
    vel_wchar wide[5];
    const std::string input = " \u65E5\u672C ab xyz";
    EXPECT_EQ(parse("ja_jp.utf8", input, "%s %2c%ls", bytes, bytes + 10, wide), "3");
    EXPECT_STREQ(bytes, "\u65E5\u672C");
    EXPECT_STREQ(bytes + 10, "ab");
    EXPECT_EQ(wide[0], vel_wchar{'x'});
    EXPECT_EQ(wide[3], vel_wchar{0});
    bytes[3] = '#';
    EXPECT_EQ(parse("ja_jp.utf8", input, "%*s%*c%s%3lc", bytes, wide), "2");
    EXPECT_EQ(wide[3], vel_wchar{0});
    EXPECT_EQ(wide[0], vel_wchar{' '});
    EXPECT_STREQ(bytes, "ab");
    bytes[3] = '#';
    EXPECT_EQ(parse("ja_jp.utf8", "\u65E5x", "%c%1s", bytes, bytes + 10), "2");
    EXPECT_EQ(bytes[3], '#') << "a character is not terminated";
    EXPECT_EQ(parse("ja_jp.utf8", "  ", "%s", bytes), "0 error 46");
    EXPECT_EQ(parse("ja_jp.utf8", "", "%c", bytes), "0 error 46");
    EXPECT_EQ(vel_mbspnum(utf8, "\xE6\x97", "%s", bytes), 0);
    EXPECT_EQ(error_of(utf8), VEL_EILSEQ);
    const wide_text foreign = {0xE697A5, 0};
    vel_locale *latin = load("en_us.8859-1");
    EXPECT_EQ(vel_wcspnum(latin, foreign.data(), widen(latin, "%s").data(), bytes), 0);
    EXPECT_EQ(error_of(latin), VEL_EILSEQ);
}

} // namespace

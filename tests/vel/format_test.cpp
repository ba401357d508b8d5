// vel date, number, money, info and their readers: values that are refused, exit statuses, standard
// input and code sets. What the formats mean is shown by the examples of the guide.
#include "vel/runner.h"

namespace {

using namespace vel_test;

class format : public vel_tool_test {};

TEST_F(format, what_is_refused) {
    const telling cases[] = {
        {2, {"no directive", "1"}, {"'no directive' has no directive"}},
        {2, {"100%%", "1"}, {"has no directive"}},
        {2, {"%d %s", "1"}, {"more than one directive"}},
        {2, {"%.*f", "1"}, {"'*' in a directive"}},
        {2, {"%ls", "x"}, {"write %s"}},
        {2, {"%k", "1"}, {"%k is no conversion"}},
        {2, {"%-05.3l", "1"}, {"ends inside a directive"}},
        {1, {"%d", "1.5"}, {"'1.5' is no whole number"}},
        {1, {"%d", "--", "-2147483649"}, {"out of range: -2147483648 to 2147483647"}},
        {1, {"%u", "--", "-1"}, {"out of range: 0 to 4294967295"}},
        {1, {"%f", "1,5"}, {"'1,5' is no number"}},
        {1, {"%c", "ab"}, {"'ab' is not one character of UTF-8"}},
        {1, {"%s", "\xC3"}, {"(error 1)"}},
        {0, {"%.d"}, {}},
    };
    expect_told({"number", "-l", "en_US"}, cases);
    const telling others[] = {
        {2, {"parse-number", "-l", "en_US", "%*d", "1"}, {"'*' in a directive"}},
        {1, {"parse-number", "-l", "en_US", "%d", "x"}, {"cannot read 'x' by '%d'"}},
        {2, {"money", "-l", "en_US", "%n%n%n%n%n", "1"}, {"5 '%'"}},
        {1, {"money", "-l", "en_US", "%z", "1"}, {"(error 22)"}},
        {1, {"date", "-l", "en_US", "-d", "2026-02-29"}, {"'2026-02-29' is no date"}},
        {1, {"date", "-l", "en_US", "-d", "2026-01-01T24:00"}, {"is no date"}},
        {1, {"date", "-l", "en_US", "-d", "2026-01-01T10:00:00.1234567"}, {"is no date"}},
        {1, {"date", "-l", "en_US", "-d", "@253402300800"}, {"is no date"}},
        {1, {"parse-date", "-l", "en_US", "%d", "32"}, {"(error 27)"}},
        {2, {"parse-date", "-l", "en_US", "--century-rule", "X", "%d", "1"}, {"--century-rule"}},
        {1, {"info", "-l", "en_US", "99999999999999999999"}, {"there is no item '999"}},
        {1, {"info", "-l", "en_US", "74"}, {"there is no item '74'"}},
    };
    expect_told({}, others);
}

TEST_F(format, values_and_results) {
    struct {
        const char *command;
        const char *out;
    } cases[] = {
        {"vel number -l C %d 0x7FFFFFFF -0x10 +5", "2147483647\n-16\n5\n"},
        {"vel number -l C '%300d' 7 | wc -c", "301\n"}, // more than the first buffer
        {"vel number -l C %d 1 x 3 2>/dev/null", "1\n3\n"},
        {"printf 'x y\\n\\n' | vel number -l C '[%s]'", "[x y]\n[]\n"},
        {"vel parse-number -l C %s 'word and more'", "word\n"},
        {"printf '1.5\\n2.5\\n' | vel parse-number -l C %f", "1.5\n2.5\n"},
        {"vel date -l C -d @0 -d @-1 -d @253402300799 '%Y-%m-%d %T %u %j'",
         "1970-01-01 00:00:00 04 001\n1969-12-31 23:59:59 03 365\n9999-12-31 23:59:59 05 365\n"},
        {"printf '2026-11-21\\n2026-11-22\\n' | vel date -l C -d - %d", "21\n22\n"},
        {"printf '21.11.2026\\n' | vel parse-date -l de_DE %x", "2026-11-21T00:00:00\t6\t325\t-\n"},
        {"vel info -l de_DE VEL_NUMERIC lc_messages | grep -c =", "9\n"},
        {"vel info -l C p_sign_posn grouping era", "p_sign_posn=127\ngrouping=none\nera=\"\"\n"},
        // Formats, texts and results are bytes of the locale's code set.
        {"vel date -l de_DE.ISO-8859-1 -d 2026-03-01 %B", "M\xE4rz\n"},
        {"vel date -l ja_JP.SHIFT_JIS -d 2026-03-01 %A", "\x93\xFA\x97\x6A\x93\xFA\n"},
        {"vel number -l ja_JP.SHIFT_JIS \"$(printf '\\203\\134%%d')\" 5", "\x83\x5C"
                                                                          "5\n"},
        // 6C is the percent sign, 84 is d, 25 ends a line.
        {"vel number -l en_US.IBM037 \"$(printf '\\154\\204')\" -- -12", "\x60\xF1\xF2\x25"},
        {"printf '\\361\\362\\045\\363' | vel parse-number -l en_US.IBM037 "
         "\"$(printf '\\154\\204')\"",
         "12\n3\n"},
    };
    for (const auto &row : cases) EXPECT_EQ(shell(row.command).out, row.out) << row.command;
    outcome now = shell("vel date -l en_US.IBM037 | wc -c");
    EXPECT_EQ(now.status, 0) << now.err;
    EXPECT_GT(atoi(now.out.c_str()), 20);
}

} // namespace

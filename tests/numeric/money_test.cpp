// Money, formatted and read back.
#include <span>

#include "numeric/formatting.h"

namespace {

constexpr char english[] = "en_us.utf8";

TEST_F(formatting, money_directives) {
    const double infinite = std::numeric_limits<double>::infinity();
    struct row {
        const char *format;
        double amount;
        const char *expected, *locale = english;
    };
    const auto check = [&](std::span<const row> rows) {
        for (const row &each : rows)
            EXPECT_EQ(money(each.locale, each.format, each.amount), each.expected)
                << each.locale << " " << each.format;
    };
    const row short_rows[] = {
        {"%(n", 1, "$1.00"},     {"%.0n", 0.5, "$0"},     {"%", 1, "error 15"},
        {"%=", 1, "error 15"},   {"%d", 1, "error 22"},   {"%n", -0.0, "-$0.00"},
        {"%#n", 1, "error 45"},  {"%.n", 1, "error 45"},  {"%5.2", 1, "error 15"},
        {"%+(n", 1, "error 45"}, {"%1$n", 1, "error 22"}, {"%i", 1.5, "1.50", ""},
        {"%n", infinite, "$Inf"}};
    const row middle_rows[] = {
        {"%#5n", -1.5, "-    1.50", ""},     {"%#2147483647n", 1, "error 14"},
        {"%.2147483647n", 1, "error 14"},    {"%999999999999n", 1, "error 14"},
        {"%^#6.1n", 1234.25, " $  1234.2"},  {"%=0#6.3n", -12, "-$0000012.000"},
        {"%12n", -infinite, "       -$Inf"}, {"%i", 1234, "JPY1,234", "ja_jp.utf8"}};
    const row long_rows[] = {{"%8n|", 1.0, "  \uFFE51.00|", "zh_cn.utf8"},
                             {"%n", -1234.5, "-$1,234.50", "en_us.ibm-037"},
                             {"%-14n|", -1.5, "-1,50 \u20AC       |", "de_de.utf8"},
                             {"%=*#7n", 1234.5, " CHF ****1\u2019234.50", "de_ch.utf8"},
                             {"100%% %14n|", -1.5, "100%        -1,50 \u20AC|", "de_de.utf8"},
                             {"%n", -1234567.895, "\u062C.\u0645. 1,234,567.895-", "ar_eg.utf8"}};
    check(short_rows);
    check(middle_rows);
    check(long_rows);
}

TEST_F(formatting, money_of_every_placement) {
    vel_locale *locale = load(english);
    vel_monetary_conventions &numbers = locale->conventions.monetary;
    const vel_monetary_conventions saved = numbers;
    // Behind and before the amount, by the place of the sign; with no blank, one, and one at the
    // sign.
    const char *expected[2][5] = {
        {"(1$) (1 $) (1$)", "-1$ -1 $ - 1$", "1$- 1 $- 1$ -", "1-$ 1 -$ 1- $", "1$- 1 $- 1$ -"},
        {"($1) ($ 1) ($1)", "-$1 -$ 1 - $1", "$1- $ 1- $1 -", "-$1 -$ 1 - $1", "$-1 $- 1 $ -1"}};
    for (int32_t precedes : {0, 1}) {
        for (int32_t position = 0; position < 5; ++position) {
            std::string written;
            for (int32_t space : {0, 1, 2}) {
                numbers.n_cs_precedes = precedes, numbers.n_sign_posn = position;
                numbers.n_sep_by_space = space;
                written += (space ? " " : "") + money(english, "%.0n", -1.0);
            }
            EXPECT_EQ(written, expected[precedes][position]);
        }
    }
    numbers = saved;
}

TEST_F(formatting, money_parsing) {
    const struct {
        const char *input, *format;
        int32_t count, error = 0;
        double amount = 0;
    } rows[] = {{"  $1,234.50", "%n", 1, 0, 1234.5},
                {"1234.50", "%n", 1, 0, 1234.5},
                {"-$.5", "%n", 1, 0, -0.5},
                {"($ 3)", "%n", 1, 0, -3},
                {"-$3", "%(n", 1, 0, -3},
                {"$***3.00", "%=*#6n", 1, 0, 3},
                {"USD 3.00 paid", "%i paid", 1, 0, 3},
                {"($3", "%n", 0, VEL_ENOCONV},
                {"$", "%n", 0, VEL_ENOCONV},
                {"", "%n", 0, VEL_ENOCONV},
                {"$1,23.00", "%n", 0, VEL_EINVAL},
                {"$1\xC3", "%nx", -1, VEL_EILSEQ, 1},
                {"$1", "%nx", -1, VEL_ETIMEFMT, 1},
                {"$1", "%d", -1, VEL_ETIMEFMT},
                {"$1", "%#", -1, VEL_ENUMFMT}};
    vel_locale *locale = load(english);
    for (const auto &row : rows) {
        double amount = 0;
        EXPECT_EQ(vel_mbspmon(locale, row.input, row.format, &amount), row.count) << row.input;
        EXPECT_EQ(error_of(locale), row.error) << row.input;
        EXPECT_EQ(amount, row.amount) << row.input;
    }
    double amount = 0;
    for (const char *input : {"-HK$5", "(HK$5)"}) { // the locale has parentheses
        EXPECT_EQ(vel_mbspmon(load("zh_hk.utf8"), input, "%n", &amount), 1) << input;
        EXPECT_EQ(amount, -5);
    }
    const std::string huge(400, '9');
    EXPECT_EQ(vel_mbspmon(locale, huge.c_str(), "%n", &amount), 0);
    EXPECT_EQ(error_of(locale), VEL_ENONUM);
}

} // namespace

// Money, formatted and read back.
#include <random>

#include "numeric/formatting.h"

namespace {

constexpr char english[] = "en_us.utf8";

// As the host's strfmon writes them.
TEST_F(formatting, money_of_nations) {
    const struct {
        const char *locale;
        const char *plain, *filled, *parentheses, *bare;
    } rows[] = {
        {"de_de.utf8", "-1.234.567,90 \u20AC", " ****1.234,50 \u20AC", "(1.234.567,90 \u20AC)",
         "-1.234.568"},
        {"en_us.utf8", "-$1,234,567.90", " $****1,234.50", "($1,234,567.90)", "-1,234,568"},
        {"fr_fr.utf8", "-1\u202F234\u202F567,90 \u20AC", " ****1\u202F234,50 \u20AC",
         "(1\u202F234\u202F567,90 \u20AC)", "-1\u202F234\u202F568"},
        {"de_ch.utf8", "CHF- 1\u2019234\u2019567.90", " CHF ****1\u2019234.50",
         "(CHF 1\u2019234\u2019567.90)", "- 1\u2019234\u2019568"},
        {"nl_nl.utf8", "\u20AC -1.234.567,90", " \u20AC ****1.234,50", "(\u20AC1.234.567,90)",
         "-1.234.568"},
        {"hi_in.utf8", "-\u20B912,34,567.90", " \u20B9****1,234.50", "(\u20B912,34,567.90)",
         "-12,34,568"},
        {"zh_cn.utf8", "\uFFE5-1,234,567.90", " \uFFE5****1,234.50", "(\uFFE51,234,567.90)",
         "-1,234,568"},
        {"ar_eg.utf8", "\u062C.\u0645. 1,234,567.895-", "\u062C.\u0645. ****1,234.500",
         "(\u062C.\u0645. 1,234,567.895)", "1,234,568-"},
        {"kk_kz.utf8", "-1\u202F234\u202F567,90 \u20B8", " ****1\u202F234,50\u20B8",
         "(1\u202F234\u202F567,90 \u20B8)", "-1\u202F234\u202F568"},
        {"nb_no.utf8", "kr-1\u202F234\u202F567,90", " kr****1\u202F234,50",
         "(kr1\u202F234\u202F567,90)", "-1\u202F234\u202F568"},
        {"c.utf-8", "-1234567.90", " ***1234.50", "(1234567.90)", "-1234568"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(money(row.locale, "%n", -1234567.895), row.plain);
        EXPECT_EQ(money(row.locale, "%=*#7n", 1234.5), row.filled);
        EXPECT_EQ(money(row.locale, "%(#7n", -1234567.895), row.parentheses);
        EXPECT_EQ(money(row.locale, "%!.0n", -1234567.895), row.bare);
    }
}

TEST_F(formatting, money_directives) {
    const double infinite = std::numeric_limits<double>::infinity();
    const struct {
        const char *locale;
        const char *format;
        double amount;
        const char *expected;
    } rows[] = {
        {"de_de.utf8", "%i", 1234.5, "1.234,50 EUR"},
        {"de_de.utf8", "100%% %14n|", -1.5, "100%        -1,50 \u20AC|"},
        {"de_de.utf8", "%-14n|", -1.5, "-1,50 \u20AC       |"},
        {english, "%(n", 1, "$1.00"},
        {english, "%^#6.1n", 1234.25, " $  1234.2"},
        {english, "%=0#6.3n", -12, "-$0000012.000"},
        {english, "%n", infinite, "$Inf"},
        {english, "%12n", -infinite, "       -$Inf"},
        {english, "%n", -0.0, "-$0.00"},
        {english, "%.0n", 0.5, "$0"},
        {"ja_jp.utf8", "%i", 1234, "JPY1,234"},
        {"zh_cn.utf8", "%8n|", 1.0, "  \uFFE51.00|"},
        {"en_us.ibm-037", "%n", -1234.5, "-$1,234.50"},
        {"", "%#5n", -1.5, "-    1.50"},
        {"", "%i", 1.5, "1.50"},
        {english, "%", 1, "error 15"},
        {english, "%=", 1, "error 15"},
        {english, "%5.2", 1, "error 15"},
        {english, "%#n", 1, "error 45"},
        {english, "%.n", 1, "error 45"},
        {english, "%+(n", 1, "error 45"},
        {english, "%d", 1, "error 22"},
        {english, "%1$n", 1, "error 22"},
        {english, "%999999999999n", 1, "error 14"},
        {english, "%#2147483647n", 1, "error 14"},
        {english, "%.2147483647n", 1, "error 14"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(money(row.locale, row.format, row.amount), row.expected)
            << row.locale << " " << row.format;
    }
}

TEST_F(formatting, money_of_every_placement) {
    vel_locale *locale = load(english);
    vel_monetary_conventions &numbers = locale->conventions.monetary;
    const vel_monetary_conventions saved = numbers;
    const char *expected[2][5][3] = {
        {{"(1$)", "(1 $)", "(1$)"},
         {"-1$", "-1 $", "- 1$"},
         {"1$-", "1 $-", "1$ -"},
         {"1-$", "1 -$", "1- $"},
         {"1$-", "1 $-", "1$ -"}},
        {{"($1)", "($ 1)", "($1)"},
         {"-$1", "-$ 1", "- $1"},
         {"$1-", "$ 1-", "$1 -"},
         {"-$1", "-$ 1", "- $1"},
         {"$-1", "$- 1", "$ -1"}},
    };
    for (int32_t precedes : {0, 1}) {
        for (int32_t position = 0; position < 5; ++position) {
            for (int32_t space : {0, 1, 2}) {
                numbers.n_cs_precedes = precedes;
                numbers.n_sign_posn = position;
                numbers.n_sep_by_space = space;
                EXPECT_EQ(money(english, "%.0n", -1.0), expected[precedes][position][space]);
            }
        }
    }
    numbers = saved;
}

TEST_F(formatting, money_reads_back) {
    std::mt19937 random(9);
    for (const char *name :
         {"de_de.utf8", "fr_fr.utf8", "hi_in.utf8", "en_us.ibm-037", "nl_nl.utf8", "ja_jp.eucjp",
          "de_ch.utf8", "ar_eg.utf8", "kk_kz.utf8", ""}) {
        for (const char *text : {"%n %i", "%(#9n;%!i", "%=*#12.3n;%-30n;%(n", "%^12i/%+n"}) {
            vel_locale *locale = load(name);
            const wide_text format = widen(locale, text);
            for (int i = 0; i < 100; ++i) {
                const double amounts[3] = {int32_t(random()) / 8.0, int32_t(random()) / 64.0, -0.5};
                vel_wchar first[300], again[300];
                double read[3] = {};
                vel_wcsfmon(locale, first, 299, format.data(), amounts[0], amounts[1], amounts[2]);
                ASSERT_GE(vel_wcspmon(locale, first, format.data(), read, read + 1, read + 2), 2)
                    << name << text << amounts[0] << " " << error_of(locale);
                vel_wcsfmon(locale, again, 299, format.data(), read[0], read[1], read[2]);
                for (int k = 0; first[k] || again[k]; ++k)
                    ASSERT_EQ(first[k], again[k]) << name << text << amounts[0];
            }
        }
    }
}

TEST_F(formatting, money_parsing) {
    const struct {
        const char *input;
        const char *format;
        int32_t count;
        int32_t error = 0;
        double amount = 0;
    } rows[] = {
        {"  $1,234.50", "%n", 1, 0, 1234.5},
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
        {"$1", "%#", -1, VEL_ENUMFMT},
    };
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

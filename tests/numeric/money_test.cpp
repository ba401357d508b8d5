// Money, formatted and read back.
#include "numeric/formatting.h"

namespace {

constexpr char english[] = "en_us.utf8";

TEST_F(formatting, money_directives) {
    const double infinite = std::numeric_limits<double>::infinity();
    const std::pair<int, std::vector<const char *>> refused[] = {
        {14, {"%#2147483647n", "%.2147483647n", "%999999999999n"}},
        {15, {"%", "%=", "%5.2"}},
        {22, {"%d", "%1$n"}},
        {45, {"%#n", "%.n", "%+(n"}}};
    for (const auto &[error, texts] : refused)
        for (const char *text : texts)
            EXPECT_EQ(money(english, text, 1.0), "error " + std::to_string(error)) << text;
    // What the host writes too is held against it for all locales elsewhere.
    const struct {
        const char *format;
        double amount;
        const char *expected, *locale = english;
    } rows[] = {{"%n", -0.0, "-$0.00"},         {"%n", -1234.5, "-$1,234.50", "en_us.ibm-037"},
                {"%i", 1.5, "1.50", ""},        {"%12n", -infinite, "       -$Inf"},
                {"%n", infinite, "$Inf"},       {"%=0#6.3n", -12, "-$0000012.000"},
                {"%#5n", -1.5, "-    1.50", ""}};
    for (const auto &each : rows)
        EXPECT_EQ(money(each.locale, each.format, each.amount), each.expected)
            << each.locale << " " << each.format;
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
    } rows[] = {{"USD 3.00 paid", "%i paid", 1, 0, 3}, {"-$3", "%(n", 1, 0, -3},
                {"$1\xC3", "%nx", -1, VEL_EILSEQ, 1},  {"($ 3)", "%n", 1, 0, -3},
                {"  $1,234.50", "%n", 1, 0, 1234.5},   {"-$.5", "%n", 1, 0, -0.5},
                {"$1", "%nx", -1, VEL_ETIMEFMT, 1},    {"", "%n", 0, VEL_ENOCONV},
                {"$1,23.00", "%n", 0, VEL_EINVAL},     {"$", "%n", 0, VEL_ENOCONV},
                {"1234.50", "%n", 1, 0, 1234.5},       {"($3", "%n", 0, VEL_ENOCONV},
                {"$***3.00", "%=*#6n", 1, 0, 3},       {"$1", "%#", -1, VEL_ENUMFMT},
                {"$1", "%d", -1, VEL_ETIMEFMT}};
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

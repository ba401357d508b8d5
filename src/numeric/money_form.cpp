#include "numeric/money_form.h"

#include "record/texts.h"

namespace vel {
namespace {

// By: whether the symbol precedes the digits, the position of the sign, the separation by space.
constexpr char orders[2][5][3][6] = {
    {{"(VS)", "(V S)", "(VS)"},
     {"-VS", "-V S", "- VS"},
     {"VS-", "V S-", "VS -"},
     {"V-S", "V -S", "V- S"},
     {"VS-", "V S-", "VS -"}},
    {{"(SV)", "(S V)", "(SV)"},
     {"-SV", "-S V", "- SV"},
     {"SV-", "S V-", "SV -"},
     {"-SV", "-S V", "- SV"},
     {"S-V", "S- V", "S -V"}},
};
constexpr int32_t sign_before_all = 1;
constexpr int32_t symbol_letters = 3; // of an international symbol
constexpr int32_t default_places = 2;

// Numbers that the locale does not give, or that mean nothing, count as `otherwise`.
int32_t choice(int32_t number, int32_t count, int32_t otherwise) {
    return number >= 0 && number < count ? number : otherwise;
}

const char *order_of(const vel_monetary_conventions &money, const money_directive &how,
                     amount_sign sign) {
    const bool negative = sign == amount_sign::negative;
    int32_t precedes = choice(negative ? money.n_cs_precedes : money.p_cs_precedes, 2, 1);
    int32_t space = choice(negative ? money.n_sep_by_space : money.p_sep_by_space, 3, 0);
    int32_t position = choice(negative ? money.n_sign_posn : money.p_sign_posn, 5, sign_before_all);
    if (how.sign_strings && position == 0) position = sign_before_all;
    if (how.parentheses) position = 0;
    return orders[precedes][position][space];
}

// Leaves out what is empty: a separator goes with the symbol that it stands at, and is not written
// where nothing is left on one of its sides. Positive amounts have no parentheses.
void keep_parts(const char *order, bool symbol, bool sign, bool parentheses, char *out) {
    char *begin = out;
    for (const char *part = order; *part; ++part) {
        const bool is_parenthesis = *part == '(' || *part == ')';
        if (*part == 'S' && !symbol) continue;
        if (*part == '-' && !sign) continue;
        if (is_parenthesis && !parentheses) continue;
        if (*part == ' ' && !symbol && (part[-1] == 'S' || part[1] == 'S')) continue;
        if (*part == ' ' && out == begin) continue;
        *out++ = *part;
    }
    if (out[-1] == ' ') --out;
    *out = 0;
}

} // namespace

money_form form_of(const vel_locale *locale, const money_directive &how, amount_sign sign) {
    const vel_monetary_conventions &money = locale->conventions.monetary;
    const bool negative = sign == amount_sign::negative;
    money_form form = {};
    form.separator = value_of(locale, ' ');
    form.symbol = how.international ? money.int_curr_symbol.wide : money.currency_symbol.wide;
    while (form.symbol[form.symbol_length]) {
        if (how.international && form.symbol_length == symbol_letters) {
            form.separator = form.symbol[symbol_letters];
            break;
        }
        ++form.symbol_length;
    }
    form.sign = negative ? mark{&money.negative_sign, '-'} : mark{&money.positive_sign};
    keep_parts(order_of(money, how, sign), how.symbol && form.symbol_length > 0,
               negative || form.sign.own(), negative, form.parts);
    return form;
}

int32_t money_form::columns(const vel_locale *locale, char part) const {
    int32_t total = 0;
    switch (part) {
    case 'V':
        return 0;
    case '-':
        return sign.columns(locale);
    case ' ':
        return display_columns(locale, separator);
    case 'S':
        for (int32_t i = 0; i < symbol_length; ++i) total += display_columns(locale, symbol[i]);
        return total;
    default:
        return 1;
    }
}

int32_t money_form::columns_before(const vel_locale *locale) const {
    int32_t total = 0;
    for (const char *part = parts; *part != 'V'; ++part) total += columns(locale, *part);
    return total;
}

decimal_style money_style(const vel_locale *locale, const money_directive &how) {
    const vel_monetary_conventions &money = locale->conventions.monetary;
    digit_groups groups;
    if (how.grouped) groups = {&money.grouping, &money.mon_thousands_sep};
    return {groups, point_mark(money.mon_decimal_point)};
}

int32_t money_places(const vel_locale *locale, const money_directive &how) {
    if (how.right_digits >= 0) return how.right_digits;
    const vel_monetary_conventions &money = locale->conventions.monetary;
    int32_t places = how.international ? money.int_frac_digits : money.frac_digits;
    return places == not_given || places < 0 ? default_places : places;
}

} // namespace vel

#include "velc/source/categories.h"

namespace velc {

namespace {

// grouping := number { ';' number }
grouping_list take_grouping(lexer &in) {
    grouping_list sizes;
    take_list(in, [&] { sizes.push_back(take_number_between(in, -1, 127)); });
    return sizes;
}

template <typename T, auto Member> void take_group_sizes(lexer &in, T &to) {
    to.*Member = take_grouping(in);
}

template <auto Layout, auto Member, int Most> void take_layout(lexer &in, monetary &to) {
    to.*Layout.*Member = take_number_between(in, unset, Most);
}

// Keywords of a second currency: accepted, not kept.
void take_and_drop(lexer &in, monetary &) {
    in.warn(warning_kind::not_kept, in.line(), "second currencies have no place in the model");
    while (!in.at_end()) in.take();
}

constexpr auto national = &monetary::national;
constexpr auto international = &monetary::international;

using number_field = keyword<numeric>;
using money_field = keyword<monetary>;

constexpr std::array numeric_keywords = {
    number_field{"decimal_point", take_text<numeric, &numeric::decimal_point>},
    number_field{"thousands_sep", take_text<numeric, &numeric::thousands_sep>},
    number_field{"grouping", take_group_sizes<numeric, &numeric::grouping>},
};

constexpr std::array monetary_keywords = {
    money_field{"int_curr_symbol", take_text<monetary, &monetary::int_curr_symbol>},
    money_field{"currency_symbol", take_text<monetary, &monetary::currency_symbol>},
    money_field{"mon_decimal_point", take_text<monetary, &monetary::mon_decimal_point>},
    money_field{"mon_thousands_sep", take_text<monetary, &monetary::mon_thousands_sep>},
    money_field{"mon_grouping", take_group_sizes<monetary, &monetary::mon_grouping>},
    money_field{"positive_sign", take_text<monetary, &monetary::positive_sign>},
    money_field{"negative_sign", take_text<monetary, &monetary::negative_sign>},
    money_field{"int_frac_digits", take_number<monetary, &monetary::int_frac_digits, unset, 127>},
    money_field{"frac_digits", take_number<monetary, &monetary::frac_digits, unset, 127>},
    money_field{"p_cs_precedes", take_layout<national, &money_layout::p_cs_precedes, 1>},
    money_field{"p_sep_by_space", take_layout<national, &money_layout::p_sep_by_space, 2>},
    money_field{"n_cs_precedes", take_layout<national, &money_layout::n_cs_precedes, 1>},
    money_field{"n_sep_by_space", take_layout<national, &money_layout::n_sep_by_space, 2>},
    money_field{"p_sign_posn", take_layout<national, &money_layout::p_sign_posn, 4>},
    money_field{"n_sign_posn", take_layout<national, &money_layout::n_sign_posn, 4>},
    money_field{"int_p_cs_precedes", take_layout<international, &money_layout::p_cs_precedes, 1>},
    money_field{"int_p_sep_by_space", take_layout<international, &money_layout::p_sep_by_space, 2>},
    money_field{"int_n_cs_precedes", take_layout<international, &money_layout::n_cs_precedes, 1>},
    money_field{"int_n_sep_by_space", take_layout<international, &money_layout::n_sep_by_space, 2>},
    money_field{"int_p_sign_posn", take_layout<international, &money_layout::p_sign_posn, 4>},
    money_field{"int_n_sign_posn", take_layout<international, &money_layout::n_sign_posn, 4>},
    money_field{"conversion_rate", take_and_drop},
    money_field{"duo_int_curr_symbol", take_and_drop},
    money_field{"duo_currency_symbol", take_and_drop},
    money_field{"duo_int_frac_digits", take_and_drop},
    money_field{"duo_frac_digits", take_and_drop},
    money_field{"duo_p_cs_precedes", take_and_drop},
    money_field{"duo_p_sep_by_space", take_and_drop},
    money_field{"duo_n_cs_precedes", take_and_drop},
    money_field{"duo_n_sep_by_space", take_and_drop},
    money_field{"duo_p_sign_posn", take_and_drop},
    money_field{"duo_n_sign_posn", take_and_drop},
    money_field{"uno_valid_from", take_and_drop},
    money_field{"uno_valid_to", take_and_drop},
    money_field{"duo_valid_from", take_and_drop},
    money_field{"duo_valid_to", take_and_drop},
};

} // namespace

section<numeric> read_numeric(lexer &in) {
    return read_keyword_section(in, "LC_NUMERIC", numeric_keywords);
}

section<monetary> read_monetary(lexer &in) {
    return read_keyword_section(in, "LC_MONETARY", monetary_keywords);
}

} // namespace velc

#include "velc/number_sections.h"

#include <fmt/format.h>

#include "velc/object_text.h"

namespace velc {

namespace {

// Stands in the object for an integer that the source does not give.
constexpr int not_given = 127;

void append_text(std::string &section, text_encoder &encoder, std::string_view keyword,
                 std::u32string_view text) {
    append_string(section, encoder.encode(keyword, text));
}

} // namespace

std::vector<int> object_grouping(const grouping_list &written) {
    std::vector<int> sizes;
    for (int size : written) {
        if (size == 0) break; // the size before it repeats, as it does by itself
        sizes.push_back(size);
        if (size < 0) break;
    }
    if (sizes.empty() || sizes.front() < 0) return {};
    while (sizes.size() > 1 && sizes.back() == sizes[sizes.size() - 2]) sizes.pop_back();
    return sizes;
}

std::string write_numeric(const numeric &from, text_encoder &encoder) {
    std::string section;
    append_text(section, encoder, "decimal_point", from.decimal_point);
    append_text(section, encoder, "thousands_sep", from.thousands_sep);
    append_grouping(section, object_grouping(from.grouping));
    append_text(section, encoder, "positive_sign", U"+");
    append_text(section, encoder, "negative_sign", U"-");
    return section;
}

std::string write_monetary(const monetary &from, text_encoder &encoder) {
    std::string section;
    append_text(section, encoder, "int_curr_symbol", from.int_curr_symbol);
    append_text(section, encoder, "currency_symbol", from.currency_symbol);
    append_text(section, encoder, "mon_decimal_point", from.mon_decimal_point);
    append_text(section, encoder, "mon_thousands_sep", from.mon_thousands_sep);
    append_grouping(section, object_grouping(from.mon_grouping));
    append_text(section, encoder, "positive_sign", from.positive_sign);
    append_text(section, encoder, "negative_sign", from.negative_sign);
    const money_layout &layout = from.national;
    for (int value :
         {from.int_frac_digits, from.frac_digits, layout.p_cs_precedes, layout.p_sep_by_space,
          layout.n_cs_precedes, layout.n_sep_by_space, layout.p_sign_posn, layout.n_sign_posn})
        section += fmt::format("{}\n", value == unset ? not_given : value);
    return section;
}

std::string write_messages(const messages &from, text_encoder &encoder) {
    std::string section;
    append_text(section, encoder, "yesexpr", from.yesexpr);
    append_text(section, encoder, "noexpr", from.noexpr);
    append_text(section, encoder, "yesstr", from.yesstr);
    append_text(section, encoder, "nostr", from.nostr);
    return section;
}

} // namespace velc

// The strings of a category: which there are, and how they are emptied and freed.
#pragma once

#include <iterator>

#include "record/record.h"

namespace vel {

// Where the strings of each category stand in it, in the order of object files.
inline constexpr locale_text numeric_category::*numeric_texts[] = {
    &numeric_category::decimal_point,
    &numeric_category::thousands_sep,
    &numeric_category::positive_sign,
    &numeric_category::negative_sign,
};
inline constexpr locale_text monetary_category::*monetary_texts[] = {
    &monetary_category::int_curr_symbol,   &monetary_category::currency_symbol,
    &monetary_category::mon_decimal_point, &monetary_category::mon_thousands_sep,
    &monetary_category::positive_sign,     &monetary_category::negative_sign,
};
inline constexpr int32_t monetary_category::*monetary_numbers[] = {
    &monetary_category::int_frac_digits, &monetary_category::frac_digits,
    &monetary_category::p_cs_precedes,   &monetary_category::p_sep_by_space,
    &monetary_category::n_cs_precedes,   &monetary_category::n_sep_by_space,
    &monetary_category::p_sign_posn,     &monetary_category::n_sign_posn,
};
inline constexpr locale_text time_category::*time_texts[] = {
    &time_category::d_t_fmt,   &time_category::d_fmt,     &time_category::t_fmt,
    &time_category::am,        &time_category::pm,        &time_category::t_fmt_ampm,
    &time_category::era_d_fmt, &time_category::era_t_fmt, &time_category::era_d_t_fmt,
};
inline constexpr text_list time_category::*time_lists[] = {
    &time_category::abbreviated_days, &time_category::days, &time_category::abbreviated_months,
    &time_category::months,           &time_category::eras, &time_category::alt_digits,
};

// A number that the locale does not give.
constexpr int32_t not_given = 127;

// The empty string. It is static: it is never freed and never written to.
locale_text empty_text();
// Zero bytes behind the bytes of a string: a character cut short takes up to three of them, and
// the terminator up to four more.
constexpr size_t text_padding = 8;

// Frees a string or a list and leaves it empty.
void release_text(locale_text &text);
void release_wide(locale_text &text);
void release_list(text_list &list);

} // namespace vel

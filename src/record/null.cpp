// The null state of each category.
#include "record/category.h"
#include "record/portable.h"
#include "record/texts.h"

namespace vel {
namespace {

number_marks null_marks() {
    return {empty_text().wide, 0, empty_text().wide, 0, 0, 0};
}

} // namespace

void null_ctype(vel_locale *locale) {
    locale->ctype = {};
    locale->ctype.characters = &empty_table;
    locale->ctype.cases = &empty_table;
    locale->case_growth = 1.0;
    locale->single_byte = 0;
    locale->portable = &ascii_codes;
    release_byte_tables(locale);
}

void null_collate(vel_locale *locale) {
    locale->collate = {};
    locale->collate.characters = &empty_table;
    locale->collate_features = 0;
    locale->collate_longest_element = 0;
}

void null_numeric(vel_locale *locale) {
    numeric_category &numeric = locale->conventions.numeric;
    numeric = {};
    for (auto text : numeric_texts) numeric.*text = empty_text();
    locale->numeric_marks = null_marks();
}

void null_monetary(vel_locale *locale) {
    monetary_category &monetary = locale->conventions.monetary;
    monetary = {};
    for (auto text : monetary_texts) monetary.*text = empty_text();
    for (auto number : monetary_numbers) monetary.*number = not_given;
    locale->query_texts.currency = empty_text();
    locale->monetary_marks = null_marks();
}

void null_time(vel_locale *locale) {
    locale->time = {};
    for (auto text : time_texts) locale->time.*text = empty_text();
    locale->query_texts.eras = empty_text();
    locale->query_texts.alt_digits = empty_text();
    release_time_derived(locale);
}

void null_messages(vel_locale *locale) {
    for (locale_text &text : locale->conventions.messages.texts) text = empty_text();
}

} // namespace vel

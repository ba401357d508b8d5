#include "vel/record_view.h"

#include <cstring>

#include <fmt/format.h>

#include "record/record.h"

namespace vel_tool {
namespace {

using vel::locale_text;
using vel::text_list;

template <class Category> struct text_field {
    const char *name;
    locale_text Category::*field;
};
template <class Category> struct list_field {
    const char *name;
    text_list Category::*field;
};
template <class Category> struct number_field {
    const char *name;
    int32_t Category::*field;
};

constexpr int32_t not_given = 127;
constexpr const char *calendar_names[] = {"none", "gregorian", "hebrew", "islamic", "arabic"};
constexpr const char *collation_kinds[] = {"none", "as specified", "Thai"};

constexpr text_field<vel::numeric_category> numeric_texts[] = {
    {"decimal_point", &vel::numeric_category::decimal_point},
    {"thousands_sep", &vel::numeric_category::thousands_sep},
    {"positive_sign", &vel::numeric_category::positive_sign},
    {"negative_sign", &vel::numeric_category::negative_sign},
};

constexpr text_field<vel::monetary_category> monetary_texts[] = {
    {"int_curr_symbol", &vel::monetary_category::int_curr_symbol},
    {"currency_symbol", &vel::monetary_category::currency_symbol},
    {"mon_decimal_point", &vel::monetary_category::mon_decimal_point},
    {"mon_thousands_sep", &vel::monetary_category::mon_thousands_sep},
    {"positive_sign", &vel::monetary_category::positive_sign},
    {"negative_sign", &vel::monetary_category::negative_sign},
};

constexpr number_field<vel::monetary_category> monetary_numbers[] = {
    {"int_frac_digits", &vel::monetary_category::int_frac_digits},
    {"frac_digits", &vel::monetary_category::frac_digits},
    {"p_cs_precedes", &vel::monetary_category::p_cs_precedes},
    {"p_sep_by_space", &vel::monetary_category::p_sep_by_space},
    {"n_cs_precedes", &vel::monetary_category::n_cs_precedes},
    {"n_sep_by_space", &vel::monetary_category::n_sep_by_space},
    {"p_sign_posn", &vel::monetary_category::p_sign_posn},
    {"n_sign_posn", &vel::monetary_category::n_sign_posn},
};

constexpr list_field<vel::time_category> time_lists[] = {
    {"abday", &vel::time_category::abbreviated_days},
    {"day", &vel::time_category::days},
    {"abmon", &vel::time_category::abbreviated_months},
    {"mon", &vel::time_category::months},
    {"era", &vel::time_category::eras},
    {"alt_digits", &vel::time_category::alt_digits},
};

constexpr text_field<vel::time_category> time_texts[] = {
    {"d_t_fmt", &vel::time_category::d_t_fmt},
    {"d_fmt", &vel::time_category::d_fmt},
    {"t_fmt", &vel::time_category::t_fmt},
    {"am", &vel::time_category::am},
    {"pm", &vel::time_category::pm},
    {"t_fmt_ampm", &vel::time_category::t_fmt_ampm},
    {"era_d_fmt", &vel::time_category::era_d_fmt},
    {"era_t_fmt", &vel::time_category::era_t_fmt},
    {"era_d_t_fmt", &vel::time_category::era_d_t_fmt},
};

constexpr const char *message_names[] = {"yesexpr", "noexpr", "yesstr", "nostr"};

// A text ends with a null character, which has as many bytes as the shortest character.
std::string bytes_of(const vel_locale &locale, const locale_text &text) {
    if (!text.bytes) return "";
    auto unit = static_cast<size_t>(locale.ctype.characters->shortest);
    static constexpr char zeros[4] = {};
    const char *end = text.bytes;
    while (memcmp(end, zeros, unit) != 0) end += unit;
    return std::string(text.bytes, static_cast<size_t>(end - text.bytes));
}

record_item item(const vel_locale &locale, const char *name, const locale_text &text) {
    return {name, {bytes_of(locale, text)}, "", true};
}

record_item item(const vel_locale &locale, const char *name, const text_list &list) {
    record_item result{name, {}, "", true};
    for (int32_t i = 0; list.items && i < list.count; ++i) {
        result.texts.push_back(bytes_of(locale, list.items[i]));
    }
    return result;
}

record_item item(const char *name, std::string number) {
    return {name, {}, std::move(number), false};
}

record_item item(const vel_locale &, const char *name, int32_t number) {
    return item(name, number == not_given ? "not given" : std::to_string(number));
}

record_item item(const char *name, const vel_grouping &grouping) {
    std::string sizes;
    for (int32_t i = 0; i < grouping.count; ++i) {
        sizes += fmt::format("{}{}", i > 0 ? ";" : "", grouping.sizes[i]);
    }
    return item(name, sizes.empty() ? "none" : sizes);
}

using items = std::vector<record_item>;

template <class Category, class Field, size_t N>
void add_all(items &list, const vel_locale &locale, const Category &category,
             const Field (&fields)[N]) {
    for (const Field &field : fields) {
        list.push_back(item(locale, field.name, category.*field.field));
    }
}

items ctype_items(const vel_locale &locale) {
    std::string classes;
    for (const std::string &name : locale_classes(&locale)) classes += " " + name;
    return {item(locale, "shortest_character", locale.ctype.characters->shortest),
            item(locale, "longest_character", locale.ctype.characters->longest),
            item("own_classes", classes.empty() ? "none" : classes.substr(1)),
            item("case_pairs", std::to_string(locale.ctype.pair_count)),
            item("case_growth", fmt::format("{}", locale.case_growth))};
}

items collate_items(const vel_locale &locale) {
    const vel::collate_category &collate = locale.collate;
    std::string passes;
    for (int32_t i = 0; i < collate.pass_count; ++i) {
        bool backward = collate.passes[i].direction == vel::pass_backward;
        passes += backward ? ";backward" : ";forward";
    }
    return {item("kind", collate.code_order ? "by character value" : collation_kinds[collate.kind]),
            item("passes", passes.empty() ? "none" : passes.substr(1)),
            item("elements", std::to_string(collate.element_count)),
            item("expansions", std::to_string(collate.expansion_count))};
}

items numeric_items(const vel_locale &locale) {
    const vel::numeric_category &numeric = locale.conventions.numeric;
    items list;
    add_all(list, locale, numeric, numeric_texts);
    list.push_back(item("grouping", numeric.grouping));
    return list;
}

items monetary_items(const vel_locale &locale) {
    const vel::monetary_category &monetary = locale.conventions.monetary;
    items list;
    add_all(list, locale, monetary, monetary_texts);
    list.push_back(item("mon_grouping", monetary.grouping));
    add_all(list, locale, monetary, monetary_numbers);
    return list;
}

items time_items(const vel_locale &locale) {
    items list = {item("calendar", calendar_names[locale.time.calendar])};
    add_all(list, locale, locale.time, time_lists);
    add_all(list, locale, locale.time, time_texts);
    return list;
}

items messages_items(const vel_locale &locale) {
    items list;
    for (size_t i = 0; i < std::size(message_names); ++i) {
        list.push_back(item(locale, message_names[i], locale.conventions.messages.texts[i]));
    }
    return list;
}

struct category_row {
    const char *name;
    int32_t category;
    items (*items_of)(const vel_locale &locale);
};

constexpr category_row categories[] = {
    {"ctype", VEL_CTYPE, ctype_items},       {"collate", VEL_COLLATE, collate_items},
    {"numeric", VEL_NUMERIC, numeric_items}, {"monetary", VEL_MONETARY, monetary_items},
    {"time", VEL_TIME, time_items},          {"messages", VEL_MESSAGES, messages_items},
};

} // namespace

std::string codeset_of(const vel_locale *locale) {
    return locale->codeset_names[vel::category_index(VEL_CTYPE)];
}

std::vector<std::string> locale_classes(const vel_locale *locale) {
    std::vector<std::string> names;
    for (int32_t i = 0; i < locale->ctype.class_count; ++i) {
        names.push_back(locale->ctype.classes[i].name);
    }
    return names;
}

std::vector<record_section> record_sections(const vel_locale *locale) {
    std::vector<record_section> sections;
    for (const category_row &row : categories) {
        int32_t index = vel::category_index(row.category);
        sections.push_back({row.name, locale->file_names[index], locale->codeset_names[index],
                            row.items_of(*locale)});
    }
    return sections;
}

} // namespace vel_tool

#include "vel/record_view.h"

#include <fmt/format.h>

#include "record/portable.h"

namespace vel_tool {
namespace {

constexpr const char *collation_kinds[] = {"none", "as specified", "Thai"};

using items = std::vector<record_item>;

items ctype_items(const vel_locale &locale) {
    std::string classes;
    for (const std::string &name : locale_classes(&locale)) classes += " " + name;
    return {{"shortest_character", std::to_string(locale.ctype.characters->shortest)},
            {"longest_character", std::to_string(locale.ctype.characters->longest)},
            {"own_classes", classes.empty() ? "none" : classes.substr(1)},
            {"case_pairs", std::to_string(locale.ctype.pair_count)},
            {"case_growth", fmt::format("{}", locale.case_growth)}};
}

items collate_items(const vel_locale &locale) {
    const vel::collate_category &collate = locale.collate;
    std::string passes;
    for (int32_t i = 0; i < collate.pass_count; ++i) {
        bool backward = collate.passes[i].direction == vel::pass_backward;
        passes += backward ? ";backward" : ";forward";
    }
    return {{"kind", collate.code_order ? "by character value" : collation_kinds[collate.kind]},
            {"passes", passes.empty() ? "none" : passes.substr(1)},
            {"elements", std::to_string(collate.element_count)},
            {"expansions", std::to_string(collate.expansion_count)}};
}

struct category_row {
    const char *name;
    int32_t category;
    items (*items_of)(const vel_locale &locale);
};

constexpr category_row categories[] = {
    {"ctype", VEL_CTYPE, ctype_items}, {"collate", VEL_COLLATE, collate_items},
    {"numeric", VEL_NUMERIC, nullptr}, {"monetary", VEL_MONETARY, nullptr},
    {"time", VEL_TIME, nullptr},       {"messages", VEL_MESSAGES, nullptr},
};

} // namespace

char portable_character(const vel_locale *locale, vel_wchar value) {
    return static_cast<char>(vel::portable_of(locale, value));
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
        sections.push_back({row.name, row.category, locale->file_names[index],
                            locale->codeset_names[index],
                            row.items_of ? row.items_of(*locale) : items()});
    }
    return sections;
}

} // namespace vel_tool

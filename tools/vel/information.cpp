#include "vel/information.h"

#include <algorithm>
#include <charconv>
#include <cstddef>

#include <fmt/format.h>

#include "common/locale_name.h"
#include "vel/failure.h"
#include "vel/formatted.h"
#include "vel/locale_handle.h"

namespace vel_tool {
namespace {

enum class holds {
    item, // a text of the locale, by its number
    word, // the same, but in ASCII always
    text, // a member of the conventions
    grouping,
    number,
};

struct info_row {
    const char *name;
    int32_t category;
    holds what;
    size_t where; // number of the (first) item, or offset in the conventions
    size_t count = 1;
};

constexpr info_row rows[] = {
    {"codeset", VEL_CTYPE, holds::word, VEL_ITEM_CODESET},

    {"decimal_point", VEL_NUMERIC, holds::item, VEL_ITEM_DECIMAL_POINT},
    {"thousands_sep", VEL_NUMERIC, holds::item, VEL_ITEM_THOUSANDS_SEP},
    {"grouping", VEL_NUMERIC, holds::grouping, offsetof(vel_conventions, numeric.grouping)},
    {"num_positive_sign", VEL_NUMERIC, holds::text,
     offsetof(vel_conventions, numeric.positive_sign)},
    {"num_negative_sign", VEL_NUMERIC, holds::text,
     offsetof(vel_conventions, numeric.negative_sign)},

    {"int_curr_symbol", VEL_MONETARY, holds::text,
     offsetof(vel_conventions, monetary.int_curr_symbol)},
    {"currency_symbol", VEL_MONETARY, holds::text,
     offsetof(vel_conventions, monetary.currency_symbol)},
    {"crncystr", VEL_MONETARY, holds::item, VEL_ITEM_CRNCYSTR},
    {"mon_decimal_point", VEL_MONETARY, holds::text,
     offsetof(vel_conventions, monetary.mon_decimal_point)},
    {"mon_thousands_sep", VEL_MONETARY, holds::text,
     offsetof(vel_conventions, monetary.mon_thousands_sep)},
    {"mon_grouping", VEL_MONETARY, holds::grouping, offsetof(vel_conventions, monetary.grouping)},
    {"positive_sign", VEL_MONETARY, holds::text, offsetof(vel_conventions, monetary.positive_sign)},
    {"negative_sign", VEL_MONETARY, holds::text, offsetof(vel_conventions, monetary.negative_sign)},
    {"int_frac_digits", VEL_MONETARY, holds::number,
     offsetof(vel_conventions, monetary.int_frac_digits)},
    {"frac_digits", VEL_MONETARY, holds::number, offsetof(vel_conventions, monetary.frac_digits)},
    {"p_cs_precedes", VEL_MONETARY, holds::number,
     offsetof(vel_conventions, monetary.p_cs_precedes)},
    {"p_sep_by_space", VEL_MONETARY, holds::number,
     offsetof(vel_conventions, monetary.p_sep_by_space)},
    {"n_cs_precedes", VEL_MONETARY, holds::number,
     offsetof(vel_conventions, monetary.n_cs_precedes)},
    {"n_sep_by_space", VEL_MONETARY, holds::number,
     offsetof(vel_conventions, monetary.n_sep_by_space)},
    {"p_sign_posn", VEL_MONETARY, holds::number, offsetof(vel_conventions, monetary.p_sign_posn)},
    {"n_sign_posn", VEL_MONETARY, holds::number, offsetof(vel_conventions, monetary.n_sign_posn)},

    {"calendar", VEL_TIME, holds::word, VEL_ITEM_CALENDAR},
    {"abday", VEL_TIME, holds::item, VEL_ITEM_ABDAY_1, 7},
    {"day", VEL_TIME, holds::item, VEL_ITEM_DAY_1, 7},
    {"abmon", VEL_TIME, holds::item, VEL_ITEM_ABMON_1, 20},
    {"mon", VEL_TIME, holds::item, VEL_ITEM_MON_1, 20},
    {"d_t_fmt", VEL_TIME, holds::item, VEL_ITEM_D_T_FMT},
    {"d_fmt", VEL_TIME, holds::item, VEL_ITEM_D_FMT},
    {"t_fmt", VEL_TIME, holds::item, VEL_ITEM_T_FMT},
    {"am_str", VEL_TIME, holds::item, VEL_ITEM_AM_STR},
    {"pm_str", VEL_TIME, holds::item, VEL_ITEM_PM_STR},
    {"t_fmt_ampm", VEL_TIME, holds::item, VEL_ITEM_T_FMT_AMPM},
    {"era", VEL_TIME, holds::item, VEL_ITEM_ERA},
    {"era_d_t_fmt", VEL_TIME, holds::item, VEL_ITEM_ERA_D_T_FMT},
    {"era_d_fmt", VEL_TIME, holds::item, VEL_ITEM_ERA_D_FMT},
    {"era_t_fmt", VEL_TIME, holds::item, VEL_ITEM_ERA_T_FMT},
    {"alt_digits", VEL_TIME, holds::item, VEL_ITEM_ALT_DIGITS},

    {"yesexpr", VEL_MESSAGES, holds::item, VEL_ITEM_YESEXPR},
    {"noexpr", VEL_MESSAGES, holds::item, VEL_ITEM_NOEXPR},
    {"yesstr", VEL_MESSAGES, holds::item, VEL_ITEM_YESSTR},
    {"nostr", VEL_MESSAGES, holds::item, VEL_ITEM_NOSTR},
};

constexpr std::pair<const char *, int32_t> categories[] = {
    {"ctype", VEL_CTYPE},       {"collate", VEL_COLLATE}, {"numeric", VEL_NUMERIC},
    {"monetary", VEL_MONETARY}, {"time", VEL_TIME},       {"messages", VEL_MESSAGES},
};

std::string bytes_at(const code_set &codes, const char *text) {
    static constexpr char zeros[4] = {};
    const char *end = text;
    while (memcmp(end, zeros, codes.shortest()) != 0) end += codes.shortest();
    return std::string(text, end);
}

std::string group_sizes(const vel_grouping &grouping) {
    std::string sizes;
    for (int32_t i = 0; i < grouping.count; ++i) {
        sizes += fmt::format("{}{}", i > 0 ? ";" : "", grouping.sizes[i]);
    }
    return sizes.empty() ? "none" : sizes;
}

template <class Member> const Member &member(const code_set &codes, const info_row &row) {
    const auto *start = reinterpret_cast<const char *>(vel_localeconv(codes.locale()));
    return *reinterpret_cast<const Member *>(start + row.where);
}

// Gives up on a month that the locale's calendar does not have.
info_value item_value(const code_set &codes, const info_row &row, size_t index) {
    std::string name = row.count == 1 ? row.name : fmt::format("{}_{}", row.name, index + 1);
    clear_error(codes.locale());
    const char *text = vel_nl_langinfo(codes.locale(), static_cast<int32_t>(row.where + index));
    if (!text && error_of(codes.locale()) == 0) return {name, "none", false};
    if (!text) {
        throw failure(fmt::format("the locale has no {}: {}", name, error_text(codes.locale())));
    }
    if (row.what == holds::item) return {name, bytes_at(codes, text), true};
    std::string word = text;
    return {name, word.substr(0, word.find('\n')), false};
}

info_value value_at(const code_set &codes, const info_row &row, size_t index) {
    switch (row.what) {
    case holds::item:
    case holds::word:
        break;
    case holds::text:
        return {row.name, bytes_at(codes, member<vel_text>(codes, row).bytes), true};
    case holds::grouping:
        return {row.name, group_sizes(member<vel_grouping>(codes, row)), false};
    case holds::number:
        return {row.name, std::to_string(member<int32_t>(codes, row)), false};
    }
    return item_value(codes, row, index);
}

std::vector<info_value> values_of(const code_set &codes, const info_row &row) {
    std::vector<info_value> values;
    for (size_t i = 0; i < row.count; ++i) {
        // Calendars have 12 to 20 months.
        bool may_be_absent = row.count > 7;
        if (may_be_absent &&
            !vel_nl_langinfo(codes.locale(), static_cast<int32_t>(row.where + i))) {
            break;
        }
        values.push_back(value_at(codes, row, i));
    }
    return values;
}

// "mon_13" is value 12 of "mon"; -1 when the word means something else.
int index_in(const info_row &row, std::string_view word) {
    std::string_view name = row.name;
    if (row.count == 1 || word.substr(0, name.size()) != name) return -1;
    word.remove_prefix(name.size());
    if (word.size() < 2 || word[0] != '_') return -1;
    int number = 0;
    auto [stop, error] = std::from_chars(word.data() + 1, word.data() + word.size(), number);
    bool good = error == std::errc() && stop == word.data() + word.size() && number >= 1 &&
                number <= static_cast<int>(row.count);
    return good ? number - 1 : -1;
}

bool is_number_of(const info_row &row, size_t item) {
    bool has_number = row.what == holds::item || row.what == holds::word;
    return has_number && item >= row.where && item - row.where < row.count;
}

std::vector<info_value> by_name(const code_set &codes, const std::string &word) {
    size_t item = 0;
    const char *end = word.data() + word.size();
    auto [stop, error] = std::from_chars(word.data(), end, item);
    bool is_number = error == std::errc() && stop == end;
    for (const info_row &row : rows) {
        if (is_number && is_number_of(row, item)) return {value_at(codes, row, item - row.where)};
        if (word == row.name) return values_of(codes, row);
        int index = index_in(row, word);
        if (index >= 0) return {value_at(codes, row, static_cast<size_t>(index))};
    }
    return {};
}

int32_t category_named(std::string word) {
    for (const char *prefix : {"lc_", "vel_"}) {
        if (word.rfind(prefix, 0) == 0) word.erase(0, strlen(prefix));
    }
    for (const auto &[name, category] : categories) {
        if (word == name) return category;
    }
    return 0;
}

} // namespace

std::vector<info_group> information_of(const code_set &codes, int32_t category) {
    std::vector<info_group> groups;
    for (const info_row &row : rows) {
        if (row.category == category) {
            groups.push_back({row.name, values_of(codes, row)});
        }
    }
    return groups;
}

std::vector<info_value> information_named(const code_set &codes, const std::string &word) {
    std::string name = tools::lower_case(word);
    std::vector<info_value> values;
    if (int32_t category = category_named(name)) {
        for (info_group &group : information_of(codes, category)) {
            values.insert(values.end(), group.values.begin(), group.values.end());
        }
        return values;
    }
    values = by_name(codes, name);
    if (values.empty()) {
        throw failure(
            fmt::format("there is no item '{}': 'vel info' without a name lists all", word));
    }
    return values;
}

} // namespace vel_tool

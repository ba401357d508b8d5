// The items of a locale by number, in both forms.
#include "ext/error.h"
#include "record/texts.h"
#include "vels/info.h"

namespace vel {
namespace {

// Where the strings with the numbers from `first` to `last` are: one string of a category, or the
// members of a list. A list that is shorter fails with `number`, or is padded with empty strings
// when that is 0.
struct item_range {
    int32_t first, last;
    const locale_text *(*text)(const vel_locale &locale);
    text_list time_category::*list;
    int32_t number;
};

template <locale_text time_category::*text> const locale_text *of_time(const vel_locale &locale) {
    return &(locale.time.*text);
}
template <locale_text query_texts::*text> const locale_text *made(const vel_locale &locale) {
    return &(locale.query_texts.*text);
}
template <locale_text numeric_category::*text>
const locale_text *of_numeric(const vel_locale &locale) {
    return &(locale.conventions.numeric.*text);
}
template <int32_t index> const locale_text *of_messages(const vel_locale &locale) {
    return &locale.conventions.messages.texts[index];
}

using time = time_category;
using numeric = numeric_category;

constexpr item_range list_items(int32_t first, int32_t count, text_list time::*list,
                                int32_t number) {
    return {first, first + count - 1, nullptr, list, number};
}
constexpr item_range item(int32_t number, const locale_text *(*text)(const vel_locale &)) {
    return {number, number, text, nullptr, 0};
}

constexpr item_range items[] = {
    item(VEL_ITEM_D_T_FMT, of_time<&time::d_t_fmt>),
    list_items(VEL_ITEM_DAY_1, 7, &time::days, 0),
    list_items(VEL_ITEM_ABDAY_1, 7, &time::abbreviated_days, 0),
    list_items(VEL_ITEM_MON_1, 20, &time::months, VEL_EBADLEN),
    list_items(VEL_ITEM_ABMON_1, 20, &time::abbreviated_months, VEL_EBADLEN),
    item(VEL_ITEM_DECIMAL_POINT, of_numeric<&numeric::decimal_point>),
    item(VEL_ITEM_THOUSANDS_SEP, of_numeric<&numeric::thousands_sep>),
    item(VEL_ITEM_YESSTR, of_messages<message_yesstr>),
    item(VEL_ITEM_NOSTR, of_messages<message_nostr>),
    item(VEL_ITEM_CRNCYSTR, made<&query_texts::currency>),
    item(VEL_ITEM_D_FMT, of_time<&time::d_fmt>),
    item(VEL_ITEM_T_FMT, of_time<&time::t_fmt>),
    item(VEL_ITEM_T_FMT_AMPM, of_time<&time::t_fmt_ampm>),
    item(VEL_ITEM_AM_STR, of_time<&time::am>),
    item(VEL_ITEM_PM_STR, of_time<&time::pm>),
    item(VEL_ITEM_ERA, made<&query_texts::eras>),
    item(VEL_ITEM_ERA_D_FMT, of_time<&time::era_d_fmt>),
    item(VEL_ITEM_ERA_D_T_FMT, of_time<&time::era_d_t_fmt>),
    item(VEL_ITEM_ERA_T_FMT, of_time<&time::era_t_fmt>),
    item(VEL_ITEM_ALT_DIGITS, made<&query_texts::alt_digits>),
    item(VEL_ITEM_YESEXPR, of_messages<message_yesexpr>),
    item(VEL_ITEM_NOEXPR, of_messages<message_noexpr>),
};

// A string to be handed out; both forms are null when there is none.
struct answer {
    const char *bytes = nullptr;
    const vel_wchar *wide = nullptr;

    constexpr answer() = default;
    constexpr answer(const char *b, const vel_wchar *w) : bytes(b), wide(w) {}
    explicit answer(const locale_text &text) : bytes(text.bytes), wide(text.wide) {}
};

template <size_t N> struct widened {
    vel_wchar values[N];
    explicit constexpr widened(const char (&text)[N]) : values{} {
        for (size_t i = 0; i < N; ++i) values[i] = static_cast<vel_wchar>(text[i]);
    }
};
constexpr widened wide_gregorian("gregorian\n");
constexpr widened wide_hebrew("hebrew\n");
constexpr widened wide_islamic("islamic\n");
constexpr widened wide_arabic("arabic\n");

constexpr answer calendar_names[] = {
    {},
    {"gregorian\n", wide_gregorian.values},
    {"hebrew\n", wide_hebrew.values},
    {"islamic\n", wide_islamic.values},
    {"arabic\n", wide_arabic.values},
};

answer member(vel_locale *locale, const item_range &range, int32_t index) {
    const text_list &list = locale->time.*range.list;
    if (index < list.count) return answer(list.items[index]);
    if (range.number == 0) return answer(empty_text());
    set_error(locale, range.number);
    return {};
}

answer find_item(vel_locale *locale, int32_t number) {
    if (!locale) return {};
    if (number == VEL_ITEM_CODESET) {
        return {locale->codeset_names[category_index(VEL_CTYPE)],
                locale->wide_codeset_names[category_index(VEL_CTYPE)]};
    }
    if (number == VEL_ITEM_CALENDAR) return calendar_names[locale->time.calendar];
    for (const item_range &range : items) {
        if (number < range.first || number > range.last) continue;
        if (range.list) return member(locale, range, number - range.first);
        return answer(*range.text(*locale));
    }
    return {};
}

constexpr int32_t time_formats[] = {
    VEL_ITEM_D_FMT,     VEL_ITEM_D_T_FMT,     VEL_ITEM_T_FMT,     VEL_ITEM_T_FMT_AMPM,
    VEL_ITEM_ERA_D_FMT, VEL_ITEM_ERA_D_T_FMT, VEL_ITEM_ERA_T_FMT,
};

} // namespace
} // namespace vel

const char *vel_nl_langinfo(vel_locale *locale, int32_t item) {
    return vel::find_item(locale, item).bytes;
}

const vel_wchar *vel_wc_nl_langinfo(vel_locale *locale, int32_t item) {
    return vel::find_item(locale, item).wide;
}

const char *vel_get_ltime_fmts(vel_locale *locale, int32_t item) {
    for (int32_t format : vel::time_formats) {
        if (item == format && locale) return vel::find_item(locale, item).bytes;
    }
    return vel::empty_text().bytes;
}

const vel_conventions *vel_localeconv(vel_locale *locale) {
    return locale ? &locale->conventions : nullptr;
}

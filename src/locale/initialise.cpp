#include "locale/initialise.h"

#include "collate/layout.h"
#include "ctype/complete.h"
#include "ext/error.h"
#include "ext/memory.h"
#include "record/texts.h"
#include "vels/multibyte.h"

namespace vel {
namespace {

// The characters of a string, decoded into `wide`; as many as fit when it is too small.
bool decode(vel_locale *locale, const char *bytes, vel_wchar *wide, int32_t room, int32_t *length) {
    *length = locale->decode(locale, wide, bytes, room);
    return *length >= 0;
}

bool keep_wide(vel_locale *locale, locale_text &text, const vel_wchar *wide, int32_t length) {
    vel_wchar *copy = vel_alloc_array<vel_wchar>(static_cast<size_t>(length) + 1);
    if (!copy) {
        set_error(locale, VEL_ENOMEM);
        return false;
    }
    memcpy(copy, wide, static_cast<size_t>(length) * sizeof *copy);
    copy[length] = 0;
    text.wide = copy;
    return true;
}

// The wide copy of a string; its length shows only when it has been decoded.
bool widen(vel_locale *locale, locale_text &text) {
    constexpr int32_t small = 256;
    release_wide(text);
    if (text.bytes == empty_text().bytes) return true;
    vel_wchar wide[small];
    int32_t length;
    if (!decode(locale, text.bytes, wide, small, &length)) return false;
    if (length < small) return keep_wide(locale, text, wide, length);
    for (int32_t room = small * 4; room <= INT32_MAX / 2; room *= 2) {
        auto longer = make_host_array<vel_wchar>(static_cast<size_t>(room));
        if (!longer) break;
        if (!decode(locale, text.bytes, longer.get(), room, &length)) return false;
        if (length < room) return keep_wide(locale, text, longer.get(), length);
    }
    set_error(locale, VEL_ENOMEM);
    return false;
}

template <typename Category, size_t N>
bool widen_texts(vel_locale *locale, Category &category, locale_text Category::*const (&texts)[N]) {
    for (auto text : texts) {
        if (!widen(locale, category.*text)) return false;
    }
    return true;
}

bool widen_list(vel_locale *locale, text_list &list) {
    for (int32_t i = 0; i < list.count; ++i) {
        if (!widen(locale, list.items[i])) return false;
    }
    return true;
}

bool widen_time(vel_locale *locale) {
    for (auto list : time_lists) {
        if (!widen_list(locale, locale->time.*list)) return false;
    }
    return widen_texts(locale, locale->time, time_texts);
}

// The flat tables of a single-byte code set are there already: they are made with CTYPE.
bool has_characters(vel_locale *locale) {
    return !locale->ctype.characters->empty();
}

number_marks marks(const locale_text &decimal_point, const locale_text &thousands_sep,
                   const locale_text &positive_sign, const locale_text &negative_sign) {
    return {decimal_point.wide,    vel_wcslen(decimal_point.wide),
            thousands_sep.wide,    vel_wcslen(thousands_sep.wide),
            positive_sign.wide[0], negative_sign.wide[0]};
}

} // namespace

int32_t initialise_ctype(vel_locale *locale) {
    return complete_ctype(locale) == 0 ? 1 : -1;
}

int32_t initialise_collate(vel_locale *locale) {
    return lay_out(locale->collate) ? 1 : fail(locale, VEL_ENOMEM);
}

void mark_numeric(vel_locale *locale) {
    const numeric_category &from = locale->conventions.numeric;
    locale->numeric_marks =
        marks(from.decimal_point, from.thousands_sep, from.positive_sign, from.negative_sign);
}

void mark_monetary(vel_locale *locale) {
    const monetary_category &from = locale->conventions.monetary;
    locale->monetary_marks = marks(from.mon_decimal_point, from.mon_thousands_sep,
                                   from.positive_sign, from.negative_sign);
}

int32_t initialise_numeric(vel_locale *locale) {
    if (!has_characters(locale)) return fail_zero(locale, VEL_ENOERA);
    if (!widen_texts(locale, locale->conventions.numeric, numeric_texts)) return -1;
    mark_numeric(locale);
    return 1;
}

int32_t initialise_monetary(vel_locale *locale) {
    if (!has_characters(locale)) return fail_zero(locale, VEL_ENOERA);
    if (!widen_texts(locale, locale->conventions.monetary, monetary_texts)) return -1;
    mark_monetary(locale);
    return 1;
}

int32_t initialise_time(vel_locale *locale) {
    if (!has_characters(locale)) return fail_zero(locale, VEL_ENOERA);
    return widen_time(locale) ? 1 : -1;
}

int32_t initialise_messages(vel_locale *locale) {
    if (!has_characters(locale)) return fail_zero(locale, VEL_ENOERA);
    for (locale_text &text : locale->conventions.messages.texts) {
        if (!widen(locale, text)) return -1;
    }
    return 1;
}

} // namespace vel

// The release of each category.
#include "ext/memory.h"
#include "record/category.h"
#include "record/texts.h"

namespace vel {
namespace {

// Long enough for a terminator of either kind, and for a decoder that looks beyond it.
constexpr vel_wchar nothing[2] = {};

template <typename T> void release(T *&block) {
    vel_free(block);
    block = nullptr;
}

} // namespace

locale_text empty_text() {
    static_assert(sizeof nothing >= text_padding);
    vel_wchar *wide = const_cast<vel_wchar *>(nothing);
    return {reinterpret_cast<char *>(wide), wide};
}

void release_wide(locale_text &text) {
    if (text.wide != nothing) vel_free(text.wide);
    text.wide = empty_text().wide;
}

void release_text(locale_text &text) {
    release_wide(text);
    if (text.bytes != empty_text().bytes) vel_free(text.bytes);
    text = empty_text();
}

void release_list(text_list &list) {
    for (int32_t i = 0; i < list.count; ++i) release_text(list.items[i]);
    vel_free(list.items);
    list = {};
}

void release_byte_tables(vel_locale *locale) {
    release(locale->byte_upper);
    release(locale->byte_lower);
    release(locale->byte_classes);
}

void release_time_derived(vel_locale *locale) {
    release(locale->time_derived.trees);
    release(locale->time_derived.eras);
    locale->time_derived.count = 0;
    locale->time_derived.era_count = 0;
}

void release_query_texts(vel_locale *locale) {
    query_texts &texts = locale->query_texts;
    release(texts.block);
    texts.eras = texts.alt_digits = texts.currency = empty_text();
}

void release_ctype(vel_locale *locale) {
    ctype_category &ctype = locale->ctype;
    release_table(ctype.characters);
    release_table(ctype.cases);
    for (int32_t i = 0; i < ctype.class_count; ++i) vel_free(ctype.classes[i].name);
    vel_free(ctype.classes);
    vel_free(ctype.pairs);
    null_ctype(locale);
}

void release_collate(vel_locale *locale) {
    release_table(locale->collate.characters);
    vel_free(locale->collate.blocks);
    vel_free(locale->collate.layout.block);
    null_collate(locale);
}

void release_numeric(vel_locale *locale) {
    for (auto text : numeric_texts) release_text(locale->conventions.numeric.*text);
    null_numeric(locale);
}

void release_monetary(vel_locale *locale) {
    for (auto text : monetary_texts) release_text(locale->conventions.monetary.*text);
    null_monetary(locale);
}

void release_time(vel_locale *locale) {
    for (auto text : time_texts) release_text(locale->time.*text);
    for (auto list : time_lists) release_list(locale->time.*list);
    null_time(locale);
}

void release_messages(vel_locale *locale) {
    for (locale_text &text : locale->conventions.messages.texts) release_text(text);
    null_messages(locale);
}

} // namespace vel

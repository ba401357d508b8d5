#include "locale/query_texts.h"

#include "charmap/character.h"
#include "ext/error.h"
#include "ext/memory.h"
#include "record/category.h"
#include "record/portable.h"
#include "record/texts.h"

namespace vel {
namespace {

// What a string is made of: a sign, if any, and the members of a list.
struct recipe {
    locale_text query_texts::*made;
    char sign; // 0 for none
    text_list members;
};

// How the symbol stands to an amount; there is nothing to tell without a symbol.
recipe currency_of(vel_locale *locale) {
    monetary_category &monetary = locale->conventions.monetary;
    if (!monetary.currency_symbol.wide[0]) return {&query_texts::currency, 0, {}};
    char sign = monetary.p_cs_precedes == 0 ? '+' : '-';
    return {&query_texts::currency, sign, {1, &monetary.currency_symbol}};
}

// The bytes of a string before its terminator, or before what is no text of the code set.
size_t byte_length(const sealed_table &table, const char *text) {
    const unsigned char *start = as_bytes(text), *at = start;
    for (;;) {
        walk_end end = table.walk(at);
        if (!is_end(end.cell) || is_null_character(at, end.used)) break;
        at += end.used;
    }
    return static_cast<size_t>(at - start);
}

// Makes both forms of a string, or only counts them when it has no place to write to.
class composer {
public:
    explicit composer(const vel_locale *locale, locale_text out = {})
        : locale_(locale), out_(out) {}

    void compose(const recipe &of) {
        if (of.sign) put(of.sign);
        for (int32_t i = 0; i < of.members.count; ++i) {
            if (i > 0) put(';');
            append(of.members.items[i]);
        }
    }
    size_t values() const { return values_; }
    size_t bytes() const { return bytes_; }

private:
    const sealed_table &table() const { return characters_of(locale_); }

    void put(char portable) {
        unsigned char bytes[max_character_bytes];
        vel_wchar value = value_of(locale_, portable);
        size_t size = put_character(table(), value, bytes);
        if (size) add(&value, 1, bytes, size);
    }
    void append(const locale_text &text) {
        size_t count = 0;
        while (text.wide[count]) ++count;
        add(text.wide, count, as_bytes(text.bytes), byte_length(table(), text.bytes));
    }
    void add(const vel_wchar *wide, size_t count, const unsigned char *bytes, size_t size) {
        if (out_.wide) {
            memcpy(out_.wide + values_, wide, count * sizeof *wide);
            memcpy(out_.bytes + bytes_, bytes, size);
        }
        values_ += count;
        bytes_ += size;
    }

    const vel_locale *locale_;
    locale_text out_;
    size_t values_ = 0;
    size_t bytes_ = 0;
};

} // namespace

int32_t build_query_texts(vel_locale *locale) {
    release_query_texts(locale);
    if (characters_of(locale).empty()) return 0;
    const recipe recipes[] = {
        {&query_texts::eras, 0, locale->time.eras},
        {&query_texts::alt_digits, 0, locale->time.alt_digits},
        currency_of(locale),
    };
    size_t values = 0, bytes = 0;
    for (const recipe &of : recipes) {
        composer string(locale);
        string.compose(of);
        if (!string.values()) continue;
        values += string.values() + 1;
        bytes += string.bytes() + text_padding;
    }
    if (values == 0) return 0;

    size_t size = values * sizeof(vel_wchar) + bytes;
    void *block = vel_alloc(size);
    if (!block) return fail(locale, VEL_ENOMEM);
    memset(block, 0, size); // the terminators
    locale->query_texts.block = block;
    vel_wchar *wide = static_cast<vel_wchar *>(block);
    locale_text out = {reinterpret_cast<char *>(wide + values), wide};
    for (const recipe &of : recipes) {
        composer string(locale, out);
        string.compose(of);
        if (!string.values()) continue;
        locale->query_texts.*of.made = out;
        out.wide += string.values() + 1;
        out.bytes += string.bytes() + text_padding;
    }
    return 0;
}

} // namespace vel

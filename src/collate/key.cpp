// Sort keys: bytes whose plain order is that of the collation.
#include "collate/faces.h"
#include "collate/plain_text.h"
#include "collate/quick_key.h"
#include "collate/validity.h"
#include "vels/collate.h"
#include "vels/multibyte.h"

namespace vel {
namespace {

// Lengths beyond what a result can say are all the longest it can.
int32_t as_length(size_t count) {
    return count < INT32_MAX ? static_cast<int32_t>(count) : INT32_MAX;
}

struct key_form {
    uint32_t weight_digits, value_digits;

    explicit key_form(const vel_locale *locale) {
        int32_t longest = characters_of(locale).longest;
        int32_t spare_bits = 8 * (max_character_bytes - longest);
        weight_digits = key_digits(static_cast<uint32_t>(locale->collate.max_weight));
        value_digits = key_digits(longest ? 0xFFFFFFFFu >> spare_bits : 0);
    }
};

// Writes the weights of one pass.
void put_pass(key_writer &to, const key_form &form, const weighing &by, int32_t pass,
              const unit_list &list) {
    key_writer key = to; // a copy that no byte stored can change
    rank_stream ranks(by, pass, listed_units(list, by.is_backward(pass)));
    for (rank_t rank = ranks.next(); !is_end_rank(rank); rank = ranks.next()) {
        key.put_number(rank_number(rank), form.weight_digits);
        if (rank_value(rank)) key.put_number(rank_value(rank), form.value_digits);
    }
    to = key;
}

// The same for units of which none expands.
void put_plain_pass(key_writer &to, const key_form &form, const weighing &by, int32_t pass,
                    const unit_list &list) {
    unsigned char *at = to.room_for(list.size() * (form.weight_digits + form.value_digits));
    if (!at || by.is_backward(pass)) return put_pass(to, form, by, pass, list);
    const uint16_t *weights = by.by.layout.weights + pass;
    const uint32_t row_bits = by.by.layout.row_bits;
    for (const unit *next = list.begin(), *end = list.end(); next < end; ++next) {
        uint32_t weight = weights[next->index << row_bits];
        if (weight == weight_ignore) continue;
        at = key_writer::write_number(at, weight & weight_mask, form.weight_digits);
        if (weight & weight_positional) {
            at = key_writer::write_number(at, next->value, form.value_digits);
        }
    }
    to.stored_up_to(at);
}

// The key of a text by the tables of the locale, behind what the writer has written.
template <typename Text>
[[gnu::noinline]] int32_t put_key(vel_locale *locale, key_writer key, Text text) {
    weighing by(locale->collate);
    key_form form(locale);
    if (by.passes() == 0) return as_length(key.finish());
    unit_list list;
    auto put = keep_units(by, text, list) & expands ? put_pass : put_plain_pass;
    if (list.failed()) return fail(locale, VEL_ENOMEM);
    for (int32_t pass = 0; pass < by.passes(); ++pass) {
        if (pass > 0) key.put(pass_separator);
        put(key, form, by, pass, list);
    }
    return as_length(key.finish());
}

int32_t put_utf8_key(vel_locale *locale, key_writer key, const char *string) {
    utf8_text text{as_bytes(string), find_plain_end(as_bytes(string), -1)};
    if (text.end) {
        if (put_quick_key(key, locale->collate, text)) return as_length(key.finish());
    } else {
        text = text_in<utf8_text>(string, -1);
        if (!is_valid(locale, text)) return fail(locale, VEL_EILSEQ);
    }
    return put_key(locale, key, text);
}

// Where the locale has no collation the key is the string itself.
int32_t put_string(vel_locale *locale, char *out, const vel_wchar *wide, int32_t size) {
    auto encode = locale->single_byte ? vel_is_wcstombs : vel_full_wcstombs;
    if (encode(locale, out, wide, size > 0 ? size : 0) < 0) return -1;
    size_t length = 0;
    for (; *wide; ++wide) {
        int32_t bytes = vel_wclen(locale, *wide);
        if (bytes < 0) return -1;
        length += static_cast<size_t>(bytes);
    }
    return as_length(length);
}

int32_t put_thai(vel_locale *locale, char *out, const vel_wchar *wide, int32_t size) {
    encoded_text text(locale, find_text(wide, -1));
    return text ? vel_thaismoxfrm(locale, out, text.bytes(), size) : -1;
}

bool is_tabled(const collate_category &collate) {
    return !collate.code_order && collate.kind != collation_thai;
}

key_writer writer_for(char *out, int32_t size) {
    return {as_bytes(out), size > 0 ? static_cast<size_t>(size) : 0};
}

bool is_missing(const char *out, const void *string, int32_t size) {
    return !string || (!out && size > 0);
}

} // namespace
} // namespace vel

using namespace vel;

int32_t vel_wcsxfrm(vel_locale *locale, char *out, const vel_wchar *wide, int32_t size) {
    if (!locale) return -1;
    if (is_missing(out, wide, size)) return fail(locale, VEL_EFAULT);
    if (is_tabled(locale->collate)) {
        return put_key(locale, writer_for(out, size), find_text(wide, -1));
    }
    return locale->collate.code_order ? put_string(locale, out, wide, size)
                                      : put_thai(locale, out, wide, size);
}

int32_t vel_full_mbsxfrm(vel_locale *locale, char *out, const char *string, int32_t size) {
    if (!locale) return -1;
    if (is_missing(out, string, size)) return fail(locale, VEL_EFAULT);
    if (is_tabled(locale->collate)) {
        key_writer key = writer_for(out, size);
        if (is_utf8(locale)) return put_utf8_key(locale, key, string);
        if (locale->single_byte) return put_key(locale, key, text_in<byte_text>(string, -1));
    }
    decoded_text text(locale, string, -1);
    return text ? vel_wcsxfrm(locale, out, text.values(), size) : -1;
}

#include "collate/primary_order.h"

namespace vel {
namespace {

// Enough of a key to compare it with that of a character or two.
constexpr size_t thai_key_room = 32;

struct thai_key {
    unsigned char bytes[thai_key_room];

    explicit thai_key(wide_text text) : bytes{} {
        unsigned char string[thai_key_room];
        size_t count = 0;
        while (!text.done() && count + 1 < thai_key_room) {
            string[count++] = static_cast<unsigned char>(text.take());
        }
        string[count] = 0;
        write_thai_key(bytes, thai_key_room, string);
    }
};

// A character's bytes in the upper end of a word, where words compare as they do.
uint32_t upper_bytes(const sealed_table &table, vel_wchar value) {
    return value << 8 * (max_character_bytes - table.code_bytes(value));
}

// One value of an expansion as a text.
wide_text part_of(const collating_expansion &expansion, int32_t number) {
    const vel_wchar *value = expansion.values + number;
    return {value, value + 1};
}

} // namespace

primary_order::primary_order(const vel_locale *locale)
    : locale_(locale), by_(locale->collate, {true, true, true, false}) {
    const collate_category &collate = locale->collate;
    for (int32_t i = 0; i < collate.expansion_count && by_.passes() > 0; ++i) {
        const collating_expansion &expansion = collate.expansions[i];
        rank_t first = rank_of_end;
        for (int32_t k = 0; k < expansion.count && is_end_rank(first); ++k) {
            rank_stream ranks(by_, 0, read_units<wide_text>(by_, part_of(expansion, k), nullptr));
            first = ranks.next();
        }
        uint32_t number = rank_number(first);
        expansion_starts_[number / 64] |= uint64_t{1} << number % 64;
    }
}

rank_t primary_order::first_rank(wide_text text) const {
    const collate_category &collate = locale_->collate;
    bool is_forward = by_.passes() > 0 && !by_.is_backward(0);
    if (collate.code_order || collate.kind == collation_thai || !is_forward) return 0;
    return rank_stream(by_, 0, read_units<wide_text>(by_, text, nullptr)).next();
}

int32_t primary_order::compare(wide_text a, wide_text b) {
    const collate_category &collate = locale_->collate;
    if (collate.code_order) return compare_bytes(a, b);
    if (collate.kind == collation_thai) {
        return memcmp(thai_key(a).bytes, thai_key(b).bytes, thai_key_room);
    }
    if (by_.passes() == 0) return 0;
    if (by_.is_backward(0)) return compare_backward(a, b);
    rank_stream ranks_a(by_, 0, read_units<wide_text>(by_, a, nullptr));
    rank_stream ranks_b(by_, 0, read_units<wide_text>(by_, b, nullptr));
    return compare_ranks(ranks_a, ranks_b);
}

int32_t primary_order::compare_bytes(wide_text a, wide_text b) const {
    const sealed_table &table = characters_of(locale_);
    while (!a.done() && !b.done()) {
        uint32_t x = upper_bytes(table, a.take()), y = upper_bytes(table, b.take());
        if (x != y) return x < y ? -1 : 1;
    }
    return b.done() - a.done();
}

int32_t primary_order::compare_backward(wide_text a, wide_text b) {
    unit_list left, right;
    keep_units(by_, a, left);
    keep_units(by_, b, right);
    failed_ = failed_ || left.failed() || right.failed();
    rank_stream ranks_left(by_, 0, listed_units(left, true));
    rank_stream ranks_right(by_, 0, listed_units(right, true));
    return compare_ranks(ranks_left, ranks_right);
}

bool primary_order::has_expansion(wide_text character) const {
    const collate_category &collate = locale_->collate;
    if (by_.passes() == 0 || collate.code_order) return false;
    rank_stream ranks(by_, 0, read_units<wide_text>(by_, character, nullptr));
    uint32_t number = rank_number(ranks.next());
    if (!(expansion_starts_[number / 64] >> number % 64 & 1)) return false;
    for (int32_t i = 0; i < collate.expansion_count; ++i) {
        if (is_key_of(collate.expansions[i], character)) return true;
    }
    return false;
}

bool primary_order::is_key_of(const collating_expansion &expansion, wide_text character) const {
    rank_stream ranks(by_, 0, read_units<wide_text>(by_, character, nullptr));
    for (int32_t i = 0; i < expansion.count; ++i) {
        rank_stream parts(by_, 0, read_units<wide_text>(by_, part_of(expansion, i), nullptr));
        for (rank_t part = parts.next(); !is_end_rank(part); part = parts.next()) {
            if (part != ranks.next()) return false;
        }
    }
    return is_end_rank(ranks.next());
}

} // namespace vel

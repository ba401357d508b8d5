#include "collate/layout.h"

#include <algorithm>

#include "collate/quick_key.h"
#include "ext/memory.h"

namespace vel {
namespace {

constexpr uint32_t weight_numbers = weight_mask + 1;

// Rows are powers of two long, so that the weights of an index lie in one cache line.
uint32_t bits_of_row(int32_t pass_count) {
    uint32_t bits = 0;
    while (1 << bits < pass_count) ++bits;
    return bits;
}

size_t parts_of(const collate_category &collate) {
    size_t count = 0;
    for (int32_t i = 0; i < collate.expansion_count; ++i) {
        count += static_cast<size_t>(collate.expansions[i].count);
    }
    return count;
}

uint32_t index_of(const collate_category &collate, vel_wchar value) {
    uint32_t cell = collate.characters->find_code(value);
    return is_end(cell) ? cell_value(cell) : no_index;
}

bool is_plain(uint16_t weight) {
    return !(weight & weight_expansion);
}

// Lays one pass out. Two particulars of the weights are evened out, so that comparing is a total
// order and keys have the same: number 1 is ignorable whatever its flag, as no key could hold it,
// and when one weight of a number is positional all of them are.
void put_weights(const collate_category &collate, int32_t pass, uint16_t *out, uint32_t row) {
    const uint16_t *weights = collate.passes[pass].weights;
    uint16_t flags[weight_numbers] = {}; // of each number
    for (int32_t i = 0; i < collate.index_count; ++i) {
        if (is_plain(weights[i])) flags[weights[i] & weight_mask] |= weights[i];
    }
    flags[weight_ignore] = 0;
    for (int32_t i = 0; i < collate.index_count; ++i, out += row) {
        uint32_t number = weights[i] & weight_mask;
        uint32_t evened = number | (flags[number] & weight_positional);
        *out = is_plain(weights[i]) ? static_cast<uint16_t>(evened) : weights[i];
    }
}

uint16_t traits_of_weights(const uint16_t *row, int32_t pass_count) {
    uint32_t before_last = 0; // bits of the weights
    bool ignorable = false;
    for (int32_t pass = 0; pass < pass_count; ++pass) {
        if (pass + 1 < pass_count) before_last |= row[pass];
        ignorable |= row[pass] == weight_ignore;
    }
    uint32_t last = row[pass_count - 1];
    bool expanding = (before_last | last) & weight_expansion;
    uint32_t traits = 0;
    if (last & weight_positional) traits |= ends_in_value;
    if (row[0] & weight_expansion) traits |= needs_units;
    if (expanding) traits |= expands;
    if (expanding || ignorable) traits |= has_odd_weights | has_odd_key;
    if (before_last & weight_positional) traits |= has_odd_key;
    return static_cast<uint16_t>(traits);
}

void put_traits(collate_category &collate, const uint16_t *rows, uint32_t row, uint16_t *traits) {
    collation_layout &layout = collate.layout;
    for (int32_t i = 0; i < collate.index_count; ++i, rows += row) {
        traits[i] = traits_of_weights(rows, collate.pass_count);
    }
    for (int32_t i = 0; i < collate.element_count; ++i) {
        const collating_element &element = collate.elements[i];
        for (int32_t k = 0; k < element.count; ++k) {
            vel_wchar value = element.values[k];
            if (k > 0) layout.followers[value / 64 % 16] |= uint64_t{1} << value % 64;
            uint32_t index = index_of(collate, value);
            if (index == no_index) continue;
            traits[index] |= k == 0 ? begins_element : follows_element;
            if (k > 0) traits[index] |= has_odd_key;
            if (k + 1 < element.count) traits[index] |= continues_element;
            if (element.count == 1) traits[index] |= is_whole_element | needs_units | has_odd_key;
        }
    }
}

void put_element_order(const collate_category &collate, uint32_t *order) {
    const collating_element *elements = collate.elements;
    uint32_t count = static_cast<uint32_t>(collate.element_count);
    for (uint32_t i = 0; i < count; ++i) order[i] = i;
    std::sort(order, order + count, [elements](uint32_t a, uint32_t b) {
        vel_wchar x = elements[a].values[0], y = elements[b].values[0];
        return x != y ? x < y : a < b;
    });
}

void put_parts(const collate_category &collate, uint32_t *parts) {
    for (int32_t i = 0; i < collate.expansion_count; ++i) {
        const collating_expansion &expansion = collate.expansions[i];
        for (int32_t k = 0; k < expansion.count; ++k) {
            *parts++ = index_of(collate, expansion.values[k]);
        }
    }
}

// Whether every byte sequence of a form has an index. Rows are shared, and neighbours often are
// the same; one that was looked at just before is not looked at again.
class coverage {
public:
    explicit coverage(const sealed_table &table) : table_(table) {}

    bool bytes() const { return ends(0, 0xFF); }

    bool utf8() {
        if (!ends(0, 0x7F)) return false;
        for (uint32_t lead = 0xC2; lead <= 0xF4; ++lead) {
            int32_t more = lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
            uint32_t first = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
            uint32_t last = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
            if (!below(table_.cells()[lead], 1, more, first, last)) return false;
        }
        return true;
    }

private:
    bool ends(uint32_t first, uint32_t last) const {
        for (uint32_t b = first; b <= last; ++b) {
            if (!is_end(table_.cells()[b])) return false;
        }
        return true;
    }

    bool below(uint32_t cell, int32_t depth, int32_t more, uint32_t first, uint32_t last) {
        if (!is_more(cell)) return false;
        bool whole = first == 0x80 && last == 0xBF;
        uint32_t &seen = seen_[depth][more];
        if (whole && seen == cell) return true;
        for (uint32_t b = first; b <= last; ++b) {
            uint32_t next = table_.step(cell, depth, b);
            bool good = more == 1 ? is_end(next) : below(next, depth + 1, more - 1, 0x80, 0xBF);
            if (!good) return false;
        }
        if (whole) seen = cell;
        return true;
    }

    const sealed_table &table_;
    uint32_t seen_[max_character_bytes][max_character_bytes] = {}; // whole rows of one place
};

int32_t quick_key_passes(const collate_category &collate) {
    if (collate.pass_count != 1 && collate.pass_count != 4) return 0;
    for (int32_t i = 0; i < collate.pass_count; ++i) {
        if (collate.passes[i].direction != pass_forward) return 0;
    }
    bool two_digits = key_digits(static_cast<uint32_t>(collate.max_weight)) == sizeof(uint16_t);
    return two_digits && collate.layout.covers_utf8 ? collate.pass_count : 0;
}

// The next part of a block whose parts are laid out from the strictest alignment down.
template <typename T> T *take(unsigned char *&block, size_t count) {
    T *part = reinterpret_cast<T *>(block);
    block += count * sizeof(T);
    return part;
}

} // namespace

bool lay_out(collate_category &collate) {
    if (collate.pass_count == 0) return true;
    collation_layout &layout = collate.layout = {};
    coverage covered(*collate.characters);
    layout.covers_bytes = covered.bytes();
    layout.covers_utf8 = covered.utf8();
    layout.row_bits = bits_of_row(collate.pass_count);
    layout.quick_key_passes = quick_key_passes(collate);
    uint32_t row = 1u << layout.row_bits;
    size_t indexes = static_cast<size_t>(collate.index_count);
    size_t elements = static_cast<size_t>(collate.element_count);
    size_t parts = parts_of(collate);
    size_t weights = indexes * row;
    size_t records = layout.quick_key_passes ? quick_key_records : 0;
    size_t key_weights = layout.quick_key_passes ? weights : 0;
    size_t size = records * sizeof(quick_key_record) + (elements + parts) * sizeof(uint32_t) +
                  (weights + key_weights + indexes) * sizeof(uint16_t);
    auto *block = static_cast<unsigned char *>(vel_alloc(size + 1));
    if (!block) return false;
    layout.block = block;
    auto *quick_keys = take<quick_key_record>(block, records);
    uint32_t *order = take<uint32_t>(block, elements);
    uint32_t *part_indexes = take<uint32_t>(block, parts);
    uint16_t *rows = take<uint16_t>(block, weights);
    uint16_t *digits = take<uint16_t>(block, key_weights);
    uint16_t *traits = take<uint16_t>(block, indexes);
    for (size_t i = 0; i < weights; ++i) rows[i] = weight_ignore;
    for (int32_t i = 0; i < collate.pass_count; ++i) put_weights(collate, i, rows + i, row);
    put_element_order(collate, order);
    put_parts(collate, part_indexes);
    put_traits(collate, rows, row, traits);
    for (size_t i = 0; i < key_weights; ++i) digits[i] = digits_of_weight(rows[i] & weight_mask);
    layout.weights = rows;
    layout.key_digits = digits;
    layout.traits = traits;
    layout.element_order = order;
    layout.expansion_parts = part_indexes;
    layout.quick_keys = quick_keys;
    if (records) put_quick_keys(collate, quick_keys);
    return true;
}

} // namespace vel

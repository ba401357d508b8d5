#include "collate/layout.h"

#include <algorithm>

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
    uint64_t positional[weight_numbers / 64] = {};
    for (int32_t i = 0; i < collate.index_count; ++i) {
        uint32_t number = weights[i] & weight_mask;
        bool flag = is_plain(weights[i]) && weights[i] & weight_positional;
        positional[number / 64] |= static_cast<uint64_t>(flag) << number % 64;
    }
    for (int32_t i = 0; i < collate.index_count; ++i, out += row) {
        uint32_t number = weights[i] & weight_mask;
        bool flag = positional[number / 64] >> number % 64 & 1;
        *out = weights[i];
        if (!is_plain(weights[i])) continue;
        *out = static_cast<uint16_t>(number | (flag ? weight_positional : 0));
        if (number == weight_ignore) *out = weight_ignore;
    }
}

void put_traits(const collate_category &collate, uint8_t *traits) {
    for (int32_t i = 0; i < collate.index_count; ++i) {
        traits[i] = 0;
        for (int32_t pass = 0; pass < collate.pass_count; ++pass) {
            uint16_t weight = collate.passes[pass].weights[i];
            if ((weight & weight_mask) == weight_ignore) traits[i] |= has_odd_weights;
            if (!is_plain(weight)) traits[i] |= has_odd_weights | expands;
        }
    }
    for (int32_t i = 0; i < collate.element_count; ++i) {
        const collating_element &element = collate.elements[i];
        for (int32_t k = 0; k < element.count; ++k) {
            uint32_t index = index_of(collate, element.values[k]);
            if (index == no_index) continue;
            traits[index] |= k == 0 ? begins_element : follows_element;
            if (k + 1 < element.count) traits[index] |= continues_element;
            if (element.count == 1) traits[index] |= is_whole_element;
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

// The next part of a block whose parts are laid out from the strictest alignment down.
template <typename T> T *take(unsigned char *&block, size_t count) {
    T *part = reinterpret_cast<T *>(block);
    block += count * sizeof(T);
    return part;
}

} // namespace

bool lay_out(collate_category &collate) {
    if (collate.pass_count == 0) return true;
    collation_layout &layout = collate.layout;
    layout.row_bits = bits_of_row(collate.pass_count);
    uint32_t row = 1u << layout.row_bits;
    size_t indexes = static_cast<size_t>(collate.index_count);
    size_t elements = static_cast<size_t>(collate.element_count);
    size_t parts = parts_of(collate);
    size_t weights = indexes * row;
    size_t size = (elements + parts) * sizeof(uint32_t) + weights * sizeof(uint16_t) + indexes;
    auto *block = static_cast<unsigned char *>(vel_alloc(size + 1));
    if (!block) return false;
    layout.block = block;
    uint32_t *order = take<uint32_t>(block, elements);
    uint32_t *part_indexes = take<uint32_t>(block, parts);
    uint16_t *rows = take<uint16_t>(block, weights);
    uint8_t *traits = take<uint8_t>(block, indexes);
    for (size_t i = 0; i < weights; ++i) rows[i] = weight_ignore;
    for (int32_t i = 0; i < collate.pass_count; ++i) {
        put_weights(collate, i, rows + i, row);
    }
    put_element_order(collate, order);
    put_parts(collate, part_indexes);
    put_traits(collate, traits);
    layout.weights = rows;
    layout.traits = traits;
    layout.element_order = order;
    layout.expansion_parts = part_indexes;
    coverage covered(*collate.characters);
    layout.covers_bytes = covered.bytes();
    layout.covers_utf8 = covered.utf8();
    return true;
}

} // namespace vel

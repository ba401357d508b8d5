// The COLLATE section: the kind line, then for "as_specified"
//
//   the table of collation indexes
//   P N W E X F       passes, indexes, largest weight, elements, expansions, code-order flag
//   P times           the direction, then N weights
//   E times           n, n wide values, the collation index
//   X times           n, n wide values
//
// with white space before every number, and a wide value written as two fields of four digits.
//
// Contract. A category that this reader accepts keeps these promises to later code, so that the
// weight cursor needs no checks of its own:
//   - at most eight passes, each forward or backward, each with a weight for every index;
//   - every index in the table and in the elements has weights;
//   - a weight is 1 to the largest weight, or names an expansion that exists;
//   - elements and expansions hold at least one value;
//   - no value of an expansion expands again in a pass where that expansion is used.
// Anything else is refused with VEL_EBADFILE. There are at most 65536 indexes, as many as a table
// can name; lists grow as their members arrive; every check looks at a weight, a cell or a value
// once a pass. So memory and work are linear in the length of the file.
#include "ext/memory.h"
#include "locale/readers.h"
#include "vels/errors.h"

namespace vel {
namespace {

constexpr int32_t kind_line_size = 32;
constexpr int32_t max_indexes = 0x10000;
constexpr int32_t max_expansions = weight_mask + 1;
constexpr int32_t chunk = 1024;

struct kind_name {
    const char *line;
    collation_kind kind;
};
constexpr kind_name kind_names[] = {
    {"as_specified\n", collation_as_specified},
    {"thai_smo\n", collation_thai},
};

int32_t read_kind(text_reader &stream) {
    char line[kind_line_size];
    if (!stream.gets(line, sizeof line)) return collation_null;
    for (const kind_name &known : kind_names) {
        if (strcmp(line, known.line) == 0) return known.kind;
    }
    return collation_null;
}

// What the file holds, as it arrives. Values of elements and expansions lie in one array.
class collation_data {
public:
    collation_data(section &in, collate_category &collate) : in_(in), collate_(collate) {}

    bool read() {
        return read_counts() && read_passes() && read_elements() && read_expansions() && keep();
    }

private:
    struct value_range {
        int32_t count;
        int32_t index; // of an element
        size_t first;
    };

    bool read_counts() {
        collate_category &c = collate_;
        for (int32_t *count : {&c.pass_count, &c.index_count, &c.max_weight, &c.element_count,
                               &c.expansion_count, &c.code_order}) {
            if (!in_.count(count)) return false;
        }
        return in_.require(c.pass_count <= max_passes && c.index_count <= max_indexes &&
                           c.max_weight <= weight_mask && c.expansion_count <= max_expansions);
    }

    bool read_passes() {
        for (int32_t i = 0; i < collate_.pass_count; ++i) {
            int32_t &direction = collate_.passes[i].direction;
            if (!in_.number(&direction)) return false;
            if (!in_.require(direction == pass_forward || direction == pass_backward)) return false;
            if (!read_weights()) return false;
        }
        return true;
    }

    bool read_weights() {
        for (int32_t left = collate_.index_count; left > 0;) {
            int32_t count = left < chunk ? left : chunk;
            uint16_t *weights = weights_.extend(static_cast<size_t>(count));
            if (!weights) return in_.refuse(VEL_ENOMEM);
            read_hex16_fields(in_.stream, weights, count);
            if (!in_.require(true)) return false;
            left -= count;
        }
        return true;
    }

    bool read_elements() {
        for (int32_t i = 0; i < collate_.element_count; ++i) {
            value_range element;
            if (!read_values(&element)) return false;
            uint16_t index;
            read_hex16_fields(in_.stream, &index, 1);
            element.index = index;
            if (!in_.require(index < collate_.index_count)) return false;
            if (!elements_.push(element)) return in_.refuse(VEL_ENOMEM);
        }
        return true;
    }

    bool read_expansions() {
        for (int32_t i = 0; i < collate_.expansion_count; ++i) {
            value_range expansion;
            if (!read_values(&expansion)) return false;
            if (!expansions_.push(expansion)) return in_.refuse(VEL_ENOMEM);
        }
        return true;
    }

    bool read_values(value_range *range) {
        *range = {0, 0, values_.size()};
        if (!in_.number(&range->count) || !in_.require(range->count >= 1)) return false;
        for (int32_t i = 0; i < range->count; ++i) {
            uint16_t halves[2];
            read_hex16_fields(in_.stream, halves, 2);
            if (!in_.require(true)) return false;
            if (!values_.push(static_cast<vel_wchar>(halves[0]) << 16 | halves[1])) {
                return in_.refuse(VEL_ENOMEM);
            }
        }
        return true;
    }

    // Moves everything into one block of the exact size.
    bool keep() {
        size_t size = elements_.size() * sizeof(collating_element) +
                      expansions_.size() * sizeof(collating_expansion) +
                      values_.size() * sizeof(vel_wchar) + weights_.size() * sizeof(uint16_t);
        if (size == 0) return true;
        auto *block = static_cast<unsigned char *>(vel_alloc(size));
        if (!block) return in_.refuse(VEL_ENOMEM);
        collate_.blocks = block;
        collate_.elements = take<collating_element>(block, elements_.size());
        collate_.expansions = take<collating_expansion>(block, expansions_.size());
        vel_wchar *values = take<vel_wchar>(block, values_.size());
        uint16_t *weights = take<uint16_t>(block, weights_.size());
        if (values_.size()) memcpy(values, values_.data(), values_.size() * sizeof *values);
        if (weights_.size()) memcpy(weights, weights_.data(), weights_.size() * sizeof *weights);
        for (size_t i = 0; i < elements_.size(); ++i) {
            const value_range &from = elements_[i];
            collate_.elements[i] = {from.count, from.index, values + from.first};
        }
        for (size_t i = 0; i < expansions_.size(); ++i) {
            collate_.expansions[i] = {expansions_[i].count, values + expansions_[i].first};
        }
        for (int32_t i = 0; i < collate_.pass_count; ++i) {
            collate_.passes[i].weights = weights + i * collate_.index_count;
        }
        return true;
    }

    // The next part of the block; parts are laid out from the strictest alignment down.
    template <typename T> static T *take(unsigned char *&block, size_t count) {
        T *part = reinterpret_cast<T *>(block);
        block += count * sizeof(T);
        return part;
    }

    section &in_;
    collate_category &collate_;
    host_array<uint16_t> weights_; // of all passes
    host_array<value_range> elements_;
    host_array<value_range> expansions_;
    host_array<vel_wchar> values_;
};

// Every index of the table has weights. Without a branch, so that many cells are looked at at once.
bool indexes_hold(const collate_category &collate) {
    const sealed_table &table = *collate.characters;
    const uint32_t *cells = table.cells();
    const int32_t index_count = collate.index_count;
    int32_t bad = 0;
    for (uint32_t i = 0; i < table.cell_count; ++i) {
        int32_t ends = static_cast<int32_t>(cells[i]) >> 31;
        bad |= ends & (index_count - 1 - static_cast<int32_t>(cell_value(cells[i])));
    }
    return bad >= 0;
}

bool expands(const collate_category &collate, const collation_pass &pass, vel_wchar value) {
    uint32_t cell = collate.characters->find_code(value);
    return is_end(cell) && pass.weights[cell_value(cell)] & weight_expansion;
}

bool expands_again(const collate_category &collate, const collation_pass &pass, int32_t number) {
    const collating_expansion &expansion = collate.expansions[number];
    for (int32_t i = 0; i < expansion.count; ++i) {
        if (expands(collate, pass, expansion.values[i])) return true;
    }
    return false;
}

// The weights of one pass. `used` marks the expansions that are known to be used in it.
bool weights_hold(collate_category &collate, uint32_t *features, const collation_pass &pass,
                  unsigned char *used) {
    for (int32_t i = 0; i < collate.index_count; ++i) {
        uint16_t weight = pass.weights[i];
        int32_t number = weight & weight_mask;
        if (weight & weight_positional) *features |= collate_has_positional;
        if (!(weight & weight_expansion)) {
            if (number < weight_ignore || number > collate.max_weight) return false;
            continue;
        }
        if (number >= collate.expansion_count) return false;
        *features |= collate_has_expansions;
        if (used[number]) continue;
        used[number] = 1;
        if (expands_again(collate, pass, number)) return false;
    }
    return true;
}

bool check(section &in, vel_locale *locale) {
    collate_category &collate = locale->collate;
    if (!in.require(indexes_hold(collate))) return false;
    size_t expansions = static_cast<size_t>(collate.expansion_count);
    auto used = make_host_array<unsigned char>(expansions + 1);
    if (!used) return in.refuse(VEL_ENOMEM);
    uint32_t &features = locale->collate_features;
    for (int32_t i = 0; i < collate.pass_count; ++i) {
        memset(used.get(), 0, expansions + 1);
        const collation_pass &pass = collate.passes[i];
        if (pass.direction == pass_backward) features |= collate_has_backward;
        if (!in.require(weights_hold(collate, &features, pass, used.get()))) return false;
    }
    for (int32_t i = 0; i < collate.element_count; ++i) {
        uint32_t length = static_cast<uint32_t>(collate.elements[i].count);
        uint32_t &longest = locale->collate_longest_element;
        if (length > longest) longest = length;
    }
    if (collate.element_count > 0) features |= collate_has_elements;
    return true;
}

} // namespace

bool read_collate(section &in, vel_locale *locale) {
    collate_category &collate = locale->collate;
    collate.kind = read_kind(in.stream);
    if (collate.kind == collation_thai) return true;
    if (collate.kind != collation_as_specified) return false; // a failure without a number
    return in.table(collate.characters) && collation_data(in, collate).read() && check(in, locale);
}

} // namespace vel

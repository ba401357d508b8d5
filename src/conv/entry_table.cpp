#include "conv/entry_table.h"

#include "objfile/sealer.h"

namespace vel {
namespace {

// Moves the first `unit` bytes to the opposite order.
uint32_t turned(uint32_t bytes, int32_t unit) {
    uint32_t result = 0;
    for (int32_t i = 0; i < unit; ++i) result = result << 8 | (bytes >> (8 * i) & 0xFF);
    return result;
}

class entry_cells {
public:
    using cell = uint64_t;
    using head = entry_table;
    static constexpr size_t max_cells = UINT32_MAX;

    entry_cells(const vel_trie *trie, int32_t unit) : trie_(trie), unit_(unit) {}

    static uint64_t more(uint32_t row) { return entry_more | row; }
    static bool is_more(uint64_t cell) { return vel::is_more(cell); }
    static bool is_end(uint64_t cell) { return vel::is_end(cell); }

    uint64_t end(const vel_trie_node *node, uint32_t b) const {
        return of_value(node->page ? node->page + (b << trie_->slot_shift) : trie_->default_value);
    }

    void fill_leaf(uint64_t *cells, const vel_trie_node *node, uint32_t low, uint32_t width) const {
        for (uint32_t i = 0; i < width; ++i) {
            uint32_t b = low + i;
            cells[i] = node->state[b] == byte_terminal ? end(node, b) : 0;
        }
    }

private:
    uint64_t of_value(const unsigned char *value) const {
        uint32_t flags = value[0];
        uint32_t bytes = 0;
        for (int32_t i = 1; i < trie_->value_size; ++i) {
            bytes |= static_cast<uint32_t>(value[i]) << (8 * (i - 1));
        }
        if (unit_) {
            flags = (flags & entry_flags_mask) | static_cast<uint32_t>(unit_);
            bytes = turned(bytes, unit_);
        }
        return entry_end | static_cast<uint64_t>(flags) << 32 | bytes;
    }

    const vel_trie *trie_;
    int32_t unit_;
};

bool only_zero_ends(const host_array<uint64_t> &cells) {
    size_t ends = 0;
    for (size_t i = 0; i < cells.size(); ++i) {
        ends += is_end(cells[i]) && (entry_flags(cells[i]) & entry_terminator);
    }
    return ends == 1 && is_end(cells[0]) && (entry_flags(cells[0]) & entry_terminator);
}

} // namespace

const entry_table *seal_entries(const vel_trie *table, int32_t unit) {
    sealer<entry_cells> maker(table, entry_cells(table, unit));
    if (!maker.seal()) return nullptr;
    size_t cell_bytes = maker.cells().size() * sizeof(uint64_t);
    void *block = vel_alloc(sizeof(entry_table) + cell_bytes);
    if (!block) return nullptr;
    auto *sealed = new (block) entry_table(maker.head());
    sealed->cell_count = static_cast<uint32_t>(maker.cells().size());
    sealed->zero_ends = only_zero_ends(maker.cells());
    memcpy(sealed + 1, maker.cells().data(), cell_bytes);
    return sealed;
}

} // namespace vel

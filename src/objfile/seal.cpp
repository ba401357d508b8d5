// Sealing tables of 16-bit values.
#include <cstring>

#include "objfile/seal_blocks.h"
#include "objfile/sealer.h"

namespace vel {
namespace {

class value_cells {
public:
    using cell = uint32_t;
    using head = sealed_table;
    static constexpr size_t max_cells = cell_more;

    explicit value_cells(const vel_trie *trie) : trie_(trie) {}

    static uint32_t more(uint32_t row) { return cell_more | row; }
    static bool is_more(uint32_t cell) { return vel::is_more(cell); }
    static bool is_end(uint32_t cell) { return vel::is_end(cell); }

    uint32_t end(const vel_trie_node *node, uint32_t b) const {
        uint16_t value;
        const unsigned char *slot =
            node->page ? node->page + (b << trie_->slot_shift) : trie_->default_value;
        memcpy(&value, slot, sizeof value);
        return cell_end | value;
    }

    // One load and one select a cell.
    void fill_leaf(uint32_t *cells, const vel_trie_node *node, uint32_t low, uint32_t width) const {
        const unsigned char *state = node->state + low;
        uint16_t values[256];
        if (node->page) {
            memcpy(values, node->page + 2 * low, 2 * width);
        } else {
            memcpy(values, trie_->default_value, sizeof *values);
            for (uint32_t i = 1; i < width; ++i) values[i] = values[0];
        }
        for (uint32_t i = 0; i < width; ++i) {
            cells[i] = state[i] == byte_terminal ? cell_end | values[i] : 0;
        }
    }

private:
    const vel_trie *trie_;
};

const sealed_table *finish(sealed_table &head, host_array<uint32_t> &cells) {
    host_array<uint16_t> blocks;
    if (!add_blocks(head, cells, blocks)) return nullptr;
    head.cell_count = static_cast<uint32_t>(cells.size());
    size_t rows_at = head.cell_offset * sizeof(uint32_t);
    size_t cell_bytes = cells.size() * sizeof(uint32_t);
    void *block = vel_alloc(rows_at + cell_bytes);
    if (!block) return nullptr;
    auto *table = new (block) sealed_table(head);
    char *bytes = static_cast<char *>(block);
    memset(bytes + sizeof(sealed_table), 0, rows_at - sizeof(sealed_table));
    memcpy(table + 1, blocks.data(), blocks.size() * sizeof(uint16_t));
    memcpy(bytes + rows_at, cells.data(), cell_bytes);
    return table;
}

} // namespace

const sealed_table *seal(const vel_trie *table) {
    sealer<value_cells> maker(table, value_cells(table));
    return maker.seal() ? finish(maker.head(), maker.cells()) : nullptr;
}

} // namespace vel

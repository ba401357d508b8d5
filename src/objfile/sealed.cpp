#include "objfile/sealed.h"

namespace vel {
namespace {

// Its only block is the first of the root row, which like all of them has no characters.
struct empty_block {
    sealed_table head;
    uint16_t blocks[stretch_blocks];
    alignas(block_cells * sizeof(uint32_t)) uint32_t cells[256];
};

constexpr empty_block make_empty_block() {
    empty_block block{};
    for (uint32_t top = 0; top < 256; ++top) block.head.set_stretch(top, 0);
    block.head.shortest = max_character_bytes;
    block.head.width[0] = 256;
    block.head.cell_count = 256;
    block.head.cell_offset = offsetof(empty_block, cells) / sizeof(uint32_t);
    for (uint16_t &number : block.blocks) {
        number = static_cast<uint16_t>(block.head.cell_offset / block_cells);
    }
    return block;
}

constexpr empty_block empty = make_empty_block();

} // namespace

const sealed_table &empty_table = empty.head;

uint32_t sealed_table::find_by_walking(vel_wchar code) const {
    int32_t n = code_bytes(code);
    if (n < 1 || n > max_character_bytes) return 0;
    uint32_t cell = cells()[code >> (8 * (n - 1)) & 0xFF];
    for (int32_t depth = 1; depth < n; ++depth) {
        uint32_t b = code >> (8 * (n - 1 - depth)) & 0xFF;
        cell = is_more(cell) ? step(cell, depth, b) : 0;
    }
    return is_more(cell) ? 0 : cell;
}

void release_table(const sealed_table *table) {
    if (table != &empty_table) vel_free(const_cast<sealed_table *>(table));
}

} // namespace vel

#include "objfile/sealed.h"

namespace vel {
namespace {

struct empty_block {
    sealed_table head;
    uint32_t cells[256];
};

constexpr empty_block make_empty_block() {
    empty_block block{};
    block.head.shortest = max_character_bytes;
    block.head.width[0] = 256;
    block.head.cell_count = 256;
    return block;
}

constexpr empty_block empty = make_empty_block();

} // namespace

const sealed_table &empty_table = empty.head;

uint32_t sealed_table::find_slowly(vel_wchar code) const {
    int32_t n = code_bytes(code);
    if (n < 1 || n > max_character_bytes) return 0;
    uint32_t cell = cells()[code >> (8 * (n - 1)) & 0xFF];
    for (int32_t depth = 1; depth < n; ++depth) {
        cell = step_if_more(cell, depth, code >> (8 * (n - 1 - depth)) & 0xFF);
    }
    return is_more(cell) ? 0 : cell;
}

void release_table(const sealed_table *table) {
    if (table != &empty_table) vel_free(const_cast<sealed_table *>(table));
}

} // namespace vel

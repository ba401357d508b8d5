// The sealed form of a table: one block, made once when a table is complete, on which every
// character is looked up.
//
// Representation. The block is rows of 32-bit cells, one row per distinct node of the trie. The
// root row has 256 cells. A row at depth d (reached after d bytes) holds cells only for the range
// of bytes that is used anywhere at that depth, `low[d]` and `width[d]` on: 64 cells for UTF-8
// instead of 256. A cell is
//
//   0                  the byte is invalid here
//   cell_more | row    more bytes follow; row is the offset of the next row in cells
//   cell_end | value   the byte ends a character with this 16-bit value
//
// so a walk costs one load and one range check a byte.
//
// Looking up by wide value does not branch on the length of the character, which real text keeps
// changing: `shifts` gives for the upper byte of a value of three bytes where its stretch of the
// block table is, the block table gives for the ten bits below a block of 64 cells, and the lower
// six bits index that. In UTF-8 such a block is a row itself; other code sets have their rows
// copied into blocks.
//
// Equal rows are stored once: the class table of a UTF-8 locale takes about 200 KB. The rejected
// alternative, rows of 256 cells with 16-bit row numbers and a separate kind table, is a quarter
// smaller for single-byte sets and four times as large for UTF-8, and needs two loads a byte.
#pragma once

#include "objfile/trie.h"

namespace vel {

// How the characters of a code set are built, worked out from its table and never from its name.
enum class table_shape : uint8_t {
    general,
    single_byte,       // every character is one byte
    utf8,              // exactly the well-formed UTF-8 sequences
    ascii_transparent, // where a character may begin, a byte below 0x80 is a whole one
};

constexpr uint32_t block_cells = 64;
constexpr uint32_t stretch_blocks = 0x10000 / block_cells;

constexpr uint32_t cell_more = 0x40000000;
constexpr uint32_t cell_end = 0x80000000;

inline bool is_more(uint32_t cell) {
    return cell & cell_more;
}
inline bool is_end(uint32_t cell) {
    return cell & cell_end;
}
inline uint32_t next_row(uint32_t cell) {
    return cell & ~cell_more;
}
inline uint16_t cell_value(uint32_t cell) {
    return static_cast<uint16_t>(cell);
}

// Where a walk ended: the cell of the last byte looked at, and how many bytes that were.
struct walk_end {
    uint32_t cell;
    int32_t used;
};

struct sealed_table {
    int32_t longest;  // bytes of the longest character, 0 while empty
    int32_t shortest; // 4 while empty
    uint32_t low[max_character_bytes];
    uint32_t width[max_character_bytes];
    uint32_t cell_count;
    uint32_t cell_offset; // of the rows, in cells from the beginning of the table; whole blocks
    table_shape shape;
    uint32_t
        shifts[256]; // by the upper byte: from the values in blocks to their place in the table

    const uint32_t *cells() const { return base() + cell_offset; }
    // A block by its distance from the beginning of the table, in blocks.
    const uint16_t *blocks() const { return reinterpret_cast<const uint16_t *>(this + 1); }
    bool empty() const { return longest == 0; }

    // The cell of byte b in the row that `cell` leads to, at a depth of 1 to 3.
    uint32_t step(uint32_t cell, int32_t depth, uint32_t b) const {
        uint32_t i = b - low[depth];
        return i < width[depth] ? cells()[next_row(cell) + i] : 0;
    }

    // Walks the bytes of one character, without a limit.
    walk_end walk(const unsigned char *bytes) const {
        uint32_t cell = cells()[bytes[0]];
        int32_t used = 1;
        while (is_more(cell)) {
            cell = step(cell, used, bytes[used]);
            ++used;
        }
        return {cell, used};
    }

    // Walks at most n bytes (n is at least 1). When they run out first the cell says "more".
    walk_end walk(const unsigned char *bytes, int32_t n) const {
        uint32_t cell = cells()[bytes[0]];
        int32_t used = 1;
        while (is_more(cell) && used < n) {
            cell = step(cell, used, bytes[used]);
            ++used;
        }
        return {cell, used};
    }

    // The number of bytes of the character with this wide value, by its magnitude.
    int32_t code_bytes(vel_wchar code) const {
        if (code <= 0xFF) return shortest;
        if (code <= 0xFFFF) return shortest < 3 ? 2 : shortest;
        if (code <= 0xFFFFFF) return shortest < 4 ? 3 : shortest;
        return 4;
    }

    // The last cell of the character with this wide value.
    uint32_t find_code(vel_wchar code) const {
        uint32_t cell = find_quickly(code);
        return is_end(cell) ? cell : find_by_walking(code);
    }

    // The same for characters of one to three bytes, in two loads and without a call. No end means
    // only that the rest has to be asked.
    uint32_t find_quickly(vel_wchar code) const {
        if (code > 0xFFFFFF) return 0;
        uint32_t block = blocks()[shifts[code >> 16] + code / block_cells];
        return base()[block * block_cells + code % block_cells];
    }

    uint32_t find_by_walking(vel_wchar code) const;

    // Puts the values with this upper byte into a stretch of 1024 blocks.
    constexpr void set_stretch(uint32_t top, uint32_t stretch) {
        shifts[top] = (stretch - top) * stretch_blocks;
    }

private:
    const uint32_t *base() const { return reinterpret_cast<const uint32_t *>(this); }
};

// The table of a null category: no characters. Shared by all of them and never freed.
extern const sealed_table &empty_table;

// Makes the sealed form of a table whose values are two bytes; null when memory cannot be had.
const sealed_table *seal(const vel_trie *table);

// Frees a sealed table; null and the empty table are ignored.
void release_table(const sealed_table *table);

} // namespace vel

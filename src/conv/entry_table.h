// The sealed form of a translation table: one block, made once when the table is complete, in which
// a walk over the bytes of a source character ends at everything there is to know about its target.
//
// Rows are those of the sealed character tables: the root row has 256 cells, a row at depth d has
// cells for the bytes low[d] to low[d] + width[d] - 1, equal rows are stored once. A cell has 64
// bits:
//
//   0                        the byte is invalid here
//   entry_more | row         more bytes follow; row is the offset of the next row in cells
//   entry_end | flags << 32 | bytes
//                            the byte ends a character: the flag byte of its entry, and the bytes
//                            of the target, the first one lowest, zeroes behind the last
#pragma once

#include "objfile/sealed.h"

namespace vel {

constexpr uint64_t entry_more = uint64_t{1} << 63;
constexpr uint64_t entry_end = uint64_t{1} << 62;

// Of the flag byte; the low three bits are the number of target bytes.
enum : uint32_t {
    entry_length_mask = 0x07,
    entry_terminator = 0x08, // ends a terminated text
    entry_plain = 0x10,      // nothing to tell but that the entry is one
    entry_substitute = 0x20, // the target has no such character
    entry_shifted = 0x40,    // a character of the shifted state of the target
    entry_toggle = 0x80,     // the source changes to the other table behind it
    entry_flags_mask = 0xF8, // all zero: an illegal character
};

inline bool is_more(uint64_t cell) {
    return cell & entry_more;
}
inline bool is_end(uint64_t cell) {
    return cell & entry_end;
}
inline uint32_t next_row(uint64_t cell) {
    return static_cast<uint32_t>(cell);
}
inline uint32_t entry_flags(uint64_t cell) {
    return static_cast<uint32_t>(cell >> 32) & 0xFF;
}
inline uint32_t entry_bytes(uint64_t cell) {
    return static_cast<uint32_t>(cell);
}

// True for an entry that says nothing but that it is one.
inline bool is_plain(uint64_t cell) {
    constexpr uint32_t told = static_cast<uint32_t>(entry_end >> 32) | entry_flags_mask;
    constexpr uint32_t plain = static_cast<uint32_t>(entry_end >> 32) | entry_plain;
    return (static_cast<uint32_t>(cell >> 32) & told) == plain;
}

// Where a walk ended: the cell of the last byte looked at, and how many bytes that were.
struct entry_walk {
    uint64_t cell;
    int32_t used;
};

struct entry_table {
    int32_t longest; // bytes of the longest source character, 0 while empty
    int32_t shortest;
    uint32_t low[max_character_bytes];
    uint32_t width[max_character_bytes];
    uint32_t cell_count;
    table_shape shape; // of the source code set
    bool zero_ends;    // no character but the byte 0 ends a terminated text

    const uint64_t *cells() const { return reinterpret_cast<const uint64_t *>(this + 1); }

    // The cell of byte b in the row that `cell` leads to, at a depth of 1 to 3.
    uint64_t step(uint64_t cell, int32_t depth, uint32_t b) const {
        uint32_t i = b - low[depth];
        return i < width[depth] ? cells()[next_row(cell) + i] : 0;
    }

    // Walks at most n bytes (n is at least 1). When they run out first the cell says "more".
    entry_walk walk(const unsigned char *bytes, int32_t n) const {
        uint64_t cell = cells()[bytes[0]];
        int32_t used = 1;
        while (is_more(cell) && used < n) {
            cell = step(cell, used, bytes[used]);
            ++used;
        }
        return {cell, used};
    }

    // The same for a character of `size` bytes that stand in memory last byte first. No end when
    // the character is not as long as that.
    uint64_t walk_reversed(const unsigned char *bytes, int32_t size) const {
        uint64_t cell = cells()[bytes[size - 1]];
        for (int32_t depth = 1; depth < size; ++depth) {
            cell = is_more(cell) ? step(cell, depth, bytes[size - 1 - depth]) : 0;
        }
        return is_more(cell) ? 0 : cell;
    }
};

static_assert(sizeof(entry_table) % sizeof(uint64_t) == 0);

// Makes the sealed form of a table whose values are a flag byte and up to four target bytes; null
// when memory cannot be had. With a `unit` every entry becomes one of that many bytes, in the
// opposite order: of a wide target, the units as this host stores them. With 0 entries stay.
const entry_table *seal_entries(const vel_trie *table, int32_t unit = 0);

inline void release_entries(const entry_table *table) {
    vel_free(const_cast<entry_table *>(table));
}

} // namespace vel

// How the characters of a source are found in its table, each way in two forms: `find` for any
// character, and `take` for as many of them as are `surely_in` the bytes that are left.
#pragma once

#include "conv/entry_table.h"

namespace vel {

// Characters of as many bytes as the table says.
class walked_source {
public:
    explicit walked_source(const entry_table &table)
        : cells_(table.cells()), shift_(table.longest > 2   ? 2
                                        : table.longest > 1 ? 1
                                                            : 0),
          low_{table.low[1], table.low[2], table.low[3]}, width_{table.width[1], table.width[2],
                                                                 table.width[3]} {}

    static entry_walk find(const entry_table &table, const unsigned char *bytes, int32_t n) {
        return table.walk(bytes, n);
    }

    int32_t surely_in(int32_t bytes) const { return bytes >> shift_; }
    uint64_t take(const unsigned char *&bytes) const {
        uint64_t cell = cells_[*bytes++];
        if (!is_more(cell)) return cell;
        cell = step(cell, 0, *bytes++);
        if (!is_more(cell)) return cell;
        cell = step(cell, 1, *bytes++);
        return is_more(cell) ? step(cell, 2, *bytes++) : cell;
    }

private:
    uint64_t step(uint64_t cell, int32_t row, uint32_t b) const {
        uint32_t i = b - low_[row];
        return i < width_[row] ? cells_[next_row(cell) + i] : 0;
    }

    const uint64_t *cells_;
    int32_t shift_;
    uint32_t low_[max_character_bytes - 1];
    uint32_t width_[max_character_bytes - 1];
};

// Units of `size` bytes, as a little-endian host stores them.
template <int32_t size> class unit_source {
public:
    explicit unit_source(const entry_table &table) : table_(table) {}

    static entry_walk find(const entry_table &table, const unsigned char *bytes, int32_t n) {
        return n < size ? entry_walk{entry_more, n} : entry_walk{walk(table, bytes), size};
    }

    static int32_t surely_in(int32_t bytes) { return bytes / size; }
    uint64_t take(const unsigned char *&bytes) const {
        uint64_t cell = walk(table_, bytes);
        bytes += size;
        return cell;
    }

private:
    static uint64_t walk(const entry_table &table, const unsigned char *bytes) {
        return table.walk_reversed(bytes, size);
    }

    const entry_table &table_;
};

// Single bytes, whatever else the table holds.
class byte_source {
public:
    explicit byte_source(const entry_table &table) : cells_(table.cells()) {}

    static entry_walk find(const entry_table &table, const unsigned char *bytes, int32_t) {
        uint64_t cell = table.cells()[*bytes];
        return {is_end(cell) ? cell : 0, 1};
    }

    static int32_t surely_in(int32_t bytes) { return bytes; }
    uint64_t take(const unsigned char *&bytes) const { return cells_[*bytes++]; }

private:
    const uint64_t *cells_;
};

} // namespace vel

#include "objfile/seal_blocks.h"

namespace vel {
namespace {

constexpr uint32_t row_bytes = 256;
constexpr uint32_t blocks_a_row = row_bytes / block_cells; // of all 256 bytes
constexpr size_t block_bytes = block_cells * sizeof(uint32_t);
constexpr uint32_t largest_block = 0xFFFF;
constexpr uint32_t no_row = 0xFFFFFFFF;

class block_builder {
public:
    block_builder(sealed_table &head, host_array<uint32_t> &cells, host_array<uint16_t> &blocks)
        : head_(head), cells_(cells), blocks_(blocks) {}

    bool build() {
        uint32_t stretches = head_.shortest == 1 ? count_stretches() : 1;
        size_t count = stretches * stretch_blocks;
        // The block of no characters stands before the rows, where its number is always small.
        size_t head_bytes = sizeof(sealed_table) + count * sizeof(uint16_t);
        uint16_t empty = static_cast<uint16_t>((head_bytes + block_bytes - 1) / block_bytes);
        head_.cell_offset = (empty + 1u) * block_cells;
        uint16_t *added = blocks_.extend(count);
        if (!added) return false;
        for (size_t i = 0; i < count; ++i) added[i] = empty;
        for (uint32_t top = 0; top < 256; ++top) head_.set_stretch(top, stretches_[top]);
        if (stretches > 1 && align_rows()) fill();
        return !cells_.failed();
    }

private:
    template <typename Action> void each_child(uint32_t row, int32_t depth, Action action) const {
        for (uint32_t i = 0; i < head_.width[depth]; ++i) {
            uint32_t cell = cells_[row + i];
            if (is_more(cell)) action(head_.low[depth] + i, next_row(cell));
        }
    }

    bool ends_somewhere(uint32_t row, int32_t depth) const {
        for (uint32_t i = 0; i < head_.width[depth]; ++i) {
            if (is_end(cells_[row + i])) return true;
        }
        return false;
    }

    // Stretch 0 has no characters, stretch 1 is for the values of one and two bytes, then one for
    // each lead of three.
    uint32_t count_stretches() {
        uint32_t stretches = 2;
        stretches_[0] = 1;
        each_child(0, 0, [&](uint32_t lead, uint32_t row) {
            bool leads = false;
            each_child(row, 1,
                       [&](uint32_t, uint32_t last) { leads = leads || ends_somewhere(last, 2); });
            if (leads && lead > 0 && stretches <= 0xFF) {
                stretches_[lead] = static_cast<uint8_t>(stretches++);
            }
        });
        return stretches;
    }

    // Copied rows begin at whole blocks.
    bool align_rows() {
        size_t odd = cells_.size() % block_cells;
        if (odd == 0) return true;
        uint32_t *cells = cells_.extend(block_cells - odd);
        if (cells) memset(cells, 0, (block_cells - odd) * sizeof(uint32_t));
        return cells != nullptr;
    }

    uint32_t number_of(uint32_t row) const { return (head_.cell_offset + row) / block_cells; }

    // Behind the lead 0 stand characters whose values are those of shorter ones, which come first.
    void fill() {
        put_row(1, 0, 0, 0);
        each_child(0, 0, [&](uint32_t lead, uint32_t row) {
            if (lead == 0) return;
            if (ends_somewhere(row, 1)) put_row(1, lead, row, 1);
            if (!stretches_[lead]) return;
            each_child(row, 1, [&](uint32_t second, uint32_t last) {
                if (ends_somewhere(last, 2)) put_row(stretches_[lead], second, last, 2);
            });
        });
    }

    // The blocks of the values that end in `byte` and a byte of the row.
    void put_row(uint32_t stretch, uint32_t byte, uint32_t row, int32_t depth) {
        uint32_t low = head_.low[depth];
        uint32_t width = head_.width[depth];
        uint16_t *own = &blocks_[stretch * stretch_blocks + byte * blocks_a_row];
        bool whole = low % block_cells == 0 && width % block_cells == 0 && row % block_cells == 0;
        if (!whole && row != copied_row_ && !copy_row(row, low, width)) return;
        uint32_t first = whole ? low / block_cells : 0;
        uint32_t count = whole ? width / block_cells : blocks_a_row;
        uint32_t number = number_of(whole ? row : copy_);
        if (number + count > largest_block) return;
        for (uint32_t i = 0; i < count; ++i) own[first + i] = static_cast<uint16_t>(number + i);
    }

    // A row spelled out for all bytes. Neighbours often have the same row; it is copied once.
    bool copy_row(uint32_t row, uint32_t low, uint32_t width) {
        copied_row_ = no_row;
        copy_ = static_cast<uint32_t>(cells_.size());
        if (number_of(copy_) + blocks_a_row > largest_block) return false; // nothing could name it
        uint32_t *cells = cells_.extend(row_bytes);
        if (!cells) return false;
        memset(cells, 0, row_bytes * sizeof(uint32_t));
        memcpy(cells + low, cells_.data() + row, width * sizeof(uint32_t));
        copied_row_ = row;
        return true;
    }

    sealed_table &head_;
    uint8_t stretches_[256] = {}; // by the upper byte of a value
    host_array<uint32_t> &cells_;
    host_array<uint16_t> &blocks_;
    uint32_t copied_row_ = no_row;
    uint32_t copy_ = 0;
};

} // namespace

bool add_blocks(sealed_table &head, host_array<uint32_t> &cells, host_array<uint16_t> &blocks) {
    return block_builder(head, cells, blocks).build();
}

} // namespace vel

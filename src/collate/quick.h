// The quick comparison: a walk over two texts in step.
//
// As long as no character expands in the first pass, is part of an element or lacks an index, that
// pass is decided by one look at each character. While characters have plain weights in all passes,
// they stand against one another in the other passes too, and the walk remembers the first
// difference in each.
#pragma once

#include "collate/ranks.h"

namespace vel {

// A result beside -1, 0 and 1: the weights have to be looked at one pass after another.
constexpr int32_t undecided = 3;

class quick_walk {
public:
    explicit quick_walk(const weighing &by)
        : by_(by), weights_(by.by.layout.weights), row_bits_(by.by.layout.row_bits) {}

    template <typename Text> [[gnu::always_inline]] int32_t compare(Text a, Text b) {
        for (;;) {
            place x = next(a), y = next(b);
            if (x.rank == unknown || y.rank == unknown) [[unlikely]]
                return undecided;
            if (x.rank != y.rank) return x.rank < y.rank ? -1 : 1;
            if (x.rank == rank_of_end) break;
            if (x.index != y.index || x.value != y.value) note(x, y);
        }
        return tie();
    }

private:
    struct place {
        rank_t rank; // in the first pass
        uint32_t index;
        vel_wchar value;
    };
    static constexpr rank_t unknown = ~rank_t{0};

    // The next character that is not ignorable in the first pass.
    template <typename Text> [[gnu::always_inline]] place next(Text &text) {
        while (!text.done()) {
            vel_wchar value = text.take();
            uint32_t index = index_in<Text>(by_, value);
            if (index == no_index) [[unlikely]]
                return {unknown, 0, 0};
            uint8_t traits = by_.traits[index];
            if (traits & begins_element && may_be_element(by_, index, text)) [[unlikely]]
                return {unknown, 0, 0};
            odd_ |= traits;
            uint32_t weight = weights_[index << row_bits_];
            if (weight == weight_ignore) continue;
            if (weight & weight_expansion) [[unlikely]]
                return {unknown, 0, 0};
            return {rank_of(weight, value), index, value};
        }
        return {rank_of_end, 0, 0};
    }

    // Two characters that the first pass does not tell apart.
    void note(const place &x, const place &y) {
        const uint16_t *row_x = weights_ + (x.index << row_bits_);
        const uint16_t *row_y = weights_ + (y.index << row_bits_);
        for (int32_t pass = 1; pass < by_.passes(); ++pass) {
            rank_t a = rank_of(row_x[pass], x.value), b = rank_of(row_y[pass], y.value);
            if (a == b) continue;
            if (first_ > pass) {
                first_ = pass;
                order_ = a < b ? -1 : 1;
            }
            return;
        }
    }

    // What the other passes say. They cannot when a character had other than plain weights.
    int32_t tie() const {
        if (by_.passes() == 1) return 0;
        bool backward = false;
        for (int32_t pass = 1; pass < by_.passes(); ++pass) backward |= by_.is_backward(pass);
        return odd_ & has_odd_weights || backward ? undecided : order_;
    }

    const weighing &by_;
    const uint16_t *weights_;
    uint32_t row_bits_;
    uint32_t odd_ = 0;
    int32_t first_ = max_passes; // the first pass with a difference, and its order
    int32_t order_ = 0;
};

// -1, 0, 1 or undecided.
template <typename Text>
[[gnu::always_inline]] inline int32_t compare_quickly(const weighing &by, Text a, Text b) {
    if (by.is_backward(0)) return undecided;
    return quick_walk(by).compare(a, b);
}

} // namespace vel

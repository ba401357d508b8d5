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
            if (traits_ & needs_units) [[unlikely]]
                return undecided;
            if (x.index == y.index && x.value == y.value) {
                if (x.index == no_index) return tie();
                continue;
            }
            rank_t left = rank_of(x.weight, x.value), right = rank_of(y.weight, y.value);
            if (left != right) {
                if (goes_on_as_element(x, a) || goes_on_as_element(y, b)) return undecided;
                return left < right ? -1 : 1;
            }
            note(x, y);
        }
    }

private:
    struct place {
        uint32_t weight; // in the first pass
        uint32_t index;
        vel_wchar value;
        uint32_t traits;
    };

    // The next character that is not ignorable in the first pass. One without an index is the end.
    template <typename Text> [[gnu::always_inline]] place next(Text &text) {
        while (!text.done()) {
            auto [value, cell] = text.take(*by_.by.characters);
            if (!is_end(cell)) [[unlikely]] {
                traits_ |= needs_units;
                break;
            }
            uint32_t index = cell_value(cell);
            uint32_t traits = by_.traits[index];
            uint32_t weight = weights_[index << row_bits_];
            traits_ |= traits;
            if (traits & follows_element && by_.by.layout.may_follow(value)) [[unlikely]]
                traits_ |= needs_units;
            if (weight != weight_ignore) return {weight, index, value, traits};
        }
        return {0, no_index, 0, 0};
    }

    // Whether a character that decides may be the first of an element. One inside an element has
    // been noticed.
    template <typename Text>
    [[gnu::always_inline]] bool goes_on_as_element(const place &decisive, const Text &rest) const {
        return decisive.traits & begins_element && may_follow(by_, rest);
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
        return traits_ & has_odd_weights || backward ? undecided : order_;
    }

    const weighing &by_;
    const uint16_t *weights_;
    uint32_t row_bits_;
    uint32_t traits_ = 0;        // of all characters that have been looked at
    int32_t first_ = max_passes; // the first pass with a difference, and its order
    int32_t order_ = 0;
};

// -1, 0, 1 or undecided.
template <typename Text>
[[gnu::always_inline]] inline int32_t compare_quickly(const weighing &by, Text a, Text b) {
    if (by.is_backward(0) || !Text::covered(by.by.layout)) return undecided;
    return quick_walk(by).compare(a, b);
}

} // namespace vel

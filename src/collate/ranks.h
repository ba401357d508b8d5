// The weights of a text in one pass, one after another, as ranks: numbers whose order is that of
// the weights.
//
// A rank is the number of a weight above the value of a character: the value of a positional
// weight, 0 of any other. What ends a text comes below every weight; a text cut short by a
// character without an index ends a little above one that is over.
#pragma once

#include "collate/units.h"

namespace vel {

using rank_t = uint64_t;

constexpr rank_t rank_of_end = 0;
constexpr rank_t rank_of_lone = 1;
constexpr rank_t rank_of_unopened = 2; // the low half of an expansion that is taken as a weight

inline rank_t rank_of(uint32_t weight, vel_wchar value) {
    rank_t number = weight & weight_mask;
    return number << 32 | (weight & weight_positional ? value : 0);
}
inline bool is_end_rank(rank_t rank) {
    return rank <= rank_of_lone;
}
inline uint32_t rank_number(rank_t rank) {
    return static_cast<uint32_t>(rank >> 32);
}
inline uint32_t rank_value(rank_t rank) {
    return static_cast<uint32_t>(rank);
}

// Units as they are read from a text, each also put into a list unless that is null.
template <typename Text> class read_units {
public:
    read_units(const weighing &by, Text text, unit_list *kept)
        : by_(by), text_(text), kept_(kept) {}

    bool done() const { return text_.done(); }
    [[gnu::always_inline]] unit take() {
        unit next = take_unit(by_, text_);
        if (kept_) kept_->push(next);
        return next;
    }
    // What has not been read.
    Text rest() const { return text_; }

private:
    const weighing &by_;
    Text text_;
    unit_list *kept_;
};

// Keeps all units of a text, behind those that the list has. The traits of all of them together; a
// unit without an index counts as one that expands.
template <typename Text>
[[gnu::noinline]] uint32_t keep_units(const weighing &by, Text text, unit_list &list) {
    uint32_t traits = 0;
    while (!text.done()) {
        unit next = take_unit(by, text);
        traits |= next.index == no_index ? uint32_t{expands} : by.traits[next.index];
        list.push(next);
    }
    return traits;
}

// Units out of a list, in either direction.
class listed_units {
public:
    listed_units(const unit_list &list, bool backward)
        : at_(backward ? list.end() : list.begin()), left_(list.size()), backward_(backward) {}

    bool done() const { return left_ == 0; }
    unit take() {
        --left_;
        return backward_ ? *--at_ : *at_++;
    }

private:
    const unit *at_;
    size_t left_;
    bool backward_;
};

// The ranks of the units in a pass.
template <typename Units> class rank_stream {
public:
    rank_stream(const weighing &by, int32_t pass, Units units)
        : by_(by), units_(units), weights_(by.by.layout.weights + pass),
          row_bits_(by.by.layout.row_bits), backward_(by.is_backward(pass)) {}

    const Units &units() const { return units_; }

    [[gnu::always_inline]] rank_t next() {
        for (;;) {
            if (parts_left_) [[unlikely]] {
                rank_t rank = next_part();
                if (rank == not_yet) continue;
                return rank;
            }
            if (units_.done()) return rank_of_end;
            unit here = units_.take();
            if (here.index == no_index) [[unlikely]]
                return lone(here.value);
            uint32_t weight = weights_[here.index << row_bits_];
            if (weight == weight_ignore) continue;
            if (!(weight & weight_expansion)) [[likely]]
                return rank_of(weight, here.value);
            if (!by_.scope.expansions) return rank_of(weight, here.value) | rank_of_unopened;
            open(weight & weight_mask, here.value);
        }
    }

private:
    static constexpr rank_t not_yet = ~rank_t{0};

    rank_t lone(vel_wchar value) const {
        return value && by_.scope.lone_ends ? rank_of_lone : rank_of_end;
    }

    // The parts of an expansion have the value of what it stands for.
    void open(uint32_t number, vel_wchar value) {
        const collating_expansion *expansions = by_.by.expansions;
        const collating_expansion &expansion = expansions[number];
        part_ = by_.by.layout.expansion_parts + (expansion.values - expansions[0].values);
        parts_left_ = expansion.count;
        if (backward_) part_ += parts_left_ - 1;
        value_ = value;
    }
    [[gnu::always_inline]] rank_t next_part() {
        uint32_t index = *part_;
        part_ += backward_ ? -1 : 1;
        --parts_left_;
        if (index == no_index) return lone(value_);
        uint32_t weight = weights_[index << row_bits_];
        return weight == weight_ignore ? not_yet : rank_of(weight, value_);
    }

    const weighing &by_;
    Units units_;
    const uint16_t *weights_;
    uint32_t row_bits_;
    bool backward_;
    const uint32_t *part_ = nullptr;
    int32_t parts_left_ = 0;
    vel_wchar value_ = 0;
};

// The order of two texts in one pass: -1, 0 or 1.
template <typename Units>
[[gnu::always_inline]] inline int32_t compare_ranks(rank_stream<Units> &first,
                                                    rank_stream<Units> &second) {
    for (;;) {
        rank_t a = first.next(), b = second.next();
        if (a != b) return a < b ? -1 : 1;
        if (is_end_rank(a)) return 0;
    }
}

} // namespace vel

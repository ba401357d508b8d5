// The comparison that all collating functions share.
//
// Most comparisons are decided by a quick walk that keeps nothing. In the others the first pass is
// decided while the texts are read; only when it leaves them equal do the other passes look at
// them, by the units that reading has kept. What the texts have in common at their beginning is
// skipped, since a forward pass finds nothing there; for a backward pass it is where a shorter text
// ends, so texts are read again from their beginning for the first of those.
#pragma once

#include "collate/common_start.h"
#include "collate/quick.h"

namespace vel {

// A result beside -1, 0 and 1: memory could not be had.
constexpr int32_t out_of_memory = 2;

template <typename Text>
[[gnu::noinline]] int32_t compare_lower(const weighing &by, Text a, Text b, unit_list &left,
                                        unit_list &right, int32_t pass, bool whole) {
    for (; pass < by.passes(); ++pass) {
        bool backward = by.is_backward(pass);
        if (backward && !whole) {
            left.clear();
            right.clear();
            keep_units(by, a, left);
            keep_units(by, b, right);
            whole = true;
        }
        if (left.failed() || right.failed()) return out_of_memory;
        rank_stream ranks_left(by, pass, listed_units(left, backward));
        rank_stream ranks_right(by, pass, listed_units(right, backward));
        int32_t order = compare_ranks(ranks_left, ranks_right);
        if (order != 0) return order;
    }
    return 0;
}

// Compares in all passes whatever the weights. `a` and `b` are the texts from their beginning,
// `from_a` and `from_b` where they may begin to differ.
template <typename Text>
[[gnu::noinline]] int32_t compare_fully(const weighing &by, Text a, Text b, Text from_a,
                                        Text from_b) {
    back_to_safe(by, a, from_a, from_b);
    unit_list left, right;
    if (by.is_backward(0)) return compare_lower(by, a, b, left, right, 0, false);
    bool keep = by.passes() > 1;
    rank_stream ranks_a(by, 0, read_units<Text>(by, from_a, keep ? &left : nullptr));
    rank_stream ranks_b(by, 0, read_units<Text>(by, from_b, keep ? &right : nullptr));
    int32_t order = compare_ranks(ranks_a, ranks_b);
    if (order != 0 || !keep) return order;
    keep_units(by, ranks_a.units().rest(), left);
    keep_units(by, ranks_b.units().rest(), right);
    return compare_lower(by, a, b, left, right, 1, from_a.at == a.at);
}

// -1, 0, 1 or out_of_memory. What the texts have in common at their beginning, as far as that may
// be skipped, is `common` bytes or values.
template <typename Text>
[[gnu::always_inline]] inline int32_t compare_behind(size_t common, const weighing &by, Text a,
                                                     Text b) {
    if (by.passes() == 0) return 0;
    Text from_a{a.at + common, a.end}, from_b{b.at + common, b.end};
    int32_t order = compare_quickly(by, from_a, from_b);
    if (order != undecided) [[likely]]
        return order;
    return compare_fully(by, a, b, from_a, from_b);
}

template <typename Text> int32_t compare_texts(const weighing &by, Text a, Text b) {
    return compare_behind(common_start(by, a, b), by, a, b);
}

// The order of two texts by the values of their characters: of the first that differ, or as many as
// one text has left when the other is over.
template <typename Text> int32_t compare_values(Text a, Text b) {
    while (!a.done() && !b.done()) {
        vel_wchar x = a.take(), y = b.take();
        if (x != y) return x < y ? -1 : 1;
    }
    int32_t left = 0;
    for (; !a.done(); a.take()) ++left;
    for (; !b.done(); b.take()) --left;
    return left;
}

inline int32_t sign_of(int32_t order) {
    return (order > 0) - (order < 0);
}

} // namespace vel

// Skipping what two texts have in common at their beginning.
#pragma once

#include "collate/equal_bytes.h"
#include "collate/units.h"

namespace vel {

// The bytes of the characters that two texts have in common at their beginning. Where either goes
// on inside a character, that character is not counted: the texts need not be valid.
template <typename Text> size_t common_start(const Text &a, const Text &b) {
    size_t in_a = static_cast<size_t>(a.end - a.at), in_b = static_cast<size_t>(b.end - b.at);
    size_t same = equal_bytes(a.at, b.at, in_a < in_b ? in_a : in_b);
    Text next_a{a.at + same, a.end}, next_b{b.at + same, b.end};
    while (next_a.at > a.at && (next_a.is_inside() || next_b.is_inside())) {
        --next_a.at;
        --next_b.at;
    }
    return static_cast<size_t>(next_a.at - a.at);
}

// How far comparing may begin behind the beginning. Text in which a character may lack an index is
// looked at from its beginning, as nothing behind such a character counts.
template <typename Text> size_t common_start(const weighing &by, const Text &a, const Text &b) {
    return Text::covered(by.by.layout) ? common_start(a, b) : 0;
}

// The same for values, of which any may lack an index: it is found on the way.
inline size_t common_start(const weighing &by, const wide_text &a, const wide_text &b) {
    const vel_wchar *x = a.at, *y = b.at;
    while (x < a.end && y < b.end && *x == *y && index_in<wide_text>(by, *x) != no_index) ++x, ++y;
    return static_cast<size_t>(x - a.at);
}

// Moves both back to the last place that no collating element reaches across. What stands before
// both is the same, from `begin` of the first on.
template <typename Text> void back_to_safe(const weighing &by, Text begin, Text &a, Text &b) {
    if (!by.has_elements) return;
    while (a.at > begin.at) {
        Text before = a;
        before.back();
        Text look = before;
        if (!by.may(index_in<Text>(by, look.take()), continues_element)) return;
        b.at -= a.at - before.at;
        a = before;
    }
}

} // namespace vel

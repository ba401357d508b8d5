// Skipping what two texts have in common at their beginning.
#pragma once

#include "collate/equal_bytes.h"
#include "collate/units.h"

namespace vel {

// The bytes of the characters that two texts have in common at their beginning. Where either goes
// on inside a character, that character is not counted: the texts need not be valid.
// `same` bytes are known to be the same.
template <typename Text> size_t common_start(const Text &a, const Text &b, size_t same = 0) {
    size_t in_a = static_cast<size_t>(a.end - a.at), in_b = static_cast<size_t>(b.end - b.at);
    size_t rest = (in_a < in_b ? in_a : in_b) - same;
    same += equal_bytes(a.at + same, b.at + same, rest);
    Text next_a{a.at + same, a.end}, next_b{b.at + same, b.end};
    while (next_a.at > a.at && (next_a.is_inside() || next_b.is_inside())) {
        --next_a.at;
        --next_b.at;
    }
    return static_cast<size_t>(next_a.at - a.at);
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

// Moves both to where they begin to differ, or back to a safe place before it. Texts in which a
// character may lack an index stay where they are, as nothing behind such a character counts.
template <typename Text> void skip_equal(const weighing &by, Text &a, Text &b, size_t same) {
    if (!Text::covered(by.by.layout)) return;
    const Text begin = a;
    size_t common = common_start(a, b, same);
    a.at += common;
    b.at += common;
    back_to_safe(by, begin, a, b);
}

// The same for values, of which any may lack an index: what is equal is found on the way.
inline void skip_equal(const weighing &by, wide_text &a, wide_text &b, size_t) {
    const wide_text begin = a;
    while (!a.done() && !b.done() && *a.at == *b.at && index_in<wide_text>(by, *a.at) != no_index) {
        ++a.at;
        ++b.at;
    }
    back_to_safe(by, begin, a, b);
}

} // namespace vel

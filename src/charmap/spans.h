// Cutting terminated strings into spans for the kernels.
//
// A terminated string is taken a window at a time: its end is looked for in the window, which the
// kernel then finds in the cache, and a conversion that stops early has not looked far ahead.
#pragma once

#include <cstring>

#include "charmap/character.h"
#include "charmap/kernels.h"

namespace vel {

constexpr size_t text_window = 16 * 1024;           // bytes
constexpr size_t wide_window = text_window / 4 / 2; // values

// The bytes before the first zero byte, at most `limit` of them; 0 where a zero byte may begin a
// longer character. What follows the span is looked at as one character: it is the terminator, or a
// character that holds a zero byte or crosses the end of the window.
inline size_t span_before_terminator(const sealed_table &table, const unsigned char *at,
                                     size_t limit) {
    if (!is_end(table.cells()[0])) return 0;
    const void *zero = memchr(at, 0, limit);
    return zero ? static_cast<size_t>(static_cast<const unsigned char *>(zero) - at) : limit;
}

// A byte or value with its case turned over if it is one of the 26 letters from `first` on.
template <typename Unit> Unit flip_letter(Unit c, unsigned char first) {
    bool is_letter = static_cast<Unit>(c - first) < 26;
    return static_cast<Unit>(c ^ (is_letter ? 0x20 : 0));
}

inline size_t smaller(size_t a, size_t b) {
    return a < b ? a : b;
}

} // namespace vel

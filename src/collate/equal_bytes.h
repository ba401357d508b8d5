// How far two byte strings are the same.
#pragma once

#include <bit>
#include <cstring>

#include "collate/load_some.h"

namespace vel {

#ifdef __SSE2__

// The first place, below n, where two byte strings differ, or n.
inline size_t equal_bytes(const unsigned char *a, const unsigned char *b, size_t n) {
    for (size_t i = 0; i < n; i += block_bytes) {
        size_t left = n - i < block_bytes ? n - i : block_bytes;
        __m128i same = _mm_cmpeq_epi8(load_some(a + i, left), load_some(b + i, left));
        uint32_t other = ~static_cast<uint32_t>(_mm_movemask_epi8(same)) & ((1u << left) - 1);
        if (other) return i + static_cast<size_t>(std::countr_zero(other));
    }
    return n;
}

#else

// The first place, below n, where two byte strings differ, or n.
inline size_t equal_bytes(const unsigned char *a, const unsigned char *b, size_t n) {
    constexpr size_t word = sizeof(uint64_t);
    size_t i = 0;
    while (i + word <= n && memcmp(a + i, b + i, word) == 0) i += word;
    while (i < n && a[i] == b[i]) ++i;
    return i;
}

#endif

} // namespace vel

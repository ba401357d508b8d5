// How far two byte strings are the same.
#pragma once

#include <bit>
#include <cstring>

#include "charmap/target.h"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace vel {

#ifdef __SSE2__

constexpr size_t block_bytes = 16;

// A block of which the first n bytes are those at `at`. May read beyond them, but not beyond their
// page.
VEL_READS_AROUND inline __m128i load_some(const unsigned char *at, size_t n) {
    constexpr uintptr_t page = 4096;
    bool readable =
        n == block_bytes || reinterpret_cast<uintptr_t>(at) % page <= page - block_bytes;
    if (readable) [[likely]]
        return _mm_loadu_si128(reinterpret_cast<const __m128i *>(at));
    unsigned char bytes[block_bytes] = {};
    memcpy(bytes, at, n);
    return _mm_loadu_si128(reinterpret_cast<const __m128i *>(bytes));
}

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

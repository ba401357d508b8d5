// Blocks of 16 bytes out of short text.
#pragma once

#include <bit>

#include "charmap/target.h"

#ifdef __SSE2__
#include <emmintrin.h>

namespace vel {

constexpr size_t block_bytes = 16;

// Whether a block at this place lies in one page: what begins there can be read to the block's end.
inline bool is_readable_block(const unsigned char *at) {
    constexpr uintptr_t page = 4096;
    return reinterpret_cast<uintptr_t>(at) % page <= page - block_bytes;
}

VEL_READS_AROUND inline __m128i load_block(const unsigned char *at) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i *>(at));
}

// A block of which the first n bytes are those at `at`. May read beyond them, but not beyond their
// page.
VEL_READS_AROUND inline __m128i load_some(const unsigned char *at, size_t n) {
    if (n == block_bytes || is_readable_block(at)) [[likely]]
        return load_block(at);
    unsigned char bytes[block_bytes] = {};
    memcpy(bytes, at, n);
    return load_block(bytes);
}

} // namespace vel
#endif

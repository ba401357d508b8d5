// Pieces of 32 bytes of a string, of which all bytes are looked at at once. Bit i of a mask is byte
// i of the piece.
#pragma once

#include "charmap/target.h"

#ifdef __SSE2__
#include <emmintrin.h>

namespace vel {

constexpr uint32_t piece_bytes = 32;

class piece {
public:
    // Whether a piece at this place lies in one page: what begins there can be read to its end.
    static bool is_readable(const unsigned char *at) {
        constexpr uintptr_t page = 4096;
        return reinterpret_cast<uintptr_t>(at) % page <= page - piece_bytes;
    }

    VEL_READS_AROUND explicit piece(const unsigned char *at)
        : low_(_mm_loadu_si128(reinterpret_cast<const __m128i *>(at))),
          high_(_mm_loadu_si128(reinterpret_cast<const __m128i *>(at) + 1)) {}

    // Bytes from 0x80 on.
    uint32_t high_bytes() const { return mask(low_, high_); }
    // Those of them that are below a bound.
    uint32_t high_bytes_below(int bound) const {
        __m128i wanted = _mm_set1_epi8(static_cast<char>(bound));
        return mask(_mm_cmpgt_epi8(wanted, low_), _mm_cmpgt_epi8(wanted, high_));
    }
    uint32_t equal_to(int byte) const {
        __m128i wanted = _mm_set1_epi8(static_cast<char>(byte));
        return mask(_mm_cmpeq_epi8(wanted, low_), _mm_cmpeq_epi8(wanted, high_));
    }
    uint32_t differences(const piece &other) const {
        return ~mask(_mm_cmpeq_epi8(low_, other.low_), _mm_cmpeq_epi8(high_, other.high_));
    }

private:
    static uint32_t mask(__m128i low, __m128i high) {
        return static_cast<uint32_t>(_mm_movemask_epi8(low)) |
               static_cast<uint32_t>(_mm_movemask_epi8(high)) << 16;
    }

    __m128i low_, high_;
};

} // namespace vel
#endif

// The run kernels for processors with AVX-512, VBMI and VBMI2. Maps of bytes fit in registers;
// longer characters are looked up sixteen at a time, and their targets squeezed together. Stores
// are under a mask, so nothing is written behind the result.
#include <bit>

#include "charmap/target.h"
#include "conv/runs_facts.h"

#if VEL_HAS_WIDE_RUNGS && defined(__x86_64__)

// The compiler's own headers use registers without a value where all lanes are written.
#if !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif

VEL_TARGET_BEGIN("avx2,bmi,bmi2,popcnt,lzcnt,avx512f,avx512bw,avx512cd,avx512vl,avx512vbmi,"
                 "avx512vbmi2")

namespace vel {
namespace {

#include "charmap/generic/utf8_masks.inc.h"

#include "charmap/generic/pair_masks.inc.h"

// A table of 128 or 256 bytes in registers.

struct half_map {
    explicit half_map(const unsigned char *table)
        : low(_mm512_loadu_si512(table)), high(_mm512_loadu_si512(table + 64)) {}

    // The upper bit of the bytes does not count.
    __m512i of(__m512i bytes) const { return _mm512_permutex2var_epi8(low, bytes, high); }

    __m512i low, high;
};

struct byte_map {
    explicit byte_map(const unsigned char *table) : lower(table), upper(table + 128) {}

    __m512i of(__m512i bytes) const {
        return _mm512_mask_mov_epi8(lower.of(bytes), _mm512_movepi8_mask(bytes), upper.of(bytes));
    }

    half_map lower, upper;
};

// At most 64 bytes, zeroes behind. Whole blocks do not wait for a mask.
inline __m512i load_some(const unsigned char *in, size_t n) {
    if (n >= 64) return _mm512_loadu_si512(in);
    return _mm512_maskz_loadu_epi8(low_bits(n), in);
}

inline void store_some(unsigned char *out, size_t n, __m512i bytes) {
    _mm512_mask_storeu_epi8(out, low_bits(n), bytes);
}

struct blocks {
    static constexpr size_t size = 64;

    static size_t copy_same(const run_facts &facts, const unsigned char *in, unsigned char *out) {
        __m512i block = _mm512_loadu_si512(in);
        __m512i others = _mm512_or_si512(block, half_map(facts.other).of(block));
        size_t run = _tzcnt_u64(_mm512_movepi8_mask(others));
        store_some(out, run, block);
        return run;
    }
};

#include "conv/runs_loops.inc.h"

#include "conv/runs_sixteen.inc.h"

#include "conv/runs_bytes.inc.h"

#include "conv/runs_blocks.inc.h"

constexpr run_kernels runs_by_blocks = {{
    map_blocks,
    spread_blocks,
    convert_blocks<pair_blocks>,
    convert_blocks<utf8_blocks>,
    narrow_blocks,
    convert_units<2>,
    convert_units<4>,
}};

} // namespace

const run_kernels *const avx512_runs = &runs_by_blocks;

} // namespace vel

VEL_TARGET_END

#else

const vel::run_kernels *const vel::avx512_runs = nullptr;

#endif

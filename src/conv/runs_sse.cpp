// The run kernels for processors with SSSE3 and SSE4.1: blocks of 16 bytes.
#include <bit>

#include "charmap/target.h"
#include "conv/runs_facts.h"

#if VEL_HAS_X86_RUNGS

VEL_TARGET_BEGIN("ssse3,sse4.1,popcnt")

namespace vel {
namespace {

struct blocks {
    static constexpr size_t size = 16;

    static size_t copy_same(const run_facts &facts, const unsigned char *in, unsigned char *out) {
        const __m128i upper_bits =
            _mm_setr_epi8(1, 2, 4, 8, 16, 32, 64, -128, 0, 0, 0, 0, 0, 0, 0, 0);
        __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i *>(in));
        _mm_storeu_si128(reinterpret_cast<__m128i *>(out), block);
        __m128i lows = _mm_loadu_si128(reinterpret_cast<const __m128i *>(facts.other_low));
        __m128i upper = _mm_and_si128(_mm_srli_epi16(block, 4), _mm_set1_epi8(15));
        __m128i hits =
            _mm_and_si128(_mm_shuffle_epi8(lows, block), _mm_shuffle_epi8(upper_bits, upper));
        __m128i misses = _mm_cmpeq_epi8(hits, _mm_setzero_si128());
        __m128i same = _mm_andnot_si128(block, misses); // the upper bit counts
        return static_cast<size_t>(__builtin_ctz(~static_cast<uint32_t>(_mm_movemask_epi8(same))));
    }
};

#include "conv/runs_loops.inc.h"

} // namespace

const run_kernels *const sse_runs = &runs_by_loops;

} // namespace vel

VEL_TARGET_END

#else

const vel::run_kernels *const vel::sse_runs = nullptr;

#endif

// The run kernels for processors with AVX2 and BMI: blocks of 32 bytes.
#include <bit>

#include "charmap/target.h"
#include "conv/runs_facts.h"

#if VEL_HAS_WIDE_RUNGS

VEL_TARGET_BEGIN("avx2,bmi,bmi2,popcnt,lzcnt")

namespace vel {
namespace {

struct blocks {
    static constexpr size_t size = 32;

    static __m256i twice(const void *in) {
        return _mm256_broadcastsi128_si256(_mm_loadu_si128(static_cast<const __m128i *>(in)));
    }

    static size_t copy_same(const run_facts &facts, const unsigned char *in, unsigned char *out) {
        alignas(16) static constexpr unsigned char upper_bits[16] = {1, 2, 4, 8, 16, 32, 64, 128};
        __m256i block = _mm256_loadu_si256(reinterpret_cast<const __m256i *>(in));
        _mm256_storeu_si256(reinterpret_cast<__m256i *>(out), block);
        __m256i upper = _mm256_and_si256(_mm256_srli_epi16(block, 4), _mm256_set1_epi8(15));
        __m256i hits = _mm256_and_si256(_mm256_shuffle_epi8(twice(facts.other_low), block),
                                        _mm256_shuffle_epi8(twice(upper_bits), upper));
        __m256i misses = _mm256_cmpeq_epi8(hits, _mm256_setzero_si256());
        __m256i same = _mm256_andnot_si256(block, misses); // the upper bit counts
        uint64_t others = ~static_cast<uint64_t>(static_cast<uint32_t>(_mm256_movemask_epi8(same)));
        return static_cast<size_t>(__builtin_ctzll(others));
    }
};

#include "conv/runs_loops.inc.h"

} // namespace

const run_kernels *const avx2_runs = &runs_by_loops;

} // namespace vel

VEL_TARGET_END

#else

const vel::run_kernels *const vel::avx2_runs = nullptr;

#endif

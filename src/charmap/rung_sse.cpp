// The kernels for processors with SSSE3, SSE4.1 and popcnt: blocks of 16 bytes.
#include "charmap/target.h"

#if VEL_HAS_X86_RUNGS

VEL_TARGET_BEGIN("ssse3,sse4.1,popcnt")

namespace vel {
namespace {

struct blocks {
    static constexpr size_t size = 16;
    typedef unsigned char bytes __attribute__((vector_size(16)));
    typedef uint32_t words __attribute__((vector_size(16)));

    static __m128i load128(const void *in) {
        return _mm_loadu_si128(static_cast<const __m128i *>(in));
    }
    static void store128(void *out, __m128i block) {
        _mm_storeu_si128(static_cast<__m128i *>(out), block);
    }
    static bytes load(const void *in) { return reinterpret_cast<bytes>(load128(in)); }
    template <typename Block> static void store(void *out, Block block) {
        store128(out, reinterpret_cast<__m128i>(block));
    }
    static words load_words(const void *in) { return reinterpret_cast<words>(load128(in)); }

    static bytes lookup(const unsigned char *table, bytes at) {
        return reinterpret_cast<bytes>(
            _mm_shuffle_epi8(load128(table), reinterpret_cast<__m128i>(at)));
    }
    // Less `amount`, but not below 0.
    static bytes subtract(bytes block, unsigned char amount) {
        return reinterpret_cast<bytes>(_mm_subs_epu8(reinterpret_cast<__m128i>(block),
                                                     _mm_set1_epi8(static_cast<char>(amount))));
    }
    static bool any(bytes block) {
        __m128i bits = reinterpret_cast<__m128i>(block);
        return !_mm_testz_si128(bits, bits);
    }
    static uint64_t high_bits(const void *in) {
        return static_cast<uint32_t>(_mm_movemask_epi8(load128(in)));
    }
    // The bytes that begin a UTF-8 character.
    static uint64_t start_bits(const void *in) {
        __m128i starts = _mm_cmpgt_epi8(load128(in), _mm_set1_epi8(-65));
        return static_cast<uint32_t>(_mm_movemask_epi8(starts));
    }
    static size_t count_starts(const void *in) {
        return static_cast<size_t>(__builtin_popcount(static_cast<uint32_t>(start_bits(in))));
    }
    VEL_READS_AROUND static uint32_t zero_words(const vel_wchar *in) {
        __m128i block = _mm_load_si128(reinterpret_cast<const __m128i *>(in));
        __m128i zeros = _mm_cmpeq_epi32(block, _mm_setzero_si128());
        return static_cast<uint32_t>(_mm_movemask_ps(_mm_castsi128_ps(zeros)));
    }

    static bool is_ascii(const unsigned char *in) { return high_bits(in) == 0; }
    static void widen16(const unsigned char *in, vel_wchar *out) {
        __m128i block = load128(in);
        store128(out, _mm_cvtepu8_epi32(block));
        store128(out + 4, _mm_cvtepu8_epi32(_mm_srli_si128(block, 4)));
        store128(out + 8, _mm_cvtepu8_epi32(_mm_srli_si128(block, 8)));
        store128(out + 12, _mm_cvtepu8_epi32(_mm_srli_si128(block, 12)));
    }
    static void widen(const unsigned char *in, vel_wchar *out) { widen16(in, out); }

    static __m128i pack16(const vel_wchar *in) {
        __m128i low = _mm_packus_epi32(load128(in), load128(in + 4));
        __m128i high = _mm_packus_epi32(load128(in + 8), load128(in + 12));
        return _mm_packus_epi16(low, high);
    }
    static void narrow16(const vel_wchar *in, unsigned char *out) { store128(out, pack16(in)); }
    static bool narrow(const vel_wchar *in, unsigned char *out, vel_wchar limit) {
        __m128i bits = _mm_or_si128(_mm_or_si128(load128(in), load128(in + 4)),
                                    _mm_or_si128(load128(in + 8), load128(in + 12)));
        __m128i above = _mm_set1_epi32(static_cast<int>(~limit));
        if (!_mm_testz_si128(bits, above)) return false;
        narrow16(in, out);
        return true;
    }

#include "charmap/generic/vector_flip.inc.h"
};

// In the order in which they stand on each other.
#include "charmap/generic/loops.inc.h"

#include "charmap/generic/utf8_check.inc.h"

#include "charmap/generic/utf8_decode.inc.h"

#include "charmap/generic/encode.inc.h"

#include "charmap/generic/words.inc.h"

#include "charmap/generic/vector_kernels.inc.h"

} // namespace

const text_kernels *const sse_kernels = &vector_kernels;

} // namespace vel

VEL_TARGET_END

#else

const vel::text_kernels *const vel::sse_kernels = nullptr;

#endif

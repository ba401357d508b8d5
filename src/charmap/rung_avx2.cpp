// The kernels for processors with AVX2 and BMI: blocks of 32 bytes.
#include "charmap/target.h"

#if VEL_HAS_WIDE_RUNGS

VEL_TARGET_BEGIN("avx2,bmi,bmi2,popcnt,lzcnt")

namespace vel {
namespace {

struct blocks {
    static constexpr size_t size = 32;
    typedef unsigned char bytes __attribute__((vector_size(32)));
    typedef uint32_t words __attribute__((vector_size(32)));

    static __m256i load256(const void *in) {
        return _mm256_loadu_si256(static_cast<const __m256i *>(in));
    }
    static void store256(void *out, __m256i block) {
        _mm256_storeu_si256(static_cast<__m256i *>(out), block);
    }
    static bytes load(const void *in) { return reinterpret_cast<bytes>(load256(in)); }
    template <typename Block> static void store(void *out, Block block) {
        store256(out, reinterpret_cast<__m256i>(block));
    }
    static words load_words(const void *in) { return reinterpret_cast<words>(load256(in)); }

    static bytes lookup(const unsigned char *table, bytes at) {
        __m128i half = _mm_loadu_si128(reinterpret_cast<const __m128i *>(table));
        return reinterpret_cast<bytes>(
            _mm256_shuffle_epi8(_mm256_broadcastsi128_si256(half), reinterpret_cast<__m256i>(at)));
    }
    // Less `amount`, but not below 0.
    static bytes subtract(bytes block, unsigned char amount) {
        return reinterpret_cast<bytes>(_mm256_subs_epu8(
            reinterpret_cast<__m256i>(block), _mm256_set1_epi8(static_cast<char>(amount))));
    }
    static bool any(bytes block) {
        __m256i bits = reinterpret_cast<__m256i>(block);
        return !_mm256_testz_si256(bits, bits);
    }
    static uint64_t high_bits(const void *in) {
        return static_cast<uint32_t>(_mm256_movemask_epi8(load256(in)));
    }
    // The bytes that begin a UTF-8 character.
    static uint64_t start_bits(const void *in) {
        __m256i starts = _mm256_cmpgt_epi8(load256(in), _mm256_set1_epi8(-65));
        return static_cast<uint32_t>(_mm256_movemask_epi8(starts));
    }
    static size_t count_starts(const void *in) {
        return static_cast<size_t>(__builtin_popcount(static_cast<uint32_t>(start_bits(in))));
    }
    VEL_READS_AROUND static uint32_t zero_words(const vel_wchar *in) {
        __m256i block = _mm256_load_si256(reinterpret_cast<const __m256i *>(in));
        __m256i zeros = _mm256_cmpeq_epi32(block, _mm256_setzero_si256());
        return static_cast<uint32_t>(_mm256_movemask_ps(_mm256_castsi256_ps(zeros)));
    }

    static bool is_ascii(const unsigned char *in) { return high_bits(in) == 0; }
    static void widen8(const unsigned char *in, vel_wchar *out) {
        __m128i block = _mm_loadl_epi64(reinterpret_cast<const __m128i *>(in));
        store256(out, _mm256_cvtepu8_epi32(block));
    }
    static void widen16(const unsigned char *in, vel_wchar *out) {
        widen8(in, out);
        widen8(in + 8, out + 8);
    }
    static void widen(const unsigned char *in, vel_wchar *out) {
        widen16(in, out);
        widen16(in + 16, out + 16);
    }

    static void narrow16(const vel_wchar *in, unsigned char *out) {
        // Packing works on halves: the quarters come out as 0, 2, 1, 3.
        __m256i pairs = _mm256_packus_epi32(load256(in), load256(in + 8));
        pairs = _mm256_permute4x64_epi64(pairs, 0xD8);
        __m128i packed =
            _mm_packus_epi16(_mm256_castsi256_si128(pairs), _mm256_extracti128_si256(pairs, 1));
        _mm_storeu_si128(reinterpret_cast<__m128i *>(out), packed);
    }
    static bool narrow(const vel_wchar *in, unsigned char *out, vel_wchar limit) {
        __m256i bits = _mm256_or_si256(_mm256_or_si256(load256(in), load256(in + 8)),
                                       _mm256_or_si256(load256(in + 16), load256(in + 24)));
        __m256i above = _mm256_set1_epi32(static_cast<int>(~limit));
        if (!_mm256_testz_si256(bits, above)) return false;
        narrow16(in, out);
        narrow16(in + 16, out + 16);
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

const text_kernels *const avx2_kernels = &vector_kernels;

} // namespace vel

VEL_TARGET_END

#else

const vel::text_kernels *const vel::avx2_kernels = nullptr;

#endif

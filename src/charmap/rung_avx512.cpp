// The kernels for processors with AVX-512 and VBMI2, whose compress and permute instructions do for
// 64 bytes at once what the other rungs do for a character or four. Stores are under a mask, so
// nothing is written behind the result.
#include "charmap/target.h"

#if VEL_HAS_WIDE_RUNGS && defined(__x86_64__)

// The compiler's own headers use registers without a value where all lanes are written.
#if !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif

VEL_TARGET_BEGIN("avx2,bmi,bmi2,popcnt,lzcnt,avx512f,avx512bw,avx512cd,avx512vl,avx512vbmi,"
                 "avx512vbmi2")

namespace vel {
namespace {

struct blocks {
    static constexpr size_t size = 64;
    typedef unsigned char bytes __attribute__((vector_size(64)));
    typedef uint32_t words __attribute__((vector_size(64)));

    static bytes load(const void *in) { return reinterpret_cast<bytes>(_mm512_loadu_si512(in)); }

    static bytes lookup(const unsigned char *table, bytes at) {
        __m128i quarter = _mm_loadu_si128(reinterpret_cast<const __m128i *>(table));
        return reinterpret_cast<bytes>(
            _mm512_shuffle_epi8(_mm512_broadcast_i32x4(quarter), reinterpret_cast<__m512i>(at)));
    }
    // Less `amount`, but not below 0.
    static bytes subtract(bytes block, unsigned char amount) {
        return reinterpret_cast<bytes>(_mm512_subs_epu8(
            reinterpret_cast<__m512i>(block), _mm512_set1_epi8(static_cast<char>(amount))));
    }
    static bool any(bytes block) {
        __m512i bits = reinterpret_cast<__m512i>(block);
        return _mm512_test_epi8_mask(bits, bits) != 0;
    }
    static size_t count_starts(const void *in) {
        __mmask64 starts = _mm512_cmpgt_epi8_mask(_mm512_loadu_si512(in), _mm512_set1_epi8(-65));
        return static_cast<size_t>(__builtin_popcountll(starts));
    }
    VEL_READS_AROUND static uint32_t zero_words(const vel_wchar *in) {
        __m512i block = _mm512_load_si512(in);
        return _mm512_testn_epi32_mask(block, block);
    }

    static bool is_ascii(const unsigned char *in) {
        return _mm512_movepi8_mask(_mm512_loadu_si512(in)) == 0;
    }
    static void widen(const unsigned char *in, vel_wchar *out) {
        for (int i = 0; i < 64; i += 16) {
            __m128i part = _mm_loadu_si128(reinterpret_cast<const __m128i *>(in + i));
            _mm512_storeu_si512(out + i, _mm512_cvtepu8_epi32(part));
        }
    }
    static bool narrow(const vel_wchar *in, unsigned char *out, vel_wchar limit) {
        __m512i part[4];
        for (int i = 0; i < 4; ++i) part[i] = _mm512_loadu_si512(in + 16 * i);
        __m512i bits =
            _mm512_or_si512(_mm512_or_si512(part[0], part[1]), _mm512_or_si512(part[2], part[3]));
        __m512i above = _mm512_set1_epi32(static_cast<int>(~limit));
        if (_mm512_test_epi32_mask(bits, above)) return false;
        for (int i = 0; i < 4; ++i) {
            _mm_storeu_si128(reinterpret_cast<__m128i *>(out + 16 * i),
                             _mm512_cvtepi32_epi8(part[i]));
        }
        return true;
    }

    static bool flip(const vel_wchar *in, vel_wchar *out, unsigned char first) {
        __m512i part[4];
        for (int i = 0; i < 4; ++i) part[i] = _mm512_loadu_si512(in + 16 * i);
        __m512i bits =
            _mm512_or_si512(_mm512_or_si512(part[0], part[1]), _mm512_or_si512(part[2], part[3]));
        if (_mm512_test_epi32_mask(bits, _mm512_set1_epi32(~0x7F))) return false;
        for (int i = 0; i < 4; ++i) {
            __mmask16 letters = _mm512_cmplt_epu32_mask(
                _mm512_sub_epi32(part[i], _mm512_set1_epi32(first)), _mm512_set1_epi32(26));
            __m512i turn = _mm512_maskz_set1_epi32(letters, 0x20);
            _mm512_storeu_si512(out + 16 * i, _mm512_xor_si512(part[i], turn));
        }
        return true;
    }
};

// In the order in which they stand on each other.
#include "charmap/generic/loops.inc.h"

#include "charmap/generic/utf8_check.inc.h"

#include "charmap/generic/words.inc.h"

#include "charmap/generic/utf8_masks.inc.h"

#include "charmap/generic/compress_utf8.inc.h"

#include "charmap/generic/pair_masks.inc.h"

#include "charmap/generic/pair_rows.inc.h"

#include "charmap/generic/compress_encode.inc.h"

// As flip_run, the end of the run included, which is most of it where other letters are frequent.
inline size_t flip_bytes(const unsigned char *in, size_t n, unsigned char *out,
                         unsigned char first) {
    size_t i = 0;
    while (i < n) {
        size_t size = smaller(n - i, 64);
        __m512i block = _mm512_maskz_loadu_epi8(low_bits(size), in + i);
        uint64_t high = _mm512_movepi8_mask(block);
        size_t run = high ? static_cast<size_t>(__builtin_ctzll(high)) : size;
        __mmask64 letters = _mm512_cmplt_epu8_mask(
            _mm512_sub_epi8(block, _mm512_set1_epi8(static_cast<char>(first))),
            _mm512_set1_epi8(26));
        __m512i turn = _mm512_maskz_set1_epi8(letters, 0x20);
        _mm512_mask_storeu_epi8(out + i, low_bits(run), _mm512_xor_si512(block, turn));
        i += run;
        if (high) break;
    }
    return i;
}

constexpr text_kernels compress_kernels = {
    {loops_of<table_set<false>>,
     loops_of<table_set<false>>,
     {decode_utf8, count_utf8, encode_compressed<utf8_set>},
     {decode_pairs, count_pairs, encode_compressed<table_set<true>>}},
    widen_bytes,
    narrow_bytes,
    wide_run,
    flip_bytes,
    flip_run<vel_wchar>,
};

} // namespace

const text_kernels *const avx512_kernels = &compress_kernels;

} // namespace vel

VEL_TARGET_END

#else

const vel::text_kernels *const vel::avx512_kernels = nullptr;

#endif

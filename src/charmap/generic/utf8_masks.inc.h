// UTF-8 by masks, and gathering characters with permute. For AVX-512 with VBMI2 only. No include
// guard.
//
// A block is at most 64 bytes that begin with a character. Its upper four bit planes as 64-bit
// masks tell leads from trails and how many trails each lead asks for; only E0, ED, F0, F4 and the
// bytes that never occur need another look.

// The bit planes of a block as far as UTF-8 structure goes.
struct utf8_masks {
    uint64_t trails; // 80..BF
    uint64_t leads;  // C0..FF: two bytes and more
    uint64_t three;  // E0..FF
    uint64_t four;   // F0..FF
    uint64_t bit5, bit4;

    // Where the leads ask for trails.
    uint64_t wanted() const { return leads << 1 | three << 2 | four << 3; }
};

inline utf8_masks masks_of(__m512i block) {
    uint64_t high = _mm512_movepi8_mask(block);
    uint64_t bit6 = _mm512_movepi8_mask(_mm512_slli_epi16(block, 1));
    uint64_t bit5 = _mm512_movepi8_mask(_mm512_slli_epi16(block, 2));
    uint64_t bit4 = _mm512_movepi8_mask(_mm512_slli_epi16(block, 3));
    uint64_t leads = high & bit6;
    return {high & ~bit6, leads, leads & bit5, leads & bit5 & bit4, bit5, bit4};
}

// Non-zero for C0, C1, E0, ED, F0 and F4 to FF, by the lower six bits of a lead.
alignas(64) constexpr unsigned char touchy_leads[64] = {
    1, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
    1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 1, 0, 0, 0, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1,
};

inline uint64_t equal_bytes(__m512i block, unsigned char b) {
    return _mm512_cmpeq_epi8_mask(block, _mm512_set1_epi8(static_cast<char>(b)));
}

// Whether the touchy leads of a block have the second bytes they need. Leads are marked where they
// stand, second bytes by their planes: bit 5 for A0 and up, bits 5 or 4 for 90 and up.
[[gnu::noinline]] inline uint64_t touchy_errors(__m512i block, const utf8_masks &masks) {
    uint64_t a0 = masks.bit5, above_90 = masks.bit5 | masks.bit4;
    uint64_t never = equal_bytes(_mm512_and_si512(block, _mm512_set1_epi8(-2)), 0xC0) |
                     _mm512_cmpge_epu8_mask(block, _mm512_set1_epi8(static_cast<char>(0xF5)));
    uint64_t too_low =
        (equal_bytes(block, 0xE0) << 1 & ~a0) | (equal_bytes(block, 0xF0) << 1 & ~above_90);
    uint64_t too_high =
        (equal_bytes(block, 0xED) << 1 & a0) | (equal_bytes(block, 0xF4) << 1 & above_90);
    return never | too_low | too_high;
}

inline bool has_touchy(__m512i block, uint64_t leads) {
    __m512i kinds = _mm512_permutexvar_epi8(block, _mm512_load_si512(touchy_leads));
    return _mm512_mask_test_epi8_mask(leads, kinds, kinds) != 0;
}

// The bits below n, which is at most 64.
inline uint64_t low_bits(size_t n) {
    return _bzhi_u64(~uint64_t{0}, static_cast<uint32_t>(n));
}

// The bytes of the block that are whole characters: `size` less those of a cut one at its end.
inline size_t whole_bytes(const utf8_masks &masks, size_t size) {
    uint64_t cut = (masks.leads & ~low_bits(size - 1)) |
                   (masks.three & ~(low_bits(size - 1) >> 1)) |
                   (masks.four & ~(low_bits(size - 1) >> 2));
    return cut ? static_cast<size_t>(__builtin_ctzll(cut)) : size;
}

alignas(64) constexpr unsigned char count_up[64] = {
    0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21,
    22, 23, 24, 25, 26, 27, 28, 29, 30, 31, 32, 33, 34, 35, 36, 37, 38, 39, 40, 41, 42, 43,
    44, 45, 46, 47, 48, 49, 50, 51, 52, 53, 54, 55, 56, 57, 58, 59, 60, 61, 62, 63,
};
// 0 0 0 0 1 1 1 1 and so on, to give each lane its position four times.
alignas(64) constexpr unsigned char four_times[64] = {
    0,  0,  0,  0,  1,  1,  1,  1,  2,  2,  2,  2,  3,  3,  3,  3,  4,  4,  4,  4,  5,  5,
    5,  5,  6,  6,  6,  6,  7,  7,  7,  7,  8,  8,  8,  8,  9,  9,  9,  9,  10, 10, 10, 10,
    11, 11, 11, 11, 12, 12, 12, 12, 13, 13, 13, 13, 14, 14, 14, 14, 15, 15, 15, 15,
};
alignas(64) constexpr uint32_t lane_shifts[16] = {24, 24, 24, 24, 24, 24, 24, 24,
                                                  24, 24, 24, 24, 16, 16, 8,  0};

// The four bytes from each of sixteen positions on, number `from` first, as big-endian values. What
// lies beyond the block is whatever the permute wraps round to.
inline __m512i sixteen_from(__m512i block, __m512i positions, size_t from) {
    const __m512i turned = _mm512_set1_epi32(0x00010203); // last byte of a character first
    __m512i spread =
        _mm512_add_epi8(_mm512_load_si512(four_times), _mm512_set1_epi8(static_cast<char>(from)));
    __m512i at = _mm512_permutexvar_epi8(spread, positions);
    return _mm512_permutexvar_epi8(_mm512_add_epi8(at, turned), block);
}

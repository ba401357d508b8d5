// Decoding UTF-8 with compress and permute. For AVX-512 with VBMI2 only. Stands on
// utf8_masks.inc.h.
//
// The positions of the leads of a block are compressed to the front; then sixteen characters at a
// time are gathered by one permute, and shifted by their lengths.

// Stores the characters that begin at `starts`.
inline void store_characters(__m512i block, uint64_t starts, size_t count, vel_wchar *out) {
    __m512i positions = _mm512_maskz_compress_epi8(starts, _mm512_load_si512(count_up));
    const __m512i shifts = _mm512_load_si512(lane_shifts);
    uint64_t lanes = low_bits(count);
    for (size_t done = 0; done < count; done += 16, lanes >>= 16) {
        __m512i packed = sixteen_from(block, positions, done);
        __m512i shift = _mm512_permutexvar_epi32(_mm512_srli_epi32(packed, 28), shifts);
        _mm512_mask_storeu_epi32(out + done, static_cast<__mmask16>(lanes),
                                 _mm512_srlv_epi32(packed, shift));
    }
}

inline void widen_masked(__m512i block, size_t n, vel_wchar *out) {
    uint64_t lanes = low_bits(n);
    for (size_t done = 0; done < n; done += 16, lanes >>= 16) {
        __m512i at =
            _mm512_add_epi8(_mm512_load_si512(count_up), _mm512_set1_epi8(static_cast<char>(done)));
        __m128i part = _mm512_castsi512_si128(_mm512_permutexvar_epi8(at, block));
        _mm512_mask_storeu_epi32(out + done, static_cast<__mmask16>(lanes),
                                 _mm512_cvtepu8_epi32(part));
    }
}

inline span_progress decode_utf8(span_state &state, const unsigned char *in, size_t n,
                                 vel_wchar *out, size_t room) {
    size_t i = 0, o = 0;
    while (i < n) {
        size_t size = smaller(n - i, 64);
        __m512i block = _mm512_maskz_loadu_epi8(low_bits(size), in + i);
        uint64_t high = _mm512_movepi8_mask(block);
        if (high == 0) {
            if (room - o < size) break;
            if (size == 64)
                blocks::widen(in + i, out + o);
            else
                widen_masked(block, size, out + o);
            i += size;
            o += size;
            continue;
        }
        utf8_masks masks = masks_of(block);
        size = whole_bytes(masks, size);
        uint64_t inside = low_bits(size);
        // Where a cut character begins no trail may be wanted either.
        if ((masks.wanted() ^ masks.trails) & low_bits(size + 1)) break;
        if (has_touchy(block, masks.leads) && (touchy_errors(block, masks) & inside)) break;
        uint64_t starts = ~masks.trails & inside;
        size_t count = static_cast<size_t>(__builtin_popcountll(starts));
        if (count == 0 || count > room - o) break;
        store_characters(block, starts, count, out + o);
        i += size;
        o += count;
    }
    span_progress rest = decode_set<utf8_set>(state, in + i, n - i, out + o, room - o);
    return {i + rest.read, o + rest.written};
}

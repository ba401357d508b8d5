// Characters looked up sixteen at a time, and their targets squeezed together. For AVX-512 with
// VBMI2 only. Stands on utf8_masks.inc.h and runs_loops.inc.h; no include guard.

// Where the last cells of sixteen characters are, for the lanes that have one.
struct sixteen_places {
    __m512i cells;
    __mmask16 lanes;
};

// What was written, and for how many of the characters.
struct sixteen_written {
    size_t characters, bytes;
};

// Writes the targets of the characters before the first lane that is missing or not plain; none
// when there is no room for them.
inline sixteen_written put_sixteen(const entry_table &table, const sixteen_places &at,
                                   unsigned char *out, size_t room) {
    constexpr uint32_t plain = static_cast<uint32_t>(entry_end >> 32) | entry_plain;
    const __m512i lower_halves =
        _mm512_setr_epi32(0, 2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24, 26, 28, 30);
    const __m512i first_of_four = _mm512_set4_epi32(0x0C0C0C0C, 0x08080808, 0x04040404, 0);
    const __m512i none = _mm512_setzero_si512();
    const auto *cells = reinterpret_cast<const long long *>(table.cells());
    __m512i first = _mm512_mask_i32gather_epi64(none, static_cast<__mmask8>(at.lanes),
                                                _mm512_castsi512_si256(at.cells), cells, 8);
    __m512i second = _mm512_mask_i32gather_epi64(none, static_cast<__mmask8>(at.lanes >> 8),
                                                 _mm512_extracti64x4_epi64(at.cells, 1), cells, 8);
    __m512i bytes = _mm512_permutex2var_epi32(first, lower_halves, second);
    __m512i upper = _mm512_permutex2var_epi32(
        first, _mm512_add_epi32(lower_halves, _mm512_set1_epi32(1)), second);
    __m512i lengths = _mm512_sub_epi32(upper, _mm512_set1_epi32(static_cast<int>(plain)));
    uint32_t good = _mm512_cmplt_epu32_mask(_mm512_sub_epi32(lengths, _mm512_set1_epi32(1)),
                                            _mm512_set1_epi32(4));
    size_t characters = _tzcnt_u32(~good);
    lengths = _mm512_shuffle_epi8(lengths, first_of_four);
    __m512i places = _mm512_and_si512(_mm512_load_si512(count_up), _mm512_set1_epi8(3));
    uint64_t used = _mm512_mask_cmplt_epu8_mask(low_bits(4 * characters), places, lengths);
    size_t count = static_cast<size_t>(__builtin_popcountll(used));
    if (count > room) return {0, 0};
    store_some(out, count, _mm512_maskz_compress_epi8(used, bytes));
    return {characters, count};
}

// Sixteen units at `in`, or as many as `count`: single bytes, or units last byte first.

template <int unit> __m512i load_units(const unsigned char *in, size_t count) {
    __mmask16 lanes = static_cast<__mmask16>(low_bits(count));
    if (unit == 4) return _mm512_maskz_loadu_epi32(lanes, in);
    if (unit == 2) return _mm512_cvtepu16_epi32(_mm256_maskz_loadu_epi16(lanes, in));
    return _mm512_cvtepu8_epi32(_mm_maskz_loadu_epi8(lanes, in));
}

// Those of pairs, given as words with the first byte above the second.
inline sixteen_places find_pairs(const run_facts &facts, __m512i pairs, __mmask16 lanes) {
    __m512i low = _mm512_set1_epi32(static_cast<int>(facts.row_low));
    __m512i second = _mm512_sub_epi32(_mm512_and_si512(pairs, _mm512_set1_epi32(0xFF)), low);
    __m512i row = _mm512_mask_i32gather_epi32(_mm512_setzero_si512(), lanes,
                                              _mm512_srli_epi32(pairs, 8), facts.rows, 4);
    lanes = _mm512_mask_test_epi32_mask(lanes, row, row);
    lanes = _mm512_mask_cmplt_epu32_mask(lanes, second,
                                         _mm512_set1_epi32(static_cast<int>(facts.row_width)));
    return {_mm512_add_epi32(row, second), lanes};
}

template <int unit>
sixteen_places find_units(const run_facts &facts, __m512i units, __mmask16 lanes) {
    if (unit == 1) return {units, lanes};
    if (unit == 4) lanes = _mm512_mask_cmplt_epu32_mask(lanes, units, _mm512_set1_epi32(0x10000));
    return find_pairs(facts, units, lanes);
}

template <int unit>
run_progress convert_units(const entry_table &table, const void *learned, const unsigned char *in,
                           size_t n, unsigned char *out, size_t room) {
    using order = std::conditional_t<unit == 1, byte_order, unit_order<unit>>;
    const run_facts &facts = *static_cast<const run_facts *>(learned);
    const order source(table);
    size_t i = 0, o = 0;
    while (n - i >= unit) {
        size_t count = smaller((n - i) / unit, 16);
        __mmask16 lanes = static_cast<__mmask16>(low_bits(count));
        __m512i units = load_units<unit>(in + i, count);
        sixteen_written put =
            put_sixteen(table, find_units<unit>(facts, units, lanes), out + o, room - o);
        i += put.characters * unit;
        o += put.bytes;
        if (put.characters == count) continue;
        if (room - o < blocks::size) break;
        run_progress one = convert_one(source, in + i, n - i, out + o, room - o);
        if (one.read == 0) return {i, o};
        i += one.read;
        o += one.written;
    }
    run_progress rest = convert_each(source, facts, in + i, n - i, out + o, room - o);
    return {i + rest.read, o + rest.written};
}

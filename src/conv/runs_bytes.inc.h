// The kernels of single bytes, which take 64 at a time. For AVX-512 with VBMI2 only. Stands on
// runs_sixteen.inc.h; no include guard.

// The bytes of a block that are converted to themselves; the usual case are all of ASCII but 0.
struct same_bytes {
    explicit same_bytes(const run_facts &facts)
        : other(facts.other), all_but_zero(facts.odd_count == 1 && facts.odd[0] == 0) {}

    uint64_t in(__m512i block) const {
        if (all_but_zero) return _mm512_cmpgt_epi8_mask(block, _mm512_setzero_si512());
        return ~_mm512_movepi8_mask(_mm512_or_si512(block, other.of(block)));
    }
    // Whether all of the first `size` are such bytes.
    bool all(__m512i block, size_t size) const { return (~in(block)&low_bits(size)) == 0; }

    half_map other;
    bool all_but_zero;
};

// Bytes to bytes.
inline run_progress map_blocks(const entry_table &, const void *learned, const unsigned char *in,
                               size_t n, unsigned char *out, size_t room) {
    const run_facts &facts = *static_cast<const run_facts *>(learned);
    const byte_map map(facts.bytes);
    const __m512i none = _mm512_set1_epi8(static_cast<char>(facts.none));
    const uint64_t counts = facts.all_plain ? 0 : ~uint64_t{0};
    n = smaller(n, room);
    size_t i = 0;
    for (; n - i >= 64; i += 64) {
        __m512i bytes = map.of(_mm512_loadu_si512(in + i));
        if (_mm512_cmpeq_epi8_mask(bytes, none) & counts) break;
        _mm512_storeu_si512(out + i, bytes);
    }
    size_t size = smaller(n - i, 64);
    __m512i bytes = map.of(load_some(in + i, size));
    size = smaller(size, _tzcnt_u64(_mm512_cmpeq_epi8_mask(bytes, none) & counts));
    store_some(out + i, size, bytes);
    return {i + size, i + size};
}

// Bytes to longer characters: the bytes of the targets are looked up one place after the other, and
// woven together.

inline size_t squeeze(unsigned char *out, __m512i bytes, uint64_t used) {
    size_t count = static_cast<size_t>(__builtin_popcountll(used));
    store_some(out, count, _mm512_maskz_compress_epi8(used, bytes));
    return count;
}

// What the bytes of a block become, place by place; nothing where they are no plain characters.
struct spread_maps {
    explicit spread_maps(const run_facts &facts)
        : first(facts.spread[0]), second(facts.spread[1]), third(facts.spread[2]),
          only_upper(facts.odd_count == 1 && facts.odd[0] == 0) {}

    __m512i first_of(__m512i block) const {
        if (!only_upper) return first.of(block);
        return _mm512_mask_mov_epi8(block, _mm512_movepi8_mask(block), first.upper.of(block));
    }
    static __m512i further_of(const byte_map &map, __m512i block, bool only_upper) {
        if (!only_upper) return map.of(block);
        return _mm512_maskz_mov_epi8(_mm512_movepi8_mask(block), map.upper.of(block));
    }
    __m512i second_of(__m512i block) const { return further_of(second, block, only_upper); }
    __m512i third_of(__m512i block) const { return further_of(third, block, only_upper); }

    byte_map first, second, third;
    bool only_upper; // all of ASCII but 0 stays
};

// Targets of one and two bytes; the qwords of the block were put in this order.
alignas(64) constexpr uint64_t halves_apart[8] = {0, 4, 1, 5, 2, 6, 3, 7};

inline size_t put_woven(__m512i first, __m512i second, unsigned char *out) {
    __m512i low = _mm512_unpacklo_epi8(first, second);
    __m512i high = _mm512_unpackhi_epi8(first, second);
    size_t count = squeeze(out, low, _mm512_test_epi8_mask(low, low));
    return count + squeeze(out + count, high, _mm512_test_epi8_mask(high, high));
}

// The same with three, the dwords in this order.
alignas(64) constexpr uint32_t quarters_apart[16] = {0, 4, 8,  12, 1, 5, 9,  13,
                                                     2, 6, 10, 14, 3, 7, 11, 15};

inline size_t put_woven(__m512i first, __m512i second, __m512i third, unsigned char *out) {
    const __m512i none = _mm512_setzero_si512();
    __m512i pairs[2] = {_mm512_unpacklo_epi8(first, second), _mm512_unpackhi_epi8(first, second)};
    __m512i thirds[2] = {_mm512_unpacklo_epi8(third, none), _mm512_unpackhi_epi8(third, none)};
    size_t count = 0;
    for (int half = 0; half < 2; ++half) {
        __m512i low = _mm512_unpacklo_epi16(pairs[half], thirds[half]);
        __m512i high = _mm512_unpackhi_epi16(pairs[half], thirds[half]);
        count += squeeze(out + count, low, _mm512_test_epi8_mask(low, low));
        count += squeeze(out + count, high, _mm512_test_epi8_mask(high, high));
    }
    return count;
}

inline __m512i apart_by_halves(__m512i block) {
    return _mm512_permutexvar_epi64(_mm512_load_si512(halves_apart), block);
}

// Writes the targets of a block of plain characters, or of such and zero bytes behind them;
// `halves` are those of the block, and `first` their first places.
inline size_t put_spread(const spread_maps &maps, bool has_thirds, __m512i block, __m512i halves,
                         __m512i first, unsigned char *out) {
    __m512i third = has_thirds ? maps.third_of(halves) : _mm512_setzero_si512();
    if (!_mm512_test_epi8_mask(third, third)) return put_woven(first, maps.second_of(halves), out);
    __m512i quarters = _mm512_permutexvar_epi32(_mm512_load_si512(quarters_apart), block);
    return put_woven(maps.first_of(quarters), maps.second_of(quarters), maps.third_of(quarters),
                     out);
}

inline run_progress spread_blocks(const entry_table &table, const void *learned,
                                  const unsigned char *in, size_t n, unsigned char *out,
                                  size_t room) {
    const run_facts &facts = *static_cast<const run_facts *>(learned);
    if (!facts.spread_fits) return convert_units<1>(table, learned, in, n, out, room);
    const bool has_thirds = facts.has_thirds;
    const same_bytes same(facts);
    const spread_maps maps(facts);
    size_t i = 0, o = 0;
    while (i < n) {
        size_t size = smaller(n - i, 64);
        __m512i block = load_some(in + i, size);
        if (room - o < 3 * size) break;
        if (same.all(block, size)) {
            store_some(out + o, size, block);
            i += size;
            o += size;
            continue;
        }
        __m512i halves = apart_by_halves(block);
        __m512i first = maps.first_of(halves);
        size_t plain = size;
        if (_mm512_testn_epi8_mask(first, first)) { // also where the text ends
            __m512i in_order = maps.first_of(block);
            plain = smaller(size, _tzcnt_u64(_mm512_testn_epi8_mask(in_order, in_order)));
            block = load_some(in + i, plain);
            halves = apart_by_halves(block);
            first = maps.first_of(halves);
        }
        o += put_spread(maps, has_thirds, block, halves, first, out + o);
        i += plain;
        if (plain < size) return {i, o};
    }
    run_progress rest = convert_each(byte_order(table), facts, in + i, n - i, out + o, room - o);
    return {i + rest.read, o + rest.written};
}

// The kernels of longer characters, which take 64 bytes at a time. For AVX-512 with VBMI2 only.
// Stands on runs_sixteen.inc.h and runs_bytes.inc.h; no include guard.

// The characters that a block begins with: their first bytes, and how far they reach.
struct block_characters {
    uint64_t starts;
    size_t size;
    uint64_t leads = 0; // of pairs
};

// Bytes and pairs of bytes.
struct pair_blocks {
    static constexpr size_t least = 32; // of characters that begin in 64 bytes

    pair_blocks(const run_facts &f) : facts(f), leading(f.leads) {}

    block_characters look_at(__m512i block, size_t size) const {
        uint64_t leads = _mm512_movepi8_mask(leading.of(block)) & low_bits(size);
        uint64_t starts = ~trails_behind(leads) & low_bits(size);
        leads &= starts;
        size -= leads >> (size - 1) & 1; // cut off
        return {starts & low_bits(size), size, leads};
    }
    // The first `least` characters.
    block_characters look_at_some(__m512i block) const {
        uint64_t leads = _mm512_movepi8_mask(leading.of(block));
        uint64_t starts = ~trails_behind(leads);
        size_t size = _tzcnt_u64(_pdep_u64(uint64_t{1} << least, starts));
        return {starts, size, leads & starts};
    }

    // Of sixteen characters from number `done` on.
    sixteen_places find(__m512i block, const block_characters &characters, __m512i positions,
                        size_t done, __mmask16 lanes) const {
        __m512i four_bytes = sixteen_from(block, positions, done);
        __mmask16 two =
            static_cast<__mmask16>(_pext_u64(characters.leads, characters.starts) >> done);
        __mmask16 one = static_cast<__mmask16>(lanes & ~two);
        sixteen_places at = find_pairs(facts, _mm512_srli_epi32(four_bytes, 16),
                                       static_cast<__mmask16>(lanes & two));
        at.cells = _mm512_mask_srli_epi32(at.cells, one, four_bytes, 24);
        at.lanes = static_cast<__mmask16>(at.lanes | one);
        return at;
    }

    const run_facts &facts;
    byte_map leading;
};

// Up to three bytes of UTF-8.
struct utf8_blocks {
    static constexpr size_t least = 16;

    utf8_blocks(const run_facts &f) : facts(f) {}

    static uint64_t errors_in(__m512i block, const utf8_masks &masks) {
        uint64_t errors = masks.wanted() ^ masks.trails;
        if (has_touchy(block, masks.leads)) errors |= touchy_errors(block, masks);
        return errors | masks.four;
    }
    static block_characters look_at(__m512i block, size_t size) {
        utf8_masks masks = masks_of(block);
        size = smaller(size, _tzcnt_u64(errors_in(block, masks)));
        if (size) size = smaller(size, whole_bytes(masks, size));
        return {~masks.trails & low_bits(size), size};
    }
    // The next block waits for the size alone, which is therefore told without the errors. That a
    // last trail is missing shows behind it.
    static block_characters look_at_some(__m512i block) {
        uint64_t starts = _mm512_cmpge_epi8_mask(block, _mm512_set1_epi8(-64));
        size_t size = _tzcnt_u64(_pdep_u64(uint64_t{1} << least, starts));
        bool bad = size == 64 || (errors_in(block, masks_of(block)) & low_bits(size + 1));
        return {starts, bad ? 0 : size};
    }

    sixteen_places find(__m512i block, const block_characters &, __m512i positions, size_t done,
                        __mmask16 lanes) const {
        const __m512i six_bits = _mm512_set1_epi32(0x3F);
        __m512i four_bytes = sixteen_from(block, positions, done);
        __m512i first = _mm512_srli_epi32(four_bytes, 24);
        __m512i second = _mm512_and_si512(_mm512_srli_epi32(four_bytes, 16), six_bits);
        // The upper ten bits of the code point: of two bytes, of three, of one.
        __m512i stretch = _mm512_and_si512(first, _mm512_set1_epi32(0x1F));
        __m512i of_three =
            _mm512_and_si512(_mm512_srli_epi32(four_bytes, 18), _mm512_set1_epi32(0x3C0));
        __mmask16 three = _mm512_cmpge_epu32_mask(first, _mm512_set1_epi32(0xE0));
        __mmask16 one = _mm512_cmplt_epu32_mask(first, _mm512_set1_epi32(0x80));
        stretch = _mm512_mask_or_epi32(stretch, three, of_three, second);
        stretch = _mm512_mask_srli_epi32(stretch, one, first, 6);
        __m512i cells =
            _mm512_mask_i32gather_epi32(_mm512_setzero_si512(), lanes, stretch, facts.stretches, 4);
        __mmask16 there = static_cast<__mmask16>(_mm512_test_epi32_mask(cells, cells) | one);
        __m512i shift = _mm512_permutexvar_epi32(_mm512_srli_epi32(four_bytes, 28),
                                                 _mm512_load_si512(lane_shifts));
        __m512i last = _mm512_and_si512(_mm512_srlv_epi32(four_bytes, shift), six_bits);
        return {_mm512_add_epi32(cells, last), static_cast<__mmask16>(lanes & there)};
    }

    const run_facts &facts;
};

// Converts the first `count` characters of a block until one is not plain, or has no room.
template <typename Blocks>
sixteen_written put_block(const entry_table &table, const Blocks &source, __m512i block,
                          const block_characters &characters, size_t count, unsigned char *out,
                          size_t room) {
    __m512i positions = _mm512_maskz_compress_epi8(characters.starts, _mm512_load_si512(count_up));
    size_t o = 0;
    for (size_t done = 0; done < count; done += 16) {
        size_t wanted = smaller(count - done, 16);
        __mmask16 lanes = static_cast<__mmask16>(low_bits(wanted));
        sixteen_places at = source.find(block, characters, positions, done, lanes);
        sixteen_written put = put_sixteen(table, at, out + o, room - o);
        o += put.bytes;
        if (put.characters < wanted) return {done + put.characters, o};
    }
    return {count, o};
}

// The position of a character by its number.
inline size_t position_of(const block_characters &characters, size_t number) {
    return _tzcnt_u64(_pdep_u64(uint64_t{1} << number, characters.starts));
}

// Whole blocks, of which the same number of characters is taken each time.
template <typename Blocks>
run_progress convert_whole_blocks(const entry_table &table, const Blocks &source,
                                  const same_bytes &same, const unsigned char *in, size_t n,
                                  unsigned char *out, size_t room) {
    size_t i = 0, o = 0;
    while (n - i >= 64 && room - o >= 4 * Blocks::least) {
        __m512i block = _mm512_loadu_si512(in + i);
        if (same.in(block) == ~uint64_t{0}) {
            _mm512_storeu_si512(out + o, block);
            i += 64;
            o += 64;
            continue;
        }
        block_characters characters = source.look_at_some(block);
        if (characters.size == 0) break;
        sixteen_written put =
            put_block(table, source, block, characters, Blocks::least, out + o, room - o);
        o += put.bytes;
        if (put.characters < Blocks::least) return {i + position_of(characters, put.characters), o};
        i += characters.size;
    }
    return {i, o};
}

template <typename Blocks>
run_progress convert_blocks(const entry_table &table, const void *learned, const unsigned char *in,
                            size_t n, unsigned char *out, size_t room) {
    const run_facts &facts = *static_cast<const run_facts *>(learned);
    const byte_order each(table);
    const Blocks source(facts);
    const same_bytes same(facts);
    size_t i = 0, o = 0;
    for (;;) {
        run_progress whole =
            convert_whole_blocks(table, source, same, in + i, n - i, out + o, room - o);
        i += whole.read;
        o += whole.written;
        if (i == n) return {i, o};
        size_t size = smaller(n - i, 64);
        __m512i block = load_some(in + i, size);
        block_characters characters = source.look_at(block, size);
        size_t count = static_cast<size_t>(__builtin_popcountll(characters.starts));
        sixteen_written put = put_block(table, source, block, characters, count, out + o, room - o);
        o += put.bytes;
        i += put.characters < count ? position_of(characters, put.characters) : characters.size;
        if (count && put.characters == count) continue;
        if (room - o < blocks::size) break;
        run_progress one = convert_one(each, in + i, n - i, out + o, room - o);
        if (one.read == 0) return {i, o};
        i += one.read;
        o += one.written;
    }
    run_progress rest = convert_each(each, facts, in + i, n - i, out + o, room - o);
    return {i + rest.read, o + rest.written};
}

// UTF-8 to bytes. Two-byte characters are looked up in a register for each lead that occurs.

struct narrowed_block {
    __m512i bytes;
    uint64_t used;
    size_t size; // of what was read
};

inline narrowed_block narrow_block(const run_facts &facts, uint64_t same, __m512i block,
                                   const unsigned char *in, size_t size) {
    constexpr unsigned char first_lead = 0xC2, lead_count = 30;
    uint64_t leads = _mm512_cmplt_epu8_mask(
        _mm512_sub_epi8(block, _mm512_set1_epi8(static_cast<char>(first_lead))),
        _mm512_set1_epi8(lead_count));
    uint64_t trails = _mm512_cmplt_epi8_mask(block, _mm512_set1_epi8(-64));
    uint64_t good = same | (leads & trails >> 1) | (trails & leads << 1);
    // The next block waits for the size: that only a cut character is bad is the usual case.
    size -= leads >> (size - 1) & 1;
    uint64_t bad = ~good & low_bits(size);
    if (bad) size = _tzcnt_u64(bad);
    leads &= low_bits(size);
    __m512i bytes = block;
    for (uint64_t left = leads; left;) {
        unsigned char lead = in[_tzcnt_u64(left)];
        uint64_t equal = equal_bytes(block, lead);
        __m512i row = _mm512_loadu_si512(facts.narrow[lead & 0x1F]);
        bytes = _mm512_mask_permutexvar_epi8(bytes, equal << 1, block, row);
        left &= ~equal;
    }
    uint64_t missing = _mm512_mask_testn_epi8_mask(leads << 1, bytes, bytes);
    if (missing) size = _tzcnt_u64(missing) - 1;
    return {bytes, ~leads & low_bits(size), size};
}

inline run_progress narrow_blocks(const entry_table &table, const void *learned,
                                  const unsigned char *in, size_t n, unsigned char *out,
                                  size_t room) {
    const run_facts &facts = *static_cast<const run_facts *>(learned);
    const byte_order each(table);
    const same_bytes same(facts);
    size_t i = 0, o = 0;
    while (i < n) {
        size_t size = smaller(n - i, 64);
        __m512i block = load_some(in + i, size);
        uint64_t unchanged = same.in(block)&low_bits(size);
        if (unchanged == low_bits(size)) {
            if (size > room - o) break;
            store_some(out + o, size, block);
            i += size;
            o += size;
            continue;
        }
        narrowed_block narrowed = narrow_block(facts, unchanged, block, in + i, size);
        size_t count = static_cast<size_t>(__builtin_popcountll(narrowed.used));
        if (count > room - o) break;
        store_some(out + o, count, _mm512_maskz_compress_epi8(narrowed.used, narrowed.bytes));
        i += narrowed.size;
        o += count;
        if (narrowed.size > 32 || i == n) continue;
        run_progress one = convert_one(each, in + i, n - i, out + o, room - o);
        if (one.read == 0) return {i, o};
        i += one.read;
        o += one.written;
    }
    run_progress rest = convert_each(each, facts, in + i, n - i, out + o, room - o);
    return {i + rest.read, o + rest.written};
}

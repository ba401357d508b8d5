// Two-byte code sets by their rows: decoding, counting and checking a block at a time without a
// look-up a character. For AVX-512 with VBMI2 only.
//
// The trailing bytes that go with a lead are a few runs: all of them for most leads, two runs
// where a set leaves out 7F. For each byte from 80 up the longest two runs are noted; they fit in
// ten registers, and 64 bytes are looked up with five permutes. A character outside the runs may
// still exist: then the table is asked. Working the runs out takes as long as decoding a few
// thousand characters one by one, so that short texts go without.

// The place of the first bit from `from` on that is set, or clear; 256 when there is none.
inline uint32_t next_bit(const uint64_t bits[4], uint32_t from, bool set) {
    while (from < 256) {
        uint64_t word = (set ? bits[from / 64] : ~bits[from / 64]) >> from % 64;
        if (word) return from + static_cast<uint32_t>(__builtin_ctzll(word));
        from = (from / 64 + 1) * 64;
    }
    return 256;
}

// Notes the longest two runs of a lead's row; the bits tell where characters end. A run that does
// not exist repeats the other.
inline void note_runs(pair_rows &rows, uint32_t lead, const uint64_t bits[4], uint32_t low) {
    uint32_t starts[2] = {}, sizes[2] = {};
    for (uint32_t at = next_bit(bits, 0, true); at < 256;) {
        uint32_t end = next_bit(bits, at, false), size = end - at;
        int place = size > sizes[0] ? 0 : 1;
        if (place == 0) {
            starts[1] = starts[0];
            sizes[1] = sizes[0];
        }
        if (size > sizes[place]) {
            starts[place] = at;
            sizes[place] = size;
        }
        at = next_bit(bits, end, true);
    }
    if (sizes[0] == 0) return;
    rows.kind[lead] = byte_leads_pair;
    for (int run = 0; run < 2; ++run) {
        int noted = sizes[run] ? run : 0;
        rows.first[run][lead] = static_cast<unsigned char>(low + starts[noted]);
        rows.length[run][lead] = static_cast<unsigned char>(sizes[noted] - 1);
    }
}

inline void learn_rows(span_state &state, size_t n) {
    constexpr size_t worth_it = 2048; // bytes or values
    if (state.has_rows || n < worth_it) return;
    const sealed_table &table = state.table;
    memset(&state.rows, 0, sizeof state.rows);
    state.has_rows = true;
    for (uint32_t lead = 0; lead < 128; ++lead) {
        uint32_t cell = table.cells()[128 + lead];
        if (is_end(cell)) state.rows.kind[lead] = byte_stands_alone;
        if (!is_more(cell)) continue;
        uint64_t bits[4] = {};
        const uint32_t *row = table.cells() + next_row(cell);
        for (uint32_t i = 0; i < table.width[1]; i += 16) {
            __mmask16 there = static_cast<__mmask16>(low_bits(smaller(table.width[1] - i, 16)));
            __m512i cells = _mm512_maskz_loadu_epi32(there, row + i);
            uint64_t ends = _mm512_cmplt_epi32_mask(cells, _mm512_setzero_si512());
            bits[i / 64] |= ends << i % 64;
        }
        note_runs(state.rows, lead, bits, table.low[1]);
    }
}

// What is noted about bytes from 80 up, by their lower seven bits.
inline __m512i noted(const unsigned char *notes, __m512i bytes) {
    return _mm512_permutex2var_epi8(_mm512_load_si512(notes), bytes, _mm512_load_si512(notes + 64));
}

// Where each trail is in a run of its lead.
inline uint64_t in_runs(const pair_rows &rows, __m512i leads, __m512i trails) {
    uint64_t found[2];
    for (int run = 0; run < 2; ++run) {
        __m512i offset = _mm512_sub_epi8(trails, noted(rows.first[run], leads));
        found[run] = _mm512_cmple_epu8_mask(offset, noted(rows.length[run], leads));
    }
    return found[0] | found[1];
}

inline uint64_t of_kind(__m512i kinds, unsigned char kind) {
    return _mm512_test_epi8_mask(kinds, _mm512_set1_epi8(static_cast<char>(kind)));
}

// Whether 32 words are characters by the runs: two bytes where `two` says so, else one.
inline bool words_exist(const pair_rows &rows, __m512i words, __mmask32 two) {
    constexpr uint64_t lower = 0x5555555555555555;
    __m512i leads = _mm512_srli_epi16(words, 8);
    uint64_t pairs = _pdep_u64(two, lower);
    uint64_t high_leads = _mm512_movepi8_mask(words) >> 1; // a lead stands above its trail
    if (pairs & ~high_leads) return false;
    uint64_t leading = of_kind(noted(rows.kind, leads), byte_leads_pair);
    uint64_t bad = pairs & ~(leading & in_runs(rows, leads, words));
    uint64_t singles = lower & ~pairs & _mm512_movepi8_mask(words);
    if (singles) bad |= singles & ~of_kind(noted(rows.kind, words), byte_stands_alone);
    return bad == 0;
}

// The characters at the start of 64 bytes.
struct pair_block {
    uint64_t starts; // first bytes of characters
    uint64_t leads;  // bytes that may lead two
    size_t size;     // bytes of whole characters, up to the first that is not known by the runs
};

inline pair_block look_at_pairs(const pair_rows &rows, __m512i block, __m512i next) {
    uint64_t high = _mm512_movepi8_mask(block);
    __m512i kinds = noted(rows.kind, block);
    uint64_t leads = high & of_kind(kinds, byte_leads_pair);
    uint64_t alone = ~high | of_kind(kinds, byte_stands_alone);
    uint64_t starts = ~trails_behind(leads);
    uint64_t good = alone | (leads & in_runs(rows, block, next));
    uint64_t stop = (starts & ~good) | (starts & leads & (uint64_t{1} << 63));
    size_t size = stop ? static_cast<size_t>(__builtin_ctzll(stop)) : 64;
    return {starts & low_bits(size), leads, size};
}

inline void store_pairs(__m512i block, const pair_block &pairs, size_t count, vel_wchar *out) {
    __m512i positions = _mm512_maskz_compress_epi8(pairs.starts, _mm512_load_si512(count_up));
    uint64_t two = _pext_u64(pairs.leads, pairs.starts);
    uint64_t lanes = low_bits(count);
    for (size_t done = 0; done < count; done += 16, lanes >>= 16, two >>= 16) {
        __m512i packed = sixteen_from(block, positions, done);
        __m512i values = _mm512_srli_epi32(packed, 24);
        values = _mm512_mask_srli_epi32(values, static_cast<__mmask16>(two), packed, 16);
        _mm512_mask_storeu_epi32(out + done, static_cast<__mmask16>(lanes), values);
    }
}

// Takes blocks while they are known by the runs, and single characters that are not. Blocks are
// handed to `take`, which says whether there was room.
template <typename Take>
size_t each_pair_block(span_state &state, const unsigned char *in, size_t n, Take take) {
    const table_set<true> set(state.table);
    size_t i = 0;
    while (n - i > 64) {
        __m512i block = _mm512_loadu_si512(in + i);
        pair_block pairs = look_at_pairs(state.rows, block, _mm512_loadu_si512(in + i + 1));
        if (pairs.size >= 32) {
            if (!take.block(in + i, pairs)) break;
            i += pairs.size;
            continue;
        }
        // The next characters are longer ones, or outside the runs: a few at a time.
        size_t stop = i + 16;
        while (i < stop) {
            character next = set.read(in + i, n - i);
            if (!next || !take.one(next.value)) return i;
            i += next.used;
        }
    }
    return i;
}

struct pair_decoder {
    vel_wchar *&out;
    size_t &room;

    bool block(const unsigned char *bytes, const pair_block &pairs) {
        size_t count = static_cast<size_t>(__builtin_popcountll(pairs.starts));
        if (count > room) return false;
        if (count == blocks::size)
            blocks::widen(bytes, out);
        else
            store_pairs(_mm512_loadu_si512(bytes), pairs, count, out);
        out += count;
        room -= count;
        return true;
    }
    bool one(vel_wchar value) {
        if (room == 0) return false;
        *out++ = value;
        --room;
        return true;
    }
};

struct pair_counter {
    size_t &count;

    bool block(const unsigned char *, const pair_block &pairs) {
        count += static_cast<size_t>(__builtin_popcountll(pairs.starts));
        return true;
    }
    bool one(vel_wchar) {
        ++count;
        return true;
    }
};

inline span_progress decode_pairs(span_state &state, const unsigned char *in, size_t n,
                                  vel_wchar *out, size_t room) {
    learn_rows(state, n);
    vel_wchar *at = out;
    size_t left = room;
    size_t i = state.has_rows ? each_pair_block(state, in, n, pair_decoder{at, left}) : 0;
    span_progress rest = decode_set<table_set<true>>(state, in + i, n - i, at, left);
    return {i + rest.read, room - left + rest.written};
}

inline span_progress count_pairs(span_state &state, const unsigned char *in, size_t n) {
    learn_rows(state, n);
    size_t count = 0;
    size_t i = state.has_rows ? each_pair_block(state, in, n, pair_counter{count}) : 0;
    span_progress rest = count_set<table_set<true>>(state, in + i, n - i);
    return {i + rest.read, count + rest.written};
}

// The run kernels of a rung that take one character at a time, between the block runs that `blocks`
// provides. No include guard: every rung compiles its own copy for its own instructions.
//
// `blocks` gives: `size`, the bytes of a block; `copy_same`, which copies at least those bytes that
// a block begins with and that are converted to themselves, and gives their number.

// The characters of a source: `find` takes one from n bytes (at least 1) and gives its last cell,
// and 0 for one that is cut off. What it needs is held by value: what the loops store might
// otherwise be the table, for all the compiler knows.

struct found_cell {
    uint64_t cell;
    size_t used;
};

struct byte_order {
    static constexpr bool has_same = true;
    explicit byte_order(const entry_table &table) : cells(table.cells()) {
        for (int depth = 1; depth < max_character_bytes; ++depth) {
            low[depth] = table.low[depth];
            width[depth] = table.width[depth];
        }
    }

    uint64_t step(uint64_t cell, int depth, uint32_t b) const {
        uint32_t i = b - low[depth];
        return i < width[depth] ? cells[next_row(cell) + i] : 0;
    }
    // Without a loop, as walk_value in charmap/character.h.
    [[gnu::always_inline]] found_cell find(const unsigned char *in, size_t n) const {
        uint64_t cell = cells[in[0]];
        if (!is_more(cell) || n < 2) return {cell, 1};
        cell = step(cell, 1, in[1]);
        if (!is_more(cell) || n < 3) return {cell, 2};
        cell = step(cell, 2, in[2]);
        if (!is_more(cell) || n < 4) return {cell, 3};
        return {step(cell, 3, in[3]), 4};
    }

    const uint64_t *cells;
    uint32_t low[max_character_bytes], width[max_character_bytes];
};

// Units that stand in memory last byte first.
template <int unit> struct unit_order {
    static constexpr bool has_same = false;
    explicit unit_order(const entry_table &t) : table(t) {}

    found_cell find(const unsigned char *in, size_t n) const {
        if (n < unit) return {0, 0};
        return {table.walk_reversed(in, unit), unit};
    }

    const entry_table &table;
};

// Copies the bytes that a text begins with and that are converted to themselves.
inline size_t copy_same(const run_facts &facts, const unsigned char *in, size_t n,
                        unsigned char *out) {
    size_t i = 0;
    while (n - i >= blocks::size) {
        size_t run = blocks::copy_same(facts, in + i, out + i);
        i += run;
        if (run < blocks::size) return i;
    }
    for (; i < n && facts.same[in[i]]; ++i) out[i] = in[i];
    return i;
}

inline void put_target(unsigned char *out, size_t room, uint32_t bytes, uint32_t length) {
    if (std::endian::native == std::endian::little && room >= sizeof bytes) {
        memcpy(out, &bytes, sizeof bytes);
        return;
    }
    for (uint32_t i = 0; i < length; ++i) out[i] = static_cast<unsigned char>(bytes >> (8 * i));
}

// Nothing when the character is not plain, is cut off, or does not fit.
template <typename Source>
run_progress convert_one(const Source &source, const unsigned char *in, size_t n,
                         unsigned char *out, size_t room) {
    found_cell next = source.find(in, n);
    uint32_t length = plain_length(next.cell);
    if (length == 0 || length > room) return {0, 0};
    put_target(out, room, entry_bytes(next.cell), length);
    return {next.used, length};
}

// Whether copying as a run is worth it: a few characters are converted faster one by one.
inline bool begins_run(const run_facts &facts, const unsigned char *in) {
    uint64_t eight;
    memcpy(&eight, in, sizeof eight);
    return facts.same[in[0]] & ((eight & 0x8080808080808080) == 0);
}

// Characters while neither the input nor the room can end soon, a few between two looks for a run.
// Stops at one that is not plain, too.
template <typename Source>
run_progress convert_inside(const Source &source, const run_facts &facts, const unsigned char *in,
                            size_t n, unsigned char *out, size_t room) {
    constexpr size_t few = 4;
    size_t i = 0, o = 0;
    for (size_t safe = smaller(n, room) / 4; safe > few; safe -= few) {
        if (Source::has_same && begins_run(facts, in + i)) break;
        for (size_t k = 0; k < few; ++k) {
            found_cell next = source.find(in + i, 4);
            uint32_t length = plain_length(next.cell);
            if (length == 0) return {i, o};
            put_target(out + o, 4, entry_bytes(next.cell), length);
            i += next.used;
            o += length;
        }
    }
    return {i, o};
}

// `dense`: most texts hold few runs.
template <bool dense = false, typename Source>
run_progress convert_each(const Source &source, const run_facts &facts, const unsigned char *in,
                          size_t n, unsigned char *out, size_t room) {
    run_progress done = {0, 0};
    while (done.read < n) {
        run_progress next = {0, 0};
        if (dense) {
            next = convert_inside(source, facts, in + done.read, n - done.read, out + done.written,
                                  room - done.written);
        }
        done = {done.read + next.read, done.written + next.written};
        const unsigned char *at = in + done.read;
        size_t left = n - done.read, space = room - done.written;
        if (left == 0) break;
        if (Source::has_same && facts.same[*at]) {
            size_t run = copy_same(facts, at, smaller(left, space), out + done.written);
            next = {run, run};
        } else {
            next = convert_one(source, at, left, out + done.written, space);
        }
        if (next.read == 0) break;
        done = {done.read + next.read, done.written + next.written};
    }
    return done;
}

// The faces that the table of kernels holds.

template <typename Source, bool dense>
run_progress convert_set(const entry_table &table, const void *facts, const unsigned char *in,
                         size_t n, unsigned char *out, size_t room) {
    return convert_each<dense>(Source(table), *static_cast<const run_facts *>(facts), in, n, out,
                               room);
}

inline run_progress map_bytes(const entry_table &, const void *learned, const unsigned char *in,
                              size_t n, unsigned char *out, size_t room) {
    const uint16_t *map = static_cast<const run_facts *>(learned)->map;
    n = smaller(n, room);
    size_t i = 0;
    for (; n - i >= 8; i += 8) {
        uint32_t bits = 0;
        uint16_t targets[8];
#pragma GCC unroll 8
        for (size_t k = 0; k < 8; ++k) bits |= targets[k] = map[in[i + k]];
        if (bits > 0xFF) break;
#pragma GCC unroll 8
        for (size_t k = 0; k < 8; ++k) out[i + k] = static_cast<unsigned char>(targets[k]);
    }
    for (; i < n && map[in[i]] <= 0xFF; ++i) out[i] = static_cast<unsigned char>(map[in[i]]);
    return {i, i};
}

constexpr run_kernels runs_by_loops = {{
    map_bytes,
    convert_set<byte_order, false>,
    convert_set<byte_order, true>,
    convert_set<byte_order, true>,
    convert_set<byte_order, false>,
    convert_set<unit_order<2>, true>,
    convert_set<unit_order<4>, true>,
}};

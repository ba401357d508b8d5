// The loops of a rung that take one character at a time, between the block runs that `blocks`
// provides. No include guard: every rung compiles its own copy for its own instructions.
//
// `blocks` gives: `size`, the bytes (or values) of a block; `is_ascii`, `widen`, `narrow` over one
// block; `flip`, the case of a block of ASCII.

// The code sets as the loops see them: `read` takes a character from bytes, `length` gives the
// bytes of a value that has a character, and 0 for others.

struct utf8_set {
    static constexpr bool has_ascii = true;
    explicit utf8_set(const sealed_table &) {}

    character read(const unsigned char *in, size_t n) const { return read_utf8(in, n); }
    uint32_t length(vel_wchar value) const { return utf8_length(value); }
};

// Any table. What a character of two bytes needs is held by value: what the loops store might
// otherwise be the table, for all the compiler knows.
template <bool ascii> struct table_set {
    static constexpr bool has_ascii = ascii; // those below 0x80 are whole characters
    explicit table_set(const sealed_table &t)
        : table(t), cells(t.cells()), low(t.low[1]), width(t.width[1]),
          pairs(t.shortest == 1 ? 0xFF00 : 0) {}

    // The cell of the second byte behind a first one.
    uint32_t second_cell(uint32_t first, uint32_t second) const {
        uint32_t cell = cells[first], i = second - low;
        return is_more(cell) && i < width ? cells[next_row(cell) + i] : 0;
    }
    character read(const unsigned char *in, size_t n) const {
        if (n > 1 && is_end(second_cell(in[0], in[1]))) {
            return {static_cast<vel_wchar>(in[0] << 8 | in[1]), 2};
        }
        return read_character(table, in, n);
    }
    bool exists(vel_wchar value) const { return is_end(table.find_code(value)); }
    uint32_t length(vel_wchar value) const {
        if (value - 0x100 < pairs) {
            return is_end(second_cell(value >> 8, value & 0xFF)) ? 2 : 0;
        }
        return exists(value) ? static_cast<uint32_t>(table.code_bytes(value)) : 0;
    }

    const sealed_table &table;
    const uint32_t *cells;
    uint32_t low, width;
    uint32_t pairs; // how many values from 0x100 on are two bytes
};

// Decodes the ASCII at the start of a span.
inline size_t widen_ascii(const unsigned char *in, size_t n, vel_wchar *out) {
    size_t i = 0;
    for (; n - i >= blocks::size && blocks::is_ascii(in + i); i += blocks::size) {
        blocks::widen(in + i, out + i);
    }
    for (; i < n && in[i] < 0x80; ++i) out[i] = in[i];
    return i;
}

template <typename Set>
span_progress decode_each(const Set &set, const unsigned char *in, size_t n, vel_wchar *out,
                          size_t room) {
    size_t i = 0, o = 0;
    while (i < n && o < room) {
        if (Set::has_ascii && in[i] < 0x80) {
            out[o++] = in[i++];
            if (i == n || o == room || in[i] >= 0x80) continue;
            size_t run = widen_ascii(in + i, smaller(n - i, room - o), out + o);
            i += run;
            o += run;
            continue;
        }
        character next = set.read(in + i, n - i);
        if (!next) break;
        out[o++] = next.value;
        i += next.used;
    }
    return {i, o};
}

inline size_t skip_ascii(const unsigned char *in, size_t n) {
    size_t i = 0;
    while (n - i >= blocks::size && blocks::is_ascii(in + i)) i += blocks::size;
    while (i < n && in[i] < 0x80) ++i;
    return i;
}

template <typename Set>
span_progress count_each(const Set &set, const unsigned char *in, size_t n) {
    size_t i = 0, count = 0;
    while (i < n) {
        if (Set::has_ascii && in[i] < 0x80) {
            size_t run = skip_ascii(in + i, n - i);
            i += run;
            count += run;
            continue;
        }
        character next = set.read(in + i, n - i);
        if (!next) break;
        i += next.used;
        ++count;
    }
    return {i, count};
}

// Values up to `limit` (a mask of low bits) as bytes.
inline size_t narrow_run(const vel_wchar *in, size_t n, unsigned char *out, vel_wchar limit) {
    size_t i = 0;
    while (n - i >= blocks::size && blocks::narrow(in + i, out + i, limit)) i += blocks::size;
    for (; i < n && in[i] <= limit; ++i) out[i] = static_cast<unsigned char>(in[i]);
    return i;
}

template <typename Set>
span_progress encode_each(const Set &set, const vel_wchar *in, size_t n, unsigned char *out,
                          size_t room) {
    size_t i = 0, o = 0;
    while (i < n) {
        vel_wchar value = in[i];
        if (Set::has_ascii && value < 0x80) {
            if (o == room) break;
            out[o++] = static_cast<unsigned char>(value);
            ++i;
            if (i == n || in[i] >= 0x80) continue;
            size_t run = narrow_run(in + i, smaller(n - i, room - o), out + o, 0x7F);
            i += run;
            o += run;
            continue;
        }
        uint32_t length = set.length(value);
        if (length == 0 || length > room - o) break;
        put_packed(out + o, value, length);
        ++i;
        o += length;
    }
    return {i, o};
}

// The faces that the table of kernels holds.

template <typename Set>
span_progress decode_set(span_state &state, const unsigned char *in, size_t n, vel_wchar *out,
                         size_t room) {
    return decode_each(Set(state.table), in, n, out, room);
}

template <typename Set>
span_progress count_set(span_state &state, const unsigned char *in, size_t n) {
    return count_each(Set(state.table), in, n);
}

template <typename Set>
span_progress encode_set(span_state &state, const vel_wchar *in, size_t n, unsigned char *out,
                         size_t room) {
    return encode_each(Set(state.table), in, n, out, room);
}

template <typename Set>
constexpr code_set_kernels loops_of = {decode_set<Set>, count_set<Set>, encode_set<Set>};

inline void widen_bytes(const unsigned char *in, size_t n, vel_wchar *out) {
    size_t i = 0;
    for (; n - i >= blocks::size; i += blocks::size) blocks::widen(in + i, out + i);
    for (; i < n; ++i) out[i] = in[i];
}

inline size_t narrow_bytes(const vel_wchar *in, size_t n, unsigned char *out) {
    return narrow_run(in, n, out, 0xFF);
}

// The ASCII that a span begins with, the case of 26 letters turned over.
template <typename Unit> size_t flip_run(const Unit *in, size_t n, Unit *out, unsigned char first) {
    size_t i = 0;
    while (n - i >= blocks::size && blocks::flip(in + i, out + i, first)) i += blocks::size;
    for (; i < n && in[i] < 0x80; ++i) out[i] = flip_letter(in[i], first);
    return i;
}

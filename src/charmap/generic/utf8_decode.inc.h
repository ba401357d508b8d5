// Decoding UTF-8 where there is no compress instruction: 64 bytes are checked in registers, then
// each character is one unaligned load, turned round and shifted. No include guard.

constexpr unsigned char shift_of_lead[16] = {24, 24, 24, 24, 24, 24, 24, 24,
                                             24, 24, 24, 24, 16, 16, 8,  0};

// The value of the character at `in`, which is valid; four bytes are read.
inline vel_wchar packed_at(const unsigned char *in) {
    vel_wchar value;
    memcpy(&value, in, sizeof value);
    value = __builtin_bswap32(value);
    return value >> shift_of_lead[value >> 28];
}

// Decodes the characters whose first bytes are marked in `starts`.
inline vel_wchar *decode_marked(const unsigned char *in, uint64_t starts, vel_wchar *out) {
    for (; starts; starts &= starts - 1) *out++ = packed_at(in + __builtin_ctzll(starts));
    return out;
}

// Decodes a checked block of 64 bytes a quarter at a time, so that ASCII quarters are widened.
inline vel_wchar *decode_quarters(const unsigned char *in, uint64_t starts, uint64_t high,
                                  vel_wchar *out) {
    for (int quarter = 0; quarter < 4; ++quarter, in += 16, starts >>= 16, high >>= 16) {
        if (high & 0xFFFF) {
            out = decode_marked(in, starts & 0xFFFF, out);
        } else {
            blocks::widen16(in, out);
            out += 16;
        }
    }
    return out;
}

inline span_progress decode_utf8(span_state &state, const unsigned char *in, size_t n,
                                 vel_wchar *out, size_t room) {
    constexpr size_t size = 64;
    span_progress done = decode_set<utf8_set>(state, in, smaller(n, 6), out, smaller(room, 3));
    size_t i = done.read, o = done.written;
    while (i >= 3 && n - i >= size + 3 && room - o >= size) {
        blocks::bytes errors{};
        uint64_t starts = 0, high = 0;
        for (size_t part = 0; part < size; part += blocks::size) {
            errors |= utf8_errors(in + i + part);
            starts |= blocks::start_bits(in + i + part) << part;
            high |= blocks::high_bits(in + i + part) << part;
        }
        if (blocks::any(errors)) break;
        size_t back = bytes_of_cut_character(in + i + size);
        if (back) starts &= ~uint64_t{0} >> back;
        // A cut character leaves a quarter that is not ASCII, so its bytes are never widened.
        o = static_cast<size_t>(decode_quarters(in + i, starts, high, out + o) - out);
        i += size - back;
    }
    done = decode_set<utf8_set>(state, in + i, n - i, out + o, room - o);
    return {i + done.read, o + done.written};
}

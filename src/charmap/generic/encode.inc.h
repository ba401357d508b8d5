// Encoding where there is no compress instruction: the lengths of four packed values choose a
// shuffle that turns their bytes round and closes the gaps. No include guard.
//
// A store writes 16 bytes of which 4 to 16 count. The rest is written over by the values that
// follow: these are known to be valid by then, and there is room for all of them.

struct four_shuffles {
    unsigned char order[256][16]; // by two bits a value: its length less one, low bits first
    unsigned char bytes[256];
};

constexpr four_shuffles make_four_shuffles() {
    four_shuffles made{};
    for (int lengths = 0; lengths < 256; ++lengths) {
        int at = 0;
        for (int value = 0; value < 4; ++value) {
            int more = (lengths >> value & 1) | (lengths >> (value + 4) & 1) << 1;
            for (int byte = more; byte >= 0; --byte) {
                made.order[lengths][at++] = static_cast<unsigned char>(value * 4 + byte);
            }
        }
        made.bytes[lengths] = static_cast<unsigned char>(at);
        while (at < 16) made.order[lengths][at++] = 0x80;
    }
    return made;
}

constexpr four_shuffles shuffles_of_four = make_four_shuffles();

inline __m128i not_below(__m128i values, uint32_t bound) {
    __m128i bounds = _mm_set1_epi32(static_cast<int>(bound));
    return _mm_cmpeq_epi32(_mm_max_epu32(values, bounds), values);
}

inline int lane_bits(__m128i lanes) {
    return _mm_movemask_ps(_mm_castsi128_ps(lanes));
}

// Writes four valid values; gives their bytes.
inline size_t put_four(const vel_wchar *in, unsigned char *out) {
    __m128i values = _mm_loadu_si128(reinterpret_cast<const __m128i *>(in));
    __m128i two = not_below(values, 0x100), three = not_below(values, 0x10000),
            four = not_below(values, 0x1000000);
    __m128i odd = _mm_xor_si128(_mm_xor_si128(two, three), four);
    int lengths = lane_bits(odd) | lane_bits(three) << 4;
    __m128i order =
        _mm_loadu_si128(reinterpret_cast<const __m128i *>(shuffles_of_four.order[lengths]));
    _mm_storeu_si128(reinterpret_cast<__m128i *>(out), _mm_shuffle_epi8(values, order));
    return shuffles_of_four.bytes[lengths];
}

// Whether `stride` values all have characters.
constexpr size_t stride = 16;

inline bool all_exist(const utf8_set &, const vel_wchar *in) {
    blocks::words bad{};
    for (size_t i = 0; i < stride; i += blocks::size / 4) {
        blocks::words v = blocks::load_words(in + i);
        auto one = v < 0x80;
        auto two = ((v & 0xFFFFE0C0) == 0xC080) & (v >= 0xC280);
        auto three =
            ((v & 0xFFF0C0C0) == 0xE08080) & (v >= 0xE0A080) & ((v & 0xFFE000) != 0xEDA000);
        auto four = ((v & 0xF8C0C0C0) == 0xF0808080) & (v >= 0xF0908080) & (v <= 0xF48FBFBF);
        bad |= reinterpret_cast<blocks::words>(~(one | two | three | four));
    }
    return !blocks::any(reinterpret_cast<blocks::bytes>(bad));
}

template <bool ascii> bool all_exist(const table_set<ascii> &set, const vel_wchar *in) {
    bool all = true;
    for (size_t i = 0; i < stride; ++i) all &= set.length(in[i]) != 0;
    return all;
}

inline bool all_ascii(const vel_wchar *in) {
    blocks::words bits{};
    for (size_t i = 0; i < stride; i += blocks::size / 4) bits |= blocks::load_words(in + i);
    return !blocks::any(reinterpret_cast<blocks::bytes>(bits & ~0x7Fu));
}

template <typename Set>
span_progress encode_packed(span_state &state, const vel_wchar *in, size_t n, unsigned char *out,
                            size_t room) {
    // Room for the values of a stride, for what a store writes beyond them, and for a character
    // that is cut because it does not fit: even then all of the surplus is written over.
    constexpr size_t room_of_stride = stride * 4 + 16 + 3;
    Set set(state.table);
    size_t i = 0, o = 0, known = 0;
    bool in_ascii = true;
    for (;;) {
        while (in_ascii && n - i >= blocks::size && room - o >= blocks::size &&
               blocks::narrow(in + i, out + o, 0x7F)) {
            i += blocks::size;
            o += blocks::size;
        }
        if (known < i) known = i;
        while (known - i < 2 * stride && n - known >= stride &&
               (all_ascii(in + known) || all_exist(set, in + known))) {
            known += stride;
        }
        if (known - i < 2 * stride || room - o < room_of_stride) break;
        in_ascii = all_ascii(in + i);
        if (in_ascii) {
            blocks::narrow16(in + i, out + o);
            o += stride;
        } else {
            for (size_t four = 0; four < stride; four += 4) o += put_four(in + i + four, out + o);
        }
        i += stride;
    }
    span_progress rest = encode_each(set, in + i, n - i, out + o, room - o);
    return {i + rest.read, o + rest.written};
}

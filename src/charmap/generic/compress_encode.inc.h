// Encoding packed values with compress, sixteen at a time: turn the bytes of each round, mark those
// that count, squeeze out the others, store. For AVX-512 with VBMI2 only.

// Sixteen values with their bytes in the order of the output.
struct turned_values {
    __m512i values;
    __m512i bytes;
    uint64_t used; // the bytes that belong to characters, four bits a value
};

constexpr uint64_t last_bytes = 0x8888888888888888;
constexpr uint64_t not_first_bytes = 0xEEEEEEEEEEEEEEEE;

inline turned_values turn(const vel_wchar *in, size_t n) {
    const __m512i order =
        _mm512_broadcast_i32x4(_mm_setr_epi8(3, 2, 1, 0, 7, 6, 5, 4, 11, 10, 9, 8, 15, 14, 13, 12));
    __m512i values = _mm512_maskz_loadu_epi32(static_cast<__mmask16>(low_bits(n)), in);
    __m512i bytes = _mm512_shuffle_epi8(values, order);
    uint64_t used = _mm512_test_epi8_mask(bytes, bytes) | last_bytes;
    return {values, bytes, used & low_bits(4 * n)};
}

// Whether no value has a zero byte between others: then the bytes that are not zero are those that
// its magnitude asks for.
inline bool is_dense(uint64_t used) {
    return (used << 1 & not_first_bytes & ~used) == 0;
}

// What a UTF-8 character of each length looks like, by the zero bytes above it in its value: the
// bits that are the same in all of them, and the range. Value 0 is the case of four.
struct utf8_forms {
    uint32_t mask[16], wanted[16];
    uint32_t first[16], span[16];
};
alignas(64) constexpr utf8_forms forms = {
    {0xC0C0C0, 0xC0C0, 0xC0, 0, 0},
    {0x808080, 0x8080, 0x80, 0, 0},
    {0xF0908080, 0xE0A080, 0xC280, 0, 0},
    {0xF48FBFBF - 0xF0908080, 0xEFBFBF - 0xE0A080, 0xDFBF - 0xC280, 0x7F, 0x7F},
};

// The values that are not one UTF-8 character each.
inline __mmask16 no_characters(__m512i values) {
    __m512i form = _mm512_srli_epi32(_mm512_lzcnt_epi32(values), 3);
    auto by_form = [form](const uint32_t *table) {
        return _mm512_permutexvar_epi32(form, _mm512_load_si512(table));
    };
    __m512i fixed = _mm512_and_si512(values, by_form(forms.mask));
    __m512i offset = _mm512_sub_epi32(values, by_form(forms.first));
    __m512i plane = _mm512_and_si512(values, _mm512_set1_epi32(static_cast<int>(0xFFFFE000)));
    return static_cast<__mmask16>(
        _mm512_cmpneq_epi32_mask(fixed, by_form(forms.wanted)) |
        _mm512_cmpgt_epu32_mask(offset, by_form(forms.span)) |
        _mm512_cmpeq_epi32_mask(plane, _mm512_set1_epi32(0xEDA000))); // surrogates
}

// Whether the table has a character for each of the values, which are dense. Values of one and two
// bytes are looked up side by side, longer ones alone.
template <bool ascii> bool all_exist(const table_set<ascii> &set, const turned_values &turned) {
    const sealed_table &table = set.table;
    const int *cells = reinterpret_cast<const int *>(table.cells());
    __m512i values = turned.values;
    __mmask16 longer = _mm512_cmpgt_epu32_mask(values, _mm512_set1_epi32(0xFFFF));
    for (uint32_t rest = longer; rest; rest &= rest - 1) {
        alignas(64) vel_wchar stored[16];
        _mm512_store_si512(stored, values);
        if (!set.exists(stored[__builtin_ctz(rest)])) return false;
    }
    __mmask16 two = _mm512_cmpgt_epu32_mask(values, _mm512_set1_epi32(0xFF));
    two = static_cast<__mmask16>(two & ~longer);
    __m512i first = _mm512_mask_srli_epi32(values, two, values, 8);
    __mmask16 present = static_cast<__mmask16>(~longer);
    const __m512i none = _mm512_setzero_si512();
    __m512i cell = _mm512_mask_i32gather_epi32(none, present, first, cells, 4);
    __m512i low = _mm512_set1_epi32(static_cast<int>(table.low[1]));
    __m512i second = _mm512_sub_epi32(_mm512_and_si512(values, _mm512_set1_epi32(0xFF)), low);
    __mmask16 reachable =
        _mm512_mask_test_epi32_mask(two, cell, _mm512_set1_epi32(static_cast<int>(cell_more)));
    reachable = _mm512_mask_cmplt_epu32_mask(reachable, second,
                                             _mm512_set1_epi32(static_cast<int>(table.width[1])));
    __m512i row = _mm512_andnot_si512(_mm512_set1_epi32(static_cast<int>(cell_more)), cell);
    cell = _mm512_mask_mov_epi32(cell, two, none);
    cell = _mm512_mask_i32gather_epi32(cell, reachable, _mm512_add_epi32(row, second), cells, 4);
    __mmask16 ends = _mm512_cmplt_epi32_mask(cell, none); // cell_end is the sign
    return static_cast<__mmask16>(ends | longer) == 0xFFFF;
}

// Stores the bytes in use; gives their number, or 0 when there is no room for them.
inline size_t squeeze(__m512i bytes, uint64_t used, unsigned char *out, size_t room) {
    size_t count = static_cast<size_t>(__builtin_popcountll(used));
    if (count > room) return 0;
    _mm512_mask_storeu_epi8(out, low_bits(count), _mm512_maskz_compress_epi8(used, bytes));
    return count;
}

// At most sixteen values of any lengths; 0 bytes when they do not fit or are not all characters.

inline size_t put_sixteen(const utf8_set &, const vel_wchar *in, size_t n, unsigned char *out,
                          size_t room) {
    turned_values turned = turn(in, n);
    return no_characters(turned.values) ? 0 : squeeze(turned.bytes, turned.used, out, room);
}

template <bool ascii>
size_t put_sixteen(const table_set<ascii> &set, const vel_wchar *in, size_t n, unsigned char *out,
                   size_t room) {
    turned_values turned = turn(in, n);
    if (!is_dense(turned.used) || !all_exist(set, turned)) return 0;
    return squeeze(turned.bytes, turned.used, out, room);
}

// Thirty-two values that fit 16 bits, as one register of 16-bit words.
constexpr size_t word_count = 32;
alignas(64) constexpr uint16_t even_words[word_count] = {0,  2,  4,  6,  8,  10, 12, 14, 16, 18, 20,
                                                         22, 24, 26, 28, 30, 32, 34, 36, 38, 40, 42,
                                                         44, 46, 48, 50, 52, 54, 56, 58, 60, 62};

struct value_pair {
    __m512i first, second;

    bool all_words() const {
        __m512i both = _mm512_or_si512(first, second);
        return _mm512_test_epi32_mask(both, _mm512_set1_epi32(static_cast<int>(0xFFFF0000))) == 0;
    }
    __m512i words() const {
        return _mm512_permutex2var_epi16(first, _mm512_load_si512(even_words), second);
    }
};

inline __mmask32 above(__m512i words, uint16_t limit) {
    return _mm512_cmpgt_epu16_mask(words, _mm512_set1_epi16(static_cast<short>(limit)));
}

// Writes words as one byte each, or two where `two` says so; gives their bytes.
inline size_t put_words(__m512i words, __mmask32 two, unsigned char *out) {
    constexpr uint64_t lower = 0x5555555555555555;
    if (two == 0) {
        _mm256_storeu_si256(reinterpret_cast<__m256i *>(out), _mm512_cvtepi16_epi8(words));
        return word_count;
    }
    __m512i turned = _mm512_or_si512(_mm512_slli_epi16(words, 8), _mm512_srli_epi16(words, 8));
    uint64_t used = lower << 1 | _pdep_u64(two, lower);
    size_t bytes = word_count + static_cast<size_t>(__builtin_popcount(two));
    _mm512_mask_storeu_epi8(out, low_bits(bytes), _mm512_maskz_compress_epi8(used, turned));
    return bytes;
}

// Thirty-two values at once where the code set has a short cut for them; 0 bytes where not.

inline size_t put_thirty_two(const utf8_set &, span_state &, const vel_wchar *in,
                             unsigned char *out) {
    turned_values first = turn(in, 16), second = turn(in + 16, 16);
    if (no_characters(first.values) | no_characters(second.values)) return 0;
    size_t bytes = squeeze(first.bytes, first.used, out, 64);
    return bytes + squeeze(second.bytes, second.used, out + bytes, 64);
}

template <bool ascii>
size_t put_thirty_two(const table_set<ascii> &, span_state &state, const vel_wchar *in,
                      unsigned char *out) {
    value_pair pair = {_mm512_loadu_si512(in), _mm512_loadu_si512(in + 16)};
    if (!pair.all_words()) return 0;
    __m512i words = pair.words();
    __mmask32 two = above(words, 0xFF);
    if (above(words, 0x7F) == 0) return put_words(words, 0, out);
    if (!state.has_rows || !words_exist(state.rows, words, two)) return 0;
    return put_words(words, two, out);
}

template <typename Set>
span_progress encode_compressed(span_state &state, const vel_wchar *in, size_t n,
                                unsigned char *out, size_t room) {
    constexpr size_t most_bytes = 4 * word_count;
    Set set(state.table);
    if (std::is_same_v<Set, table_set<true>>) learn_rows(state, n);
    size_t i = 0, o = 0;
    size_t ascii = 4 * word_count; // the ASCII just behind: whether a longer run is worth a look
    while (i < n) {
        if (n - i >= word_count && room - o >= most_bytes) {
            if (ascii >= 4 * word_count && n - i >= blocks::size &&
                blocks::narrow(in + i, out + o, 0x7F)) {
                i += blocks::size;
                o += blocks::size;
                continue;
            }
            if (size_t bytes = put_thirty_two(set, state, in + i, out + o)) {
                i += word_count;
                o += bytes;
                ascii = bytes == word_count ? ascii + word_count : 0;
                continue;
            }
        }
        size_t count = smaller(n - i, 16);
        size_t bytes = put_sixteen(set, in + i, count, out + o, room - o);
        if (bytes == 0) break;
        i += count;
        o += bytes;
    }
    span_progress rest = encode_each(set, in + i, n - i, out + o, room - o);
    return {i + rest.read, o + rest.written};
}

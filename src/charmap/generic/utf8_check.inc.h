// Checking and counting UTF-8, a register of bytes at a time. No include guard: every vector rung
// compiles its own copy.
//
// Whether a byte may follow the one before it depends on three nibbles only: both of the byte
// before and the upper one of its own. Each kind of error is a bit, each nibble value has the set
// of errors that it allows, and an error is found where all three agree. One bit is no error by
// itself: two trailing bytes in a row are right exactly where a longer lead stands two or three
// bytes before.

struct nibble_rule {
    unsigned char error;
    uint32_t before_high, before_low, high; // sets of nibble values, bit 0 for 0
};

constexpr uint32_t any_nibble = 0xFFFF, ascii_nibbles = 0x00FF, trail_nibbles = 0x0F00,
                   lead_nibbles = 0xF000;
constexpr unsigned char two_trails = 0x80;

constexpr nibble_rule nibble_rules[] = {
    {0x01, lead_nibbles, any_nibble, ascii_nibbles | lead_nibbles}, // a trail is missing
    {0x02, ascii_nibbles, any_nibble, trail_nibbles},               // a trail without a lead
    {0x04, 1 << 0xC, 0x0003, trail_nibbles},                        // C0, C1
    {0x08, 1 << 0xE, 1 << 0x0, 0x0300},                             // E0 80 to E0 9F
    {0x10, 1 << 0xE, 1 << 0xD, 0x0C00},                             // surrogates
    {0x20, 1 << 0xF, 0xFFF0, 0x0E00},                               // above F4 8F
    {0x40, 1 << 0xF, 0xFFE1, 0x0100},                               // F0 80 to F0 8F, F5 and up
    {two_trails, trail_nibbles, any_nibble, trail_nibbles},
};

struct nibble_tables {
    unsigned char before_high[16], before_low[16], high[16];
};

constexpr nibble_tables make_nibble_tables() {
    nibble_tables tables{};
    for (const nibble_rule &rule : nibble_rules) {
        for (uint32_t nibble = 0; nibble < 16; ++nibble) {
            if (rule.before_high >> nibble & 1) tables.before_high[nibble] |= rule.error;
            if (rule.before_low >> nibble & 1) tables.before_low[nibble] |= rule.error;
            if (rule.high >> nibble & 1) tables.high[nibble] |= rule.error;
        }
    }
    return tables;
}

constexpr nibble_tables nibbles = make_nibble_tables();

// The errors among the bytes of one register at `in`, zero when there are none. The three bytes
// before it are read too. A character that goes beyond the register is not an error yet.
inline blocks::bytes utf8_errors(const unsigned char *in) {
    blocks::bytes now = blocks::load(in), before = blocks::load(in - 1);
    blocks::bytes pairs = blocks::lookup(nibbles.before_high, before >> 4) &
                          blocks::lookup(nibbles.before_low, before & 0x0F) &
                          blocks::lookup(nibbles.high, now >> 4);
    blocks::bytes third = blocks::subtract(blocks::load(in - 2), 0xE0 - two_trails);
    blocks::bytes fourth = blocks::subtract(blocks::load(in - 3), 0xF0 - two_trails);
    return pairs ^ ((third | fourth) & two_trails);
}

// How many bytes before `in` a character begins that `in` cuts in two; 0 when none does. The bytes
// before are valid.
inline size_t bytes_of_cut_character(const unsigned char *in) {
    for (size_t back = 1; back <= 3; ++back) {
        unsigned char b = *(in - back);
        if (b < 0x80) return 0;
        size_t length = b < 0xC0 ? 0 : b < 0xE0 ? 2 : b < 0xF0 ? 3 : 4;
        if (length) return length > back ? back : 0;
    }
    return 0;
}

// Takes characters one by one until three bytes lie behind, so that they can be looked back at.
inline span_progress count_first(const unsigned char *in, size_t n) {
    size_t i = 0, count = 0;
    while (i < 3 && i < n) {
        character next = read_utf8(in + i, n - i);
        if (!next) break;
        i += next.used;
        ++count;
    }
    return {i, count};
}

inline span_progress count_utf8(span_state &state, const unsigned char *in, size_t n) {
    constexpr size_t stride = 4096; // what is counted again when there is an error in it
    auto [i, count] = count_first(in, n);
    if (i < 3) return {i, count};
    while (n - i >= blocks::size) {
        size_t first = i, starts = 0;
        size_t last = smaller(n, i + stride) - blocks::size;
        blocks::bytes errors{};
        for (; i <= last; i += blocks::size) {
            errors |= utf8_errors(in + i);
            starts += blocks::count_starts(in + i);
        }
        if (blocks::any(errors)) {
            i = first;
            break;
        }
        count += starts;
    }
    if (size_t back = bytes_of_cut_character(in + i)) {
        i -= back;
        --count;
    }
    span_progress rest = count_set<utf8_set>(state, in + i, n - i);
    return {i + rest.read, count + rest.written};
}

// Plain text: UTF-8 that is short, valid and without characters of four bytes, as are most texts
// that are compared. It is found in one walk by pieces. What is not found to be plain need not be
// other: there is more to be done.
#pragma once

#include <bit>

#include "collate/piece.h"
#include "collate/text.h"

namespace vel {

// Two strings, both terminated (length -1) or both counted.
struct string_pair {
    const char *s1;
    int32_t len1;
    const char *s2;
    int32_t len2;
};

// Plain text is no longer.
constexpr size_t most_plain_bytes = 4096;
// Nor is what follows the piece in which two texts differ: beyond, the kernels for spans are
// faster.
constexpr size_t most_paired_bytes = 32;
// They are for more equal pieces as well, and for any with characters of three bytes.
constexpr int32_t most_equal_pieces = 8;

#ifdef __SSE2__

// A bit for the place where a string of this length ends in a piece, or several; bit 32 when it
// goes on.
inline uint64_t ends_in(const piece &here, int32_t length) {
    constexpr uint64_t goes_on = uint64_t{1} << piece_bytes;
    if (length == -1) return goes_on | here.equal_to(0);
    return static_cast<uint32_t>(length) < piece_bytes ? uint64_t{1} << length : goes_on;
}

// Checks text piece by piece. What a lead asks of the bytes behind it goes over into the next.
class plain_utf8 {
public:
    // The first n bytes of a piece, 32 in all but the last. False when the text is not plain.
    [[gnu::always_inline]] bool add(const piece &bytes, uint32_t n) {
        uint32_t all = static_cast<uint32_t>((uint64_t{1} << n) - 1);
        uint32_t high = bytes.high_bytes() & all;
        if (!(high | trail_)) return true;
        uint32_t trails = bytes.high_bytes_below(0xC0) & all;
        uint32_t leads = high & ~trails;
        if (trails != (bytes.high_bytes_below(0xC2) & all)) return false;
        trail_ |= uint64_t{leads} << 1;
        if (uint32_t three = leads & ~bytes.high_bytes_below(0xE0)) {
            if (three & ~bytes.high_bytes_below(0xF0)) return false;
            if (!add_restricting(bytes, three)) return false;
            trail_ |= uint64_t{three} << 2;
        }
        if ((trail_ & all) != trails) return false;
        trail_ >>= n;
        return true;
    }
    // Whether no character goes on.
    bool is_whole() const { return trail_ == 0; }

private:
    // Behind E0 stand bytes from A0 on, behind ED bytes below. Not told across pieces.
    static bool add_restricting(const piece &bytes, uint32_t leads) {
        uint32_t e0 = bytes.equal_to(0xE0) & leads, ed = bytes.equal_to(0xED) & leads;
        if (!(e0 | ed)) return true;
        if ((e0 | ed) >> (piece_bytes - 1)) return false;
        uint32_t low = bytes.high_bytes_below(0xA0);
        return !(e0 << 1 & low) && !(ed << 1 & ~low);
    }

    uint64_t trail_ = 0;
};

// The end of a string within `most` bytes; `before` has seen what stands ahead. Null when it is not
// found to be plain.
inline const unsigned char *find_plain_end(const unsigned char *at, int32_t length,
                                           size_t most = most_plain_bytes, plain_utf8 before = {}) {
    for (size_t seen = 0; seen < most; seen += piece_bytes, at += piece_bytes) {
        uint32_t n = 0;
        if (length != 0) {
            if (!piece::is_readable(at)) break;
            piece here(at);
            n = static_cast<uint32_t>(std::countr_zero(ends_in(here, length)));
            if (!before.add(here, n)) break;
        }
        if (n < piece_bytes) {
            return before.is_whole() ? at + n : nullptr;
        }
        if (length != -1) length -= static_cast<int32_t>(piece_bytes);
    }
    return nullptr;
}

// The end of a string of whose piece at `at` the first n bytes are the last that have been seen.
inline const unsigned char *end_behind(const unsigned char *at, int32_t length, uint32_t n,
                                       const plain_utf8 &seen) {
    if (n < piece_bytes) return seen.is_whole() ? at + n : nullptr;
    if (length != -1) length -= static_cast<int32_t>(piece_bytes);
    return find_plain_end(at + n, length, most_paired_bytes, seen);
}

// Finds two plain texts and the bytes of the characters that they have in common at their
// beginning, which are looked at once. Not for texts that have much in common: see equal_pieces.
[[gnu::always_inline]] inline bool find_plain_pair(string_pair strings, utf8_text *a, utf8_text *b,
                                                   size_t *same) {
    const unsigned char *at_a = a->at = as_bytes(strings.s1);
    const unsigned char *at_b = b->at = as_bytes(strings.s2);
    plain_utf8 seen;
    for (int32_t equal = 0; equal < most_equal_pieces; ++equal) {
        if (strings.len1 == 0 || strings.len2 == 0) return false;
        if (!piece::is_readable(at_a) || !piece::is_readable(at_b)) return false;
        piece x(at_a), y(at_b);
        uint64_t ends_a = ends_in(x, strings.len1), ends_b = ends_in(y, strings.len2);
        uint64_t ends_or_differs = ends_a | ends_b | x.differences(y);
        uint32_t common = static_cast<uint32_t>(std::countr_zero(ends_or_differs));
        if (common == piece_bytes) {
            if (x.high_bytes() & ~x.high_bytes_below(0xE0)) return false;
            if (!seen.add(x, piece_bytes)) return false;
            at_a += piece_bytes;
            at_b += piece_bytes;
            if (strings.len1 == -1) continue;
            strings.len1 -= static_cast<int32_t>(piece_bytes);
            strings.len2 -= static_cast<int32_t>(piece_bytes);
            continue;
        }
        uint32_t in_a = static_cast<uint32_t>(std::countr_zero(ends_a));
        uint32_t in_b = static_cast<uint32_t>(std::countr_zero(ends_b));
        plain_utf8 seen_b = seen;
        if (!seen.add(x, in_a) || !seen_b.add(y, in_b)) return false;
        a->end = end_behind(at_a, strings.len1, in_a, seen);
        b->end = end_behind(at_b, strings.len2, in_b, seen_b);
        // The last character to begin in what they have in common, or right behind it.
        uint32_t begins = ~x.high_bytes_below(0xC0) | static_cast<uint32_t>(ends_a);
        begins &= (uint32_t{2} << common) - 1;
        *same = static_cast<size_t>(at_a - a->at) + 31 - std::countl_zero(begins);
        if (!begins) [[unlikely]] // it began in the piece before
            while ((a->at[*same] & 0xC0) == 0x80) --*same;
        return a->end && b->end;
    }
    return false;
}

// The bytes of whole pieces that two strings have in common at their beginning.
inline size_t equal_pieces(const string_pair &strings) {
    const unsigned char *a = as_bytes(strings.s1), *b = as_bytes(strings.s2);
    bool terminated = strings.len1 == -1;
    size_t left = static_cast<size_t>(strings.len1 < strings.len2 ? strings.len1 : strings.len2);
    size_t i = 0;
    for (; i + piece_bytes <= left; i += piece_bytes) {
        if (!piece::is_readable(a + i) || !piece::is_readable(b + i)) break;
        piece x(a + i);
        if (x.differences(piece(b + i)) || (terminated && x.equal_to(0))) break;
    }
    return i;
}

#else

inline const unsigned char *find_plain_end(const unsigned char *, int32_t) {
    return nullptr;
}

inline bool find_plain_pair(const string_pair &, utf8_text *, utf8_text *, size_t *) {
    return false;
}

inline size_t equal_pieces(const string_pair &) {
    return 0;
}

#endif

} // namespace vel

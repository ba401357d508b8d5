// Finding text that is weighed as it stands, and whether it is valid.
#pragma once

#include "collate/load_some.h"
#include "collate/text.h"

namespace vel {

// The text in a terminated (length -1) or counted string.
template <typename Text> Text text_in(const char *string, int32_t length) {
    const unsigned char *at = reinterpret_cast<const unsigned char *>(string);
    return {at, at + (length == -1 ? strlen(string) : static_cast<size_t>(length))};
}

// Whether all of the text is valid.
bool is_valid(const vel_locale *locale, utf8_text text);

// Every byte of a single-byte code set is a character.
inline bool is_valid(const vel_locale *, byte_text) {
    return true;
}

// Finds short text that is valid, in one walk. False for any other: there is more to be done.
inline bool find_plain(const char *string, int32_t length, byte_text *text) {
    *text = text_in<byte_text>(string, length);
    return true;
}

#ifdef __SSE2__

inline uint32_t mask_of(__m128i bytes) {
    return static_cast<uint32_t>(_mm_movemask_epi8(bytes));
}
inline uint32_t mask_at_least(__m128i bytes, int least) {
    __m128i bound = _mm_set1_epi8(static_cast<char>(least));
    return mask_of(_mm_cmpeq_epi8(_mm_max_epu8(bytes, bound), bytes));
}
inline uint32_t mask_equal(__m128i bytes, int byte) {
    return mask_of(_mm_cmpeq_epi8(bytes, _mm_set1_epi8(static_cast<char>(byte))));
}

// Blocks of UTF-8 in which no lead restricts the byte behind it and none is longer than three: most
// text of most languages. Bit i of a mask is byte i of a block; what a lead asks of the bytes
// behind it goes over into the next block.
class plain_utf8 {
public:
    // The first n bytes of a block, 16 in all but the last. False when the text is not plain.
    [[gnu::always_inline]] bool add(__m128i bytes, uint32_t n) {
        uint32_t all = (1u << n) - 1;
        uint32_t high = mask_of(bytes) & all;
        if (!(high | trail_)) return true;
        uint32_t lead = mask_at_least(bytes, 0xC0) & all;
        trail_ |= lead << 1;
        if (lead != (mask_at_least(bytes, 0xC2) & all)) return false;
        if (uint32_t three = mask_at_least(bytes, 0xE0) & all) {
            uint32_t restricting = mask_equal(bytes, 0xE0) | mask_equal(bytes, 0xED);
            if ((restricting | mask_at_least(bytes, 0xF0)) & all) return false;
            trail_ |= three << 2;
        }
        if ((trail_ & all) != (high & ~lead)) return false;
        trail_ >>= n;
        return true;
    }
    bool is_whole() const { return trail_ == 0; }

private:
    uint32_t trail_ = 0;
};

// Beyond, the kernels for spans are faster.
constexpr size_t most_plain_bytes = 4 * block_bytes;

VEL_READS_AROUND inline bool find_plain(const char *string, int32_t length, utf8_text *text) {
    const unsigned char *at = reinterpret_cast<const unsigned char *>(string);
    size_t left = static_cast<size_t>(length); // no end in sight when it is -1
    plain_utf8 plain;
    for (size_t i = 0; i < most_plain_bytes; i += block_bytes) {
        uint32_t n = left < block_bytes ? static_cast<uint32_t>(left) : block_bytes;
        if (n > 0 && !is_readable_block(at + i)) return false;
        __m128i bytes = n > 0 ? load_block(at + i) : _mm_setzero_si128();
        uint32_t zeros = length == -1 ? mask_equal(bytes, 0) : 0;
        if (zeros) n = static_cast<uint32_t>(std::countr_zero(zeros));
        if (!plain.add(bytes, n)) return false;
        if (n < block_bytes) {
            *text = {at, at + i + n};
            return plain.is_whole();
        }
        left -= n;
    }
    return false;
}

// The bytes of whole blocks that two strings have in common at their beginning.
VEL_READS_AROUND inline size_t equal_blocks(const char *s1, int32_t len1, const char *s2,
                                            int32_t len2) {
    const unsigned char *a = reinterpret_cast<const unsigned char *>(s1);
    const unsigned char *b = reinterpret_cast<const unsigned char *>(s2);
    size_t left = static_cast<size_t>(len1 < len2 ? len1 : len2);
    size_t i = 0;
    for (; i + block_bytes <= left; i += block_bytes) {
        if (!is_readable_block(a + i) || !is_readable_block(b + i)) break;
        __m128i bytes = load_block(a + i);
        uint32_t zeros = len1 == -1 ? mask_equal(bytes, 0) : 0;
        uint32_t same = mask_of(_mm_cmpeq_epi8(bytes, load_block(b + i)));
        if (zeros || same != 0xFFFF) break;
    }
    return i;
}

#else

inline size_t equal_blocks(const char *, int32_t, const char *, int32_t) {
    return 0;
}

inline bool find_plain(const char *, int32_t, utf8_text *) {
    return false;
}

#endif

} // namespace vel

// The order of Thai text: by the bytes of the single-byte Thai code set, a leading vowel after the
// consonant that it is written before, marks only where everything else is the same.
#pragma once

#include "collate/text.h"

namespace vel {

// Negative, 0 or positive. A zero byte ends either text, as its end does.
int32_t compare_thai(byte_text a, byte_text b);

// The bytes of the key of a terminated string; as many as there is room for are stored.
int32_t write_thai_key(unsigned char *out, size_t room, const unsigned char *text);

// What a string is to those who compose text: an ordinary one, a whole composite character, or
// the beginning of one.
enum composite : int32_t { not_composite = 1, whole_composite = 2, composite_prefix = 3 };

composite thai_composite(const unsigned char *string);

inline bool is_thai_consonant(uint32_t byte) {
    return byte - 161 <= 206 - 161;
}
inline bool is_thai_leading_vowel(uint32_t byte) {
    return byte - 224 <= 228 - 224;
}
// Keys count two marks more than comparison does.
inline bool is_thai_mark(uint32_t byte) {
    return byte - 231 <= 236 - 231;
}
inline bool is_thai_key_mark(uint32_t byte) {
    return byte - 231 <= 238 - 231;
}

} // namespace vel

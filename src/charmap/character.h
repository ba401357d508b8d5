// One character: reading it from bytes and writing it as bytes. All primitives and the scalar loops
// of the whole-string kernels stand on these.
#pragma once

#include "objfile/lookup.h"
#include "record/record.h"

namespace vel {

inline const sealed_table &characters_of(const vel_locale *locale) {
    return *locale->ctype.characters;
}

// A character that was read; `used` is 0 when the bytes hold none, or not all of it.
struct character {
    vel_wchar value;
    uint32_t used;

    explicit operator bool() const { return used != 0; }
};

// How a walk that keeps the wide value ended.
struct valued_walk {
    uint32_t cell;
    int32_t used;
    vel_wchar value;
};

// Walks at most n bytes (n is at least 1), packing them as it goes. Written without a loop: most
// characters are one or two bytes, and lengths that are constants keep the position of the next
// character from waiting for this one's bytes.
[[gnu::always_inline]] inline valued_walk walk_value(const sealed_table &table,
                                                     const unsigned char *bytes, size_t n) {
    uint32_t cell = table.cells()[bytes[0]];
    vel_wchar value = bytes[0];
    if (!is_more(cell) || n < 2) return {cell, 1, value};
    cell = table.step(cell, 1, bytes[1]);
    value = value << 8 | bytes[1];
    if (!is_more(cell) || n < 3) return {cell, 2, value};
    cell = table.step(cell, 2, bytes[2]);
    value = value << 8 | bytes[2];
    if (!is_more(cell) || n < 4) return {cell, 3, value};
    cell = table.step(cell, 3, bytes[3]);
    return {cell, 4, value << 8 | bytes[3]};
}

inline character read_character(const sealed_table &table, const unsigned char *bytes, size_t n) {
    valued_walk at = walk_value(table, bytes, n);
    if (!is_end(at.cell)) return {0, 0};
    return {at.value, static_cast<uint32_t>(at.used)};
}

// The bytes of a packed value by its magnitude, in a code set that has one-byte characters.
inline uint32_t packed_length(vel_wchar value) {
    return 1 + (value > 0xFF) + (value > 0xFFFF) + (value > 0xFFFFFF);
}

// The bytes of a packed UTF-8 character, or 0 when the value is none.
inline uint32_t utf8_length(vel_wchar value) {
    if (value < 0x80) return 1;
    if (value <= 0xDFBF) return (value & 0xC0) == 0x80 && value >= 0xC280 ? 2 : 0;
    if (value <= 0xEFBFBF) {
        bool is_surrogate = (value & 0xFFE000) == 0xEDA000;
        return value >= 0xE0A080 && (value & 0xC0C0) == 0x8080 && !is_surrogate ? 3 : 0;
    }
    bool in_range = value >= 0xF0908080 && value <= 0xF48FBFBF;
    return in_range && (value & 0xC0C0C0) == 0x808080 ? 4 : 0;
}

// Reads one UTF-8 character of which at most n bytes (at least 1) are looked at.
inline character read_utf8(const unsigned char *bytes, size_t n) {
    uint32_t lead = bytes[0];
    if (lead < 0x80) return {lead, 1};
    if (n < 2) return {0, 0};
    vel_wchar value = lead << 8 | bytes[1];
    if (lead < 0xE0) {
        bool valid = lead >= 0xC2 && (value & 0xC0) == 0x80;
        return valid ? character{value, 2} : character{0, 0};
    }
    uint32_t length = lead < 0xF0 ? 3 : 4;
    if (length > n) return {0, 0};
    value = value << 8 | bytes[2];
    if (length == 4) value = value << 8 | bytes[3];
    return utf8_length(value) == length ? character{value, length} : character{0, 0};
}

// Writes the n low-order bytes of a value, most significant first.
inline void put_packed(unsigned char *out, vel_wchar value, uint32_t n) {
    if (n == 2) {
        out[0] = static_cast<unsigned char>(value >> 8);
        out[1] = static_cast<unsigned char>(value);
        return;
    }
    if (n > 3) *out++ = static_cast<unsigned char>(value >> 24);
    if (n > 2) {
        *out++ = static_cast<unsigned char>(value >> 16);
        *out++ = static_cast<unsigned char>(value >> 8);
    }
    *out = static_cast<unsigned char>(value);
}

// Writes the character with this wide value; its bytes, or 0 when the table has none. The bytes
// that could begin one have been written then.
uint32_t put_character(const sealed_table &table, vel_wchar value, unsigned char *out);

inline unsigned char *as_bytes(char *text) {
    return reinterpret_cast<unsigned char *>(text);
}

// Whether a character is the null character: all its bytes are zero.
inline bool is_null_character(const unsigned char *bytes, int32_t length) {
    if (bytes[0] != 0) [[likely]]
        return false;
    uint32_t sum = 0;
    for (int32_t i = 1; i < length; ++i) sum += bytes[i];
    return sum == 0;
}

// Whether `shortest` zero bytes stand here.
inline bool at_terminator(const sealed_table &table, const unsigned char *bytes) {
    for (int32_t i = 0; i < table.shortest; ++i) {
        if (bytes[i] != 0) return false;
    }
    return true;
}

// Writes the string terminator and gives its bytes.
inline int32_t put_terminator(const sealed_table &table, unsigned char *out) {
    for (int32_t i = 0; i < table.shortest; ++i) out[i] = 0;
    return table.shortest;
}

} // namespace vel

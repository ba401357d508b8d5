// A character as a counted byte string: how tables are keyed when they are built and stepped.
#pragma once

#include "vels/types.h"

namespace vel {

constexpr int32_t max_character_bytes = 4;

struct vel_mbkey {
    uint32_t length;        // 1 to 4
    unsigned char bytes[4]; // first byte first; those past the length are ignored
};

// Adds a signed number to the bytes as a big-endian number of unchanged length; what overflows or
// borrows past the first byte is dropped.
void vel_mbkey_add(const vel_mbkey *key, int32_t delta, vel_mbkey *result);
// 1 when length and bytes are the same, else 0.
int32_t vel_mbkey_equal(const vel_mbkey *a, const vel_mbkey *b);
// The bytes as a big-endian number: the wide value of the character.
uint32_t vel_mbkey_value(const vel_mbkey *key);

} // namespace vel

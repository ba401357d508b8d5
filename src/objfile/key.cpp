#include "objfile/key.h"

#include <cstring>

namespace vel {

void vel_mbkey_add(const vel_mbkey *key, int32_t delta, vel_mbkey *result) {
    *result = *key;
    int64_t carry = delta;
    for (uint32_t i = key->length; i-- > 0 && carry != 0;) {
        int64_t sum = key->bytes[i] + carry;
        result->bytes[i] = static_cast<unsigned char>(sum & 0xFF);
        carry = sum >> 8;
    }
}

int32_t vel_mbkey_equal(const vel_mbkey *a, const vel_mbkey *b) {
    return a->length == b->length && memcmp(a->bytes, b->bytes, a->length) == 0;
}

uint32_t vel_mbkey_value(const vel_mbkey *key) {
    uint32_t value = 0;
    for (uint32_t i = 0; i < key->length; ++i) value = value << 8 | key->bytes[i];
    return value;
}

} // namespace vel

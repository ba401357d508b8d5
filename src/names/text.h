// Reading and writing the short texts that names are.
#pragma once

#include <cstring>

#include "ext/error.h"
#include "names/ascii.h"

namespace vel {

// Stores the number, unless there is no context to store it for, and gives -1.
inline int32_t refuse(void *context, int32_t number = VEL_EINVAL) {
    return context ? fail(context, number) : -1;
}

// A working copy of an input, cut after `limit` bytes; null counts as empty.
template <size_t limit> struct input_copy {
    explicit input_copy(const char *input) {
        size_t length = 0;
        for (; input && length < limit && input[length]; ++length) text[length] = input[length];
        text[length] = '\0';
    }
    char text[limit + 1];
};
using spec_copy = input_copy<285>;

// Text added to a caller's buffer, which ends in a zero at all times; a null one swallows it all.
struct text_out {
    char *end;

    void put(char c) {
        if (!end) return;
        *end++ = c;
        *end = '\0';
    }
    void put(const char *text, size_t length) {
        for (size_t i = 0; i < length; ++i) put(text[i]);
    }
    void put(const char *text) { put(text, strlen(text)); }
    void put_lower(const char *text, size_t length) {
        for (size_t i = 0; i < length; ++i) put(to_lower(text[i]));
    }
    // Four lower-case hexadecimal digits.
    void put_hex(uint16_t number) {
        for (int shift = 12; shift >= 0; shift -= 4) put("0123456789abcdef"[number >> shift & 15]);
    }
    void put_decimal(uint16_t number) {
        char digits[5];
        char *first = digits + sizeof digits;
        do {
            *--first = static_cast<char>('0' + number % 10);
            number = static_cast<uint16_t>(number / 10);
        } while (number);
        put(first, static_cast<size_t>(digits + sizeof digits - first));
    }
};

// Steps over `expected` when the text goes on with it.
inline bool take(const char *&cursor, const char *expected) {
    size_t length = strlen(expected);
    if (strncmp(cursor, expected, length) != 0) return false;
    cursor += length;
    return true;
}

} // namespace vel

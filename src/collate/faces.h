// What the exported collating functions have in common: their checks, and the choice between the
// tables, the Thai order and the order of values.
#pragma once

#include "collate/compare.h"
#include "collate/thai.h"
#include "ext/error.h"

namespace vel {

// 0, or the number of what is wrong with the arguments. A null locale has no cell to store one in.
inline int32_t pair_error(const void *s1, int32_t len1, const void *s2, int32_t len2) {
    if (!s1 || !s2) return VEL_EFAULT;
    return (len1 == -1) != (len2 == -1) ? VEL_EMIXEDLEN : 0;
}

// A comparison as functions give it: 0 with VEL_ENOMEM when memory was missing.
inline int32_t settle(vel_locale *locale, int32_t order) {
    return order == out_of_memory ? fail_zero(locale, VEL_ENOMEM) : order;
}

// Compares by the tables of the locale.
template <typename Text> int32_t collate_texts(vel_locale *locale, Text a, Text b) {
    return settle(locale, compare_texts(weighing(locale->collate), a, b));
}

wide_text find_text(const vel_wchar *wide, int32_t length);

inline bool is_utf8(const vel_locale *locale) {
    return characters_of(locale).shape == table_shape::utf8;
}

// A multibyte string as wide values with a terminator: on the stack below 128 characters.
class decoded_text {
public:
    decoded_text(vel_locale *locale, const char *string, int32_t length);

    // False when an error number has been stored.
    explicit operator bool() const { return ok_; }
    vel_wchar *values() { return values_.data(); }
    wide_text text() { return {values_.data(), values_.data() + count_}; }

private:
    int32_t count_; // negative when the string is invalid
    stack_or_heap<vel_wchar, 128> values_;
    bool ok_;
};

// A wide string as terminated multibyte text.
class encoded_text {
public:
    encoded_text(vel_locale *locale, wide_text wide);

    explicit operator bool() const { return ok_; }
    const char *bytes() { return bytes_.data(); }
    byte_text text() {
        const unsigned char *begin = as_bytes(bytes_.data());
        return {begin, begin + length_};
    }

private:
    stack_or_heap<char, 512> bytes_;
    int32_t length_ = 0;
    bool ok_;
};

} // namespace vel

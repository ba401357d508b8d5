// The quick way to write a decimal number in groups of three digits, as nearly all locales have
// them. How long numbers are is what nothing foretells, so it is computed with and never branched
// on: all groups that there could be are written, and those behind the end do not count.
#pragma once

#include <cstring>
#include <type_traits>

#include "record/record.h"

namespace vel {

struct digit_triples {
    char of[1000 * 3 + 1]; // "000" to "999", and one to be read behind them
};

inline constexpr digit_triples triples = [] {
    digit_triples made = {};
    for (int32_t i = 0; i < 1000; ++i) {
        made.of[3 * i] = static_cast<char>('0' + i / 100);
        made.of[3 * i + 1] = static_cast<char>('0' + i / 10 % 10);
        made.of[3 * i + 2] = static_cast<char>('0' + i % 10);
    }
    return made;
}();

// A sign or separator that is copied in one piece. The strings of a locale have zeros enough behind
// them to be read so.
template <typename Unit> struct short_text {
    static constexpr int32_t longest = 4 / sizeof(Unit);

    const Unit *units;
    int32_t length; // at most `longest`

    // Whether the text can be one.
    static bool make(const Unit *units, short_text &out) {
        int32_t length = 0;
        while (length < longest && units[length]) ++length;
        out = {units, length};
        return units[length] == 0;
    }
    Unit *put(Unit *out) const {
        memcpy(out, units, longest * sizeof(Unit));
        return out + length;
    }
};

// Units that put_thousands may write, from where it begins.
constexpr int32_t thousands_room = 3 + 3 * (4 + 3) + 1;

inline bool has_groups_of_three(const vel_grouping &grouping) {
    if (grouping.count == 0) return false;
    for (int32_t i = 0; i < grouping.count; ++i) {
        if (grouping.sizes[i] != 3) return false;
    }
    return true;
}

template <typename Unit> inline void put_triple(Unit *out, const char *digits) {
    if constexpr (std::is_same_v<Unit, char>) {
        memcpy(out, digits, 4);
    } else {
        for (int32_t i = 0; i < 3; ++i) out[i] = static_cast<Unit>(digits[i]);
    }
}

// Writes a number in ASCII digits and gives its end.
template <typename Unit>
inline Unit *put_thousands(Unit *out, uint32_t value, const short_text<Unit> &separator) {
    const uint32_t millions = value / 1000000;
    const uint32_t below = value % 1000000;
    const uint32_t groups[] = {
        0, 0, 0, below % 1000, below / 1000, millions % 1000, millions / 1000};
    const uint32_t separators = (value >= 1000) + (value >= 1000000) + (value >= 1000000000);
    const uint32_t *group = &groups[3 + separators];
    const uint32_t digits = 1 + (*group >= 10) + (*group >= 100);
    put_triple(out, &triples.of[3 * *group + 3 - digits]);
    out += digits;
    Unit *end = out + separators * static_cast<uint32_t>(3 + separator.length);
    for (int32_t i = 0; i < 3; ++i) {
        out = separator.put(out);
        put_triple(out, &triples.of[3 * *--group]);
        out += 3;
    }
    return end;
}

} // namespace vel

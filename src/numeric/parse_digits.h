// Reading signs and runs of digits, with or without separators.
#pragma once

#include "numeric/format_digits.h"
#include "numeric/integer_field.h"
#include "numeric/number_text.h"

namespace vel {

// The value of a digit of a base, -1 for any other character.
inline int32_t digit_of_base(const vel_locale *locale, vel_wchar value, int32_t base) {
    const uint32_t c = portable_of(locale, value);
    uint32_t digit = c - '0';
    if (digit > 9) {
        const uint32_t letter = (c | 0x20) - 'a';
        if (base <= 10 || letter >= 26) return -1;
        digit = letter + 10;
    }
    return digit < static_cast<uint32_t>(base) ? static_cast<int32_t>(digit) : -1;
}

// Where separators stood among digits, to be compared with where they belong.
class separator_places {
public:
    void add(int32_t digits_before) {
        if (count_ < most) places_[count_] = digits_before;
        ++count_;
    }
    bool any() const { return count_ > 0; }

    // Whether every group is complete. Zeros that lead the first one do not count, because padding
    // is not grouped.
    bool fit(const vel_grouping &grouping, int32_t digits, int32_t leading_zeros) const {
        if (count_ > most) return false;
        group_sizes sizes(grouping);
        int32_t size = sizes.next();
        for (int32_t i = count_ - 1; i >= 0; --i, size = sizes.next()) {
            if (size <= 0 || digits - places_[i] != size) return false;
            digits = places_[i];
        }
        return size <= 0 || digits - smaller_of(digits, leading_zeros) <= size;
    }

private:
    static constexpr int32_t most = 320; // more than the digits of a double before its point
    static int32_t smaller_of(int32_t a, int32_t b) { return a < b ? a : b; }

    int32_t count_ = 0;
    int32_t places_[most];
};

struct digits_read {
    int32_t count;
    bool misgrouped; // a separator stood where none belongs, or none where others have theirs
};

// Reads digits and hands each to `take`. Separators of `groups` may stand between them: all that
// belong there, or none.
template <typename Text, typename Take>
[[gnu::always_inline]] inline digits_read read_digits(const vel_locale *locale, Text &in,
                                                      int32_t base, const digit_groups &groups,
                                                      Take take) {
    separator_places places;
    Text at = in;
    int32_t count = 0;
    int32_t zeros = 0;
    for (; count < INT32_MAX; at.next()) {
        int32_t digit = digit_of_base(locale, at.peek(), base);
        if (digit < 0) {
            if (!groups.sizes || count == 0) break;
            Text behind = at;
            if (!skip_mark(groups.separator->wide, behind)) break;
            digit = digit_of_base(locale, behind.peek(), base);
            if (digit < 0) break;
            places.add(count);
            at = behind;
        }
        if (digit == 0 && zeros == count) ++zeros;
        ++count;
        take(digit);
    }
    in = at;
    bool fits = !places.any() || places.fit(*groups.sizes, count, zeros);
    return {count, !fits};
}

struct integer_rules {
    int32_t base = 10;
    int32_t most = 0;      // characters; 0 or less: no limit
    digit_groups groups{}; // whose separators are stepped over
    bool prefixed = false; // "0x" may stand behind the sign
};

struct integer_scan {
    scanned_integer value;
    bool overflow;
    bool misgrouped;
};

// Zeros of padding may stand before the prefix.
template <typename Text> Text behind_prefix(const vel_locale *locale, Text in) {
    Text at = in;
    while (skip_ascii(locale, at, '0')) {
        if (!skip_ascii(locale, at, 'x') && !skip_ascii(locale, at, 'X')) continue;
        if (digit_of_base(locale, at.peek(), 16) >= 0) in = at;
    }
    return in;
}

template <typename Unit>
integer_scan scan_integer(const vel_locale *locale, char_reader<Unit> &input,
                          const integer_rules &rules) {
    bounded_text<Unit> in(locale, input.at(), rules.most > 0 ? rules.most : INT32_MAX);
    const bool negative = skip_sign(locale, style_of(locale, number_kind::numeric), in);
    integer_scan scan = {{0, 0, negative}, false, false};
    if (rules.prefixed) in = behind_prefix(locale, in);
    uint64_t value = 0;
    digits_read read = read_digits(locale, in, rules.base, rules.groups, [&](int32_t digit) {
        value = value * static_cast<uint32_t>(rules.base) + static_cast<uint32_t>(digit);
        if (value <= UINT32_MAX) return;
        scan.overflow = true;
        value = UINT32_MAX;
    });
    if (read.count == 0) return {{0, 0, false}, false, false};
    input = char_reader<Unit>(locale, in.at());
    scan.value.magnitude = static_cast<uint32_t>(value);
    scan.value.digits = read.count;
    scan.misgrouped = read.misgrouped;
    return scan;
}

} // namespace vel

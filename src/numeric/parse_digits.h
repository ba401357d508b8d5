// Reading signs and runs of digits, with or without separators.
#pragma once

#include "numeric/format_digits.h"
#include "numeric/integer_field.h"
#include "numeric/number_text.h"

namespace vel {

// The value of the digit of a base that stands in text, -1 for any other character.
template <typename Text> int32_t digit_of_base(const Text &text, int32_t base) {
    if (base == 10) return text.digit();
    const uint32_t c = text.portable();
    uint32_t digit = c - '0';
    if (digit > 9) {
        const uint32_t letter = (c | 0x20) - 'a';
        if (letter >= 26) return -1;
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
[[gnu::always_inline]] inline digits_read read_digits(Text &in, int32_t base,
                                                      const digit_groups &groups, Take take) {
    separator_places places;
    Text at = in;
    int32_t count = 0;
    int32_t zeros = 0;
    for (;;) {
        for (int32_t digit; (digit = digit_of_base(at, base)) >= 0; at.next()) {
            zeros += (digit == 0) & (zeros == count);
            ++count;
            take(digit);
        }
        if (!groups.sizes || count == 0) break;
        Text behind = at;
        if (!skip_mark(groups.separator->wide, behind) || digit_of_base(behind, base) < 0) break;
        places.add(count);
        at = behind;
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
        if (digit_of_base(at, 16) >= 0) in = at;
    }
    return in;
}

// `scan` is all zeros before, and after nothing was read.
template <portable_form form, typename Unit>
void scan_integer_in(const vel_locale *locale, char_reader<Unit> &input, const integer_rules &rules,
                     integer_scan &scan) {
    bounded_text<Unit, form> in(locale, input.at(), rules.most > 0 ? rules.most : INT32_MAX);
    const bool negative = skip_sign(locale, style_of(locale, number_kind::numeric), in);
    if (rules.prefixed) in = behind_prefix(locale, in);
    const uint32_t base = static_cast<uint32_t>(rules.base);
    uint64_t value = 0;
    bool overflow = false;
    digits_read read = read_digits(in, rules.base, rules.groups, [&](int32_t digit) {
        value = value * base + static_cast<uint32_t>(digit);
        if (value <= UINT32_MAX) return;
        overflow = true;
        value = UINT32_MAX;
    });
    if (read.count == 0) return;
    input = char_reader<Unit>(locale, in.at());
    scan.value.magnitude = static_cast<uint32_t>(value);
    scan.value.digits = read.count;
    scan.value.negative = negative;
    scan.overflow = overflow;
    scan.misgrouped = read.misgrouped;
}

template <typename Unit>
void scan_integer(const vel_locale *locale, char_reader<Unit> &input, const integer_rules &rules,
                  integer_scan &scan) {
    auto scan_text = has_ascii_units<Unit>(locale) ? scan_integer_in<portable_form::ascii, Unit>
                                                   : scan_integer_in<portable_form::by_table, Unit>;
    scan_text(locale, input, rules, scan);
}

} // namespace vel

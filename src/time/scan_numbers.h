// Reading the numbers of dates and times.
#pragma once

#include "ctype/character_class.h"
#include "numeric/integer_field.h"
#include "time/names.h"
#include "time/parse_table.h"
#include "time/scan_cursor.h"

namespace vel {

// How one conversion of the format reads.
struct manner {
    directive how;
    bool in_digits = false;     // digits of the locale's own
    bool before_digits = false; // another number in such digits follows at once

    manner() { how.width = -1; }
    bool has_width() const { return how.width >= 0; }
    bool is_plain() const { return how.width < 0 && how.precision < 0; }
    // The most digits when the format gives no number, in the given width.
    int32_t most(int32_t width) const {
        if (has_width()) return how.width;
        return how.precision < 0 ? width : 0;
    }
};

// How many blanks were skipped, at most so many.
template <typename Unit>
int32_t skip_padding(vel_locale *locale, scan_cursor<Unit> &input, int32_t most) {
    int32_t skipped = 0;
    for (; skipped < most && has_class(locale, input.peek(), VEL_CLASS_BLANK); ++skipped) {
        input.next();
    }
    return skipped;
}

template <typename Unit>
bool begins_number(const vel_locale *locale, const scan_cursor<Unit> &input) {
    return digit_of(locale, input.peek()) >= 0 ||
           vel_match_name(locale, input.at(), list_alt_digits).name != no_name;
}

// Reads a number in digits of the locale's own. The longest one counts, except where it takes what
// the next one needs: 21 may be written as 20 and 1, and so is the year 2001 by its century and the
// year in that.
template <typename Unit>
bool read_own_number(const vel_locale *locale, scan_cursor<Unit> &input, const manner &with,
                     int32_t *value) {
    name_match<Unit> shorter = {no_name, input.at()};
    name_match<Unit> found = vel_match_name(locale, input.at(), list_alt_digits, &shorter);
    if (found.name == no_name) return false;
    input.move_to(found.behind);
    if (with.before_digits && shorter.name != no_name && !begins_number(locale, input)) {
        found = shorter;
        input.move_to(found.behind);
    }
    *value = found.name;
    return true;
}

// Whether a zero stands before another digit here.
template <typename Unit> bool has_leading_zero(const vel_locale *locale, scan_cursor<Unit> input) {
    if (digit_of(locale, input.peek()) != 0) return false;
    input.next();
    return digit_of(locale, input.peek()) >= 0;
}

// Reads at most so many digits, 0 for no limit, as vel_scan_integer does. Most numbers of dates
// have one or two and no sign, and are read here. The count of digits, 0 when no number stands here
// or it is negative.
template <typename Unit>
int32_t scan_digits(vel_locale *locale, scan_cursor<Unit> &input, int32_t most, int32_t *value) {
    constexpr int32_t few = 9; // digits that always fit
    const Unit *at = input.at();
    if (most >= 1 && most <= few && input.has_ascii()) {
        uint32_t read = 0;
        for (; at - input.at() < most; ++at) {
            uint32_t digit = static_cast<std::make_unsigned_t<Unit>>(*at) - uint32_t{'0'};
            if (digit > 9) break;
            read = read * 10 + digit;
        }
        if (int32_t digits = static_cast<int32_t>(at - input.at())) {
            *value = static_cast<int32_t>(read);
            input.move_to(at);
            return digits;
        }
    }
    char_reader<Unit> reader = input.reader();
    scanned_integer read = vel_scan_integer(locale, reader, 10, most);
    input.move_to(reader.at());
    *value = read.magnitude > INT32_MAX ? INT32_MAX : static_cast<int32_t>(read.magnitude);
    return read.negative ? 0 : read.digits;
}

// Reads the digits of a number. What formatting writes is read back: blanks that pad a number count
// in its width, and a weekday may have a zero before it.
template <typename Unit>
bool read_number(vel_locale *locale, scan_cursor<Unit> &input, const number_rule &rule,
                 const manner &with, int32_t *value) {
    const directive &how = with.how;
    int32_t most = with.most(rule.width);
    if (with.has_width() || (rule.blank && with.is_plain())) {
        most -= skip_padding(locale, input, most - 1);
    }
    if (with.is_plain() && how.has(flag_plus | flag_space)) {
        most += 1 - skip_padding(locale, input, 1);
    }
    if (with.in_digits && read_own_number(locale, input, with, value)) return true;
    if (rule.width == 1 && with.is_plain() && has_leading_zero(locale, input)) most = 2;
    int32_t read = scan_digits(locale, input, most, value);
    if (read == 0 || read < how.precision) return false;
    if (with.has_width() && how.has(flag_left)) skip_padding(locale, input, most - read);
    return true;
}

// Reads a fraction of a second as microseconds. Digits beyond the sixth are passed over. Fewer than
// `fewest` are no fraction, and none is not either.
template <typename Unit>
bool read_fraction(const vel_locale *locale, scan_cursor<Unit> &input, int32_t fewest, int32_t most,
                   int32_t *microseconds) {
    constexpr int32_t kept_digits = 6;
    int32_t read = 0, value = 0;
    for (int32_t digit; read < most && (digit = digit_of(locale, input.peek())) >= 0; ++read) {
        if (read < kept_digits) value = value * 10 + digit;
        input.next();
    }
    if (read == 0 || read < fewest) return false;
    for (int32_t i = read; i < kept_digits; ++i) value *= 10;
    *microseconds = value;
    return true;
}

} // namespace vel

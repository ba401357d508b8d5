// Reading integers.
#include <limits>

#include "ext/error.h"
#include "ext/host_errno.h"
#include "numeric/grouping.h"
#include "numeric/number_text.h"
#include "vels/number.h"

namespace vel {
namespace {

constexpr int32_t max_unsigned_characters = 256;
constexpr int32_t max_grouped_rest = 255;

class kept_text {
public:
    kept_text(const char *begin, const char *end) : at_(begin), end_(end) {}
    unsigned char portable() const { return at_ < end_ ? static_cast<unsigned char>(*at_) : 0; }
    void next() { ++at_; }
    const char *at() const { return at_; }

private:
    const char *at_, *end_;
};

// The value of a digit or letter, more than any base for other characters.
uint32_t digit_value(unsigned char ascii) {
    uint32_t digit = static_cast<uint32_t>(ascii) - '0';
    if (digit <= 9) return digit;
    uint32_t letter = (static_cast<uint32_t>(ascii) | 0x20) - 'a';
    return letter < 26 ? letter + 10 : UINT32_MAX;
}

struct digits_value {
    uint64_t magnitude = 0; // above 32 bits: too large
    bool any = false;
};

template <typename Text>
[[gnu::always_inline]] inline digits_value take_digits_of(Text &text, uint32_t base) {
    digits_value value;
    Text at = text;
    for (uint32_t digit; (digit = digit_value(at.portable())) < base; at.next()) {
        value.any = true;
        if (value.magnitude <= UINT32_MAX) value.magnitude = value.magnitude * base + digit;
    }
    text = at;
    return value;
}

// Decimal digits; those of a number that is too large already change nothing.
struct decimal_sink {
    uint64_t magnitude = 0;

    bool has_room() const { return magnitude <= UINT32_MAX; }
    void add(int32_t digit) { magnitude = magnitude * 10 + static_cast<uint32_t>(digit); }
    void add_more(int32_t) {}
};

// Steps over "0x" when a hexadecimal digit follows.
template <typename Text> bool skip_prefix(Text &text) {
    if (text.portable() != '0') return false;
    Text at = text;
    at.next();
    if ((at.portable() | 0x20) != 'x') return false;
    at.next();
    if (digit_value(at.portable()) >= 16) return false;
    text = at;
    return true;
}

// Takes the digits that stand here by the rules of strtol: base 0 goes by the prefix.
template <typename Text>
[[gnu::always_inline]] inline digits_value take_number(Text &text, int32_t base) {
    if (base < 0 || base == 1 || base > 36) {
        set_host_errno(host_error::invalid);
        return {};
    }
    set_host_errno(host_error::none);
    if ((base == 0 || base == 16) && skip_prefix(text)) base = 16;
    if (base == 0) base = text.portable() == '0' ? 8 : 10;
    return take_digits_of(text, static_cast<uint32_t>(base));
}

// The characters to the end of the text, -1 when they are too many.
template <typename Text> int32_t take_rest(Text text, vel_wchar *out) {
    int32_t count = 0;
    for (; vel_wchar c = text.peek(); text.next()) {
        if (count == max_grouped_rest) return -1;
        out[count++] = c;
    }
    return count;
}

// Grouped text without its separators, at the end of its buffers.
struct ungrouped_text {
    int32_t first = max_grouped_rest;
    char ascii[max_grouped_rest];    // 0: not a portable character
    uint8_t index[max_grouped_rest]; // in the grouped text
};

// Whether the separator ends at `end`, and not before `begin`.
bool vel_match_thousands_sep(const number_marks &marks, const vel_wchar *begin,
                             const vel_wchar *end) {
    const int32_t length = marks.thousands_sep_length;
    if (end - begin < length) return false;
    for (int32_t i = 1; i <= length; ++i) {
        if (end[-i] != marks.thousands_sep[length - i]) return false;
    }
    return true;
}

// Drops the separator before every complete group, counted from the end. All other characters are
// kept, separators in other places too. False when a separator is missing.
bool drop_separators(const vel_locale *locale, const number_style &style, const vel_wchar *text,
                     int32_t count, ungrouped_text &out) {
    const int32_t separator = style.marks.thousands_sep_length;
    group_sizes sizes(style.grouping);
    int32_t group = separator ? sizes.next() : 0;
    int32_t in_group = 0;
    while (count > 0) {
        if (group > 0 && in_group == group) {
            if (!vel_match_thousands_sep(style.marks, text, text + count)) return false;
            count -= separator;
            group = sizes.next();
            in_group = 0;
            continue;
        }
        --count;
        --out.first;
        out.ascii[out.first] = static_cast<char>(portable_of(locale, text[count]));
        out.index[out.first] = static_cast<uint8_t>(count);
        ++in_group;
    }
    return true;
}

struct grouped_value {
    digits_value value;
    int32_t used; // characters, -1 for a failure
};

// Fails with VEL_EINVAL when the text is too long or is not grouped as the locale has it, to its
// end: there is no telling what a separator behind the digits belongs to.
template <typename Text>
[[gnu::noinline]] grouped_value take_any_groups(vel_locale *locale, int32_t base, Text text) {
    vel_wchar taken[max_grouped_rest];
    ungrouped_text kept;
    const number_style style = style_of(locale, number_kind::numeric);
    int32_t count = take_rest(text, taken);
    if (count < 0 || !drop_separators(locale, style, taken, count, kept)) {
        return {{}, fail(locale, VEL_EINVAL)};
    }
    kept_text digits(kept.ascii + kept.first, kept.ascii + max_grouped_rest);
    digits_value value = take_number(digits, base);
    return {value, value.any ? kept.index[digits.at() - 1 - kept.ascii] + 1 : 0};
}

// Text as it is written, decimal digits and separators to the end, is read in one pass. All other
// text is looked at again. False with VEL_EINVAL.
template <typename Text>
[[gnu::always_inline]] inline bool take_groups(vel_locale *locale, const number_style &style,
                                               int32_t base, Text &text, digits_value &value) {
    if (base == 10 && text.digit() >= 0) {
        Text at = text;
        decimal_sink digits;
        grouped_run run = take_grouped(style, at, digits);
        if (run.fault == group_fault::none && run.characters <= max_grouped_rest &&
            at.peek() == 0) {
            set_host_errno(host_error::none);
            value = {digits.magnitude, true};
            text = at;
            return true;
        }
    }
    grouped_value found = take_any_groups(locale, base, text);
    value = found.value;
    for (int32_t left = found.used; left > 0; --left) text.next();
    return found.used >= 0;
}

template <typename Text>
[[gnu::always_inline]] inline digits_value take_plain(Text &text, int32_t base) {
    if (base != 10) return take_number(text, base);
    set_host_errno(host_error::none);
    decimal_sink digits;
    bool any = take_digits(text, digits) > 0;
    return {digits.magnitude, any};
}

struct integer {
    uint64_t magnitude;
    bool negative;
    bool failed; // the error is stored
};

template <typename Text> bool is_short(Text text) {
    int32_t count = 0;
    for (; text.peek(); text.next()) {
        if (++count > max_unsigned_characters) return false;
    }
    return true;
}

// Signs of the locale are those of signed numbers only.
template <typename Number, portable_form form, typename Unit>
integer read_integer(vel_locale *locale, const Unit *&string, int32_t base, bool grouped) {
    const number_style style = style_of(locale, number_kind::numeric);
    string = skip_white_space<form>(locale, string);
    bounded_text<Unit, form> at(locale, string, INT32_MAX);
    constexpr bool is_signed = std::is_signed_v<Number>;
    if (!is_signed && !is_short(at)) {
        set_error(locale, VEL_EINVAL);
        return {0, false, true};
    }
    bool negative = is_signed ? skip_sign(locale, style, at) : skip_ascii_sign(locale, at);
    digits_value value;
    if (!grouped) {
        value = take_plain(at, base);
    } else if (!take_groups(locale, style, base, at, value)) {
        return {0, false, true};
    }
    if (value.any) string = at.at();
    return {value.magnitude, negative, false};
}

template <typename Number> struct clamped {
    Number value;
    bool is_out_of_range;
};

clamped<int32_t> clamp(const integer &read, int32_t) {
    const uint32_t sign = read.negative; // computed with: branches would often be wrong
    const uint32_t most = INT32_MAX + sign;
    const bool is_over = read.magnitude > most;
    const uint32_t magnitude = is_over ? most : static_cast<uint32_t>(read.magnitude);
    return {static_cast<int32_t>((magnitude ^ (0 - sign)) + sign), is_over};
}

// A negative number counts down from the top, as strtoul has it.
clamped<uint32_t> clamp(const integer &read, uint32_t) {
    if (read.magnitude > UINT32_MAX) return {UINT32_MAX, true};
    uint32_t magnitude = static_cast<uint32_t>(read.magnitude);
    return {read.negative ? 0 - magnitude : magnitude, false};
}

// Number and Unit choose among the four functions.
template <typename Number, typename Unit>
clamped<Number> convert(vel_locale *locale, const Unit *string, Unit **end, int32_t base,
                        int32_t grouping) {
    const Unit *at = string;
    auto read_any = has_ascii_units<Unit>(locale)
                        ? read_integer<Number, portable_form::ascii, Unit>
                        : read_integer<Number, portable_form::by_table, Unit>;
    integer read = read_any(locale, at, base, grouping != 0);
    *end = const_cast<Unit *>(at);
    if (read.failed) return {INT32_MAX, false};
    clamped<Number> result = clamp(read, Number());
    if (result.is_out_of_range) set_host_errno(host_error::out_of_range);
    return result;
}

template <typename Number>
Number convert_wide(vel_locale *locale, const vel_wchar *wide, vel_wchar **end, int32_t base,
                    int32_t grouping) {
    vel_wchar *stop;
    return convert<Number>(locale, wide, end ? end : &stop, base, grouping).value;
}

template <typename Number>
Number convert_multibyte(vel_locale *locale, const char *string, char **end, int32_t base,
                         int32_t grouping) {
    char *stop;
    clamped<Number> result = convert<Number>(locale, string, &stop, base, grouping);
    if (end) *end = stop;
    if (result.is_out_of_range || !is_convertible(locale, string, stop)) {
        set_error(locale, VEL_ENONUM);
        return std::numeric_limits<Number>::max();
    }
    return result.value;
}

} // namespace
} // namespace vel

using namespace vel;

int32_t vel_wcstol(vel_locale *locale, const vel_wchar *wide, vel_wchar **end, int32_t base,
                   int32_t grouping) {
    return convert_wide<int32_t>(locale, wide, end, base, grouping);
}

uint32_t vel_wcstoul(vel_locale *locale, const vel_wchar *wide, vel_wchar **end, int32_t base,
                     int32_t grouping) {
    return convert_wide<uint32_t>(locale, wide, end, base, grouping);
}

int32_t vel_mbstol(vel_locale *locale, const char *string, char **end, int32_t base,
                   int32_t grouping) {
    return convert_multibyte<int32_t>(locale, string, end, base, grouping);
}

uint32_t vel_mbstoul(vel_locale *locale, const char *string, char **end, int32_t base,
                     int32_t grouping) {
    return convert_multibyte<uint32_t>(locale, string, end, base, grouping);
}

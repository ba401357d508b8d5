#include "numeric/integer_field.h"

#include "numeric/digits.h"
#include "numeric/format_digits.h"
#include "numeric/parse_digits.h"
#include "numeric/thousands.h"

namespace vel {
namespace {

constexpr int32_t field_digits = 32; // an integer of 32 bits in base 2

// The digits of a value, and room for as many zeros before them.
class digit_run {
public:
    digit_run(uint32_t value, int32_t base, bool upper) {
        if (base == 10) {
            write_decimal(value);
        } else {
            write(value, static_cast<uint32_t>(base), upper);
        }
    }

    const char *begin() const { return begin_; }
    int32_t count() const { return static_cast<int32_t>(text_ + sizeof text_ - begin_); }

    // Puts zeros before the digits until there are `count` of all, at most field_digits.
    void extend(int32_t count) {
        while (this->count() < count) *--begin_ = '0';
    }

private:
    void write_decimal(uint32_t value) {
        int32_t count = digit_count(value);
        begin_ -= count;
        put_digits(begin_, value, count);
    }
    void write(uint32_t value, uint32_t base, bool upper) {
        const char *symbols = upper ? "0123456789ABCDEF" : "0123456789abcdef";
        do {
            *--begin_ = symbols[value % base];
            value /= base;
        } while (value != 0);
    }

    char text_[field_digits];
    char *begin_ = text_ + sizeof text_;
};

mark sign_of(const vel_locale *locale, bool negative, const directive &how) {
    if (negative) return negative_mark(locale);
    return how.has(flag_plus) ? positive_mark(locale) : mark();
}

// Blanks in place of a sign.
int32_t sign_blanks(const vel_locale *locale, bool negative, const directive &how) {
    bool blank = !negative && how.has(flag_space) && !how.has(flag_plus);
    return blank ? positive_mark(locale).length() : 0;
}

int32_t leading_zeros(const directive &how, int32_t base, int32_t digits) {
    int32_t precision = how.precision;
    if (how.has(flag_alternate) && base == 8 && precision <= digits) precision = digits + 1;
    return precision > digits ? precision - digits : 0;
}

// Padding with zeros comes before a prefix, as it comes before zeros that a precision asks for.
template <typename Unit>
void put_field(vel_locale *locale, char_writer<Unit> &out, const integer_value &value,
               const digit_run &digits, const directive &how) {
    const vel_wchar blank = value_of(locale, ' ');
    const bool prefixed = how.has(flag_alternate) && value.base == 16;
    const mark sign = sign_of(locale, value.negative, how);
    const int32_t blanks = sign_blanks(locale, value.negative, how);
    const int32_t zeros = leading_zeros(how, value.base, digits.count());
    const digit_groups groups = how.has(flag_group) ? numeric_groups(locale) : digit_groups();

    int32_t pad = 0;
    if (how.width > digits.count()) {
        int64_t columns = int64_t{digits.count()} + zeros + sign.columns(locale) + blanks;
        columns += groups.separator_columns(locale, digits.count()) + (prefixed ? 2 : 0);
        pad = pad_count(locale, how.width - columns, how.pad ? how.pad : blank);
    }
    const bool zero_pad = how.pad == value_of(locale, '0');

    if (!zero_pad && how.justification == 0) out.fill(blank, pad);
    sign.put(out);
    out.fill(blank, blanks);
    if (zero_pad) out.fill(how.pad, pad);
    if (prefixed) out.put_ascii(how.has(flag_upper) ? "0X" : "0x", 2);
    out.fill(value_of(locale, '0'), zeros);
    groups.put(out, digits.begin(), digits.count());
    if (!zero_pad && how.justification < 0) out.fill(blank, pad);
}

// The form of a string of the locale in units of this type.
inline const char *units_of(const locale_text &text, char) {
    return text.bytes;
}
inline const vel_wchar *units_of(const locale_text &text, vel_wchar) {
    return text.wide;
}

// A decimal number as it mostly is written: its digits with or without separators, and a sign only
// when it is negative. False when that is not known to do.
template <typename Unit>
[[gnu::hot, gnu::noinline]] bool put_quickly(const vel_locale *locale, char_writer<Unit> &out,
                                             const integer_value &value, bool grouped) {
    static constexpr Unit no_text[4] = {};
    const vel_numeric_conventions &numeric = locale->conventions.numeric;
    using text = short_text<Unit>;
    text sign, separator = {no_text, 0};
    if (!has_ascii_units<Unit>(locale) ||
        !text::make(units_of(numeric.negative_sign, Unit()), sign) ||
        !text::make(units_of(numeric.thousands_sep, Unit()), separator)) {
        return false;
    }
    if (separator.length == 0 || !grouped) {
        separator = {no_text, 0};
    } else if (!has_groups_of_three(numeric.grouping)) {
        return false;
    }
    Unit *begin = out.space(text::longest + thousands_room);
    if (!begin) return false;
    *begin = '-';
    if (sign.length > 0) sign.put(begin);
    const int32_t length = sign.length > 0 ? sign.length : 1;
    out.advance(put_thousands(begin + (value.negative ? length : 0), value.magnitude, separator));
    return true;
}

bool is_plain(const integer_value &value, const directive &how) {
    constexpr uint32_t unusual = flag_plus | flag_space | flag_alternate;
    return value.base == 10 && how.width <= 0 && how.precision <= 1 && !how.has(unusual);
}

bool is_base(int32_t base) {
    return base == 10 || base == 16 || base == 8 || base == 4 || base == 2;
}

} // namespace

template <typename Unit>
void vel_put_integer(vel_locale *locale, char_writer<Unit> &out, const integer_value &value,
                     const directive &how) {
    if (!is_base(value.base)) return out.fail_with(VEL_EBADLEN);
    if (is_plain(value, how) && put_quickly(locale, out, value, how.has(flag_group))) return;
    digit_run digits(value.magnitude, value.base, how.has(flag_upper));
    constexpr uint32_t unusual = flag_group | flag_plus | flag_space | flag_alternate;
    if (!value.negative && !how.has(unusual) && how.precision <= digits.count()) {
        if (how.width <= field_digits && how.pad == value_of(locale, '0')) {
            digits.extend(how.width);
        }
        if (how.width <= digits.count()) {
            return out.put_ascii(digits.begin(), static_cast<size_t>(digits.count()));
        }
    }
    int32_t written = out.written();
    put_field(locale, out, value, digits, how);
    if (out.error() != 0) out.rewind(written);
}

template <typename Unit>
scanned_integer vel_scan_integer(vel_locale *locale, char_reader<Unit> &input, int32_t base,
                                 int32_t most) {
    integer_scan scan = {};
    scan_integer(locale, input, {base, most}, scan);
    return scan.value;
}

template void vel_put_integer<char>(vel_locale *, char_writer<char> &, const integer_value &,
                                    const directive &);
template void vel_put_integer<vel_wchar>(vel_locale *, char_writer<vel_wchar> &,
                                         const integer_value &, const directive &);
template scanned_integer vel_scan_integer<char>(vel_locale *, char_reader<char> &, int32_t,
                                                int32_t);
template scanned_integer vel_scan_integer<vel_wchar>(vel_locale *, char_reader<vel_wchar> &,
                                                     int32_t, int32_t);

} // namespace vel

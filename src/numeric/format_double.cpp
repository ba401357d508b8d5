// The fields of floating numbers.
//
// They are those of C with three digits of exponent, in which signs, point and separators are
// replaced by the locale's; the digits come from our own conversion, for the host's depends on its
// own locale.
#include "numeric/format_double.h"

#include <cmath>

namespace vel {
namespace {

constexpr int32_t default_precision = 6;
constexpr int32_t width_limit = 100;
constexpr int32_t exponent_digits = 3;

struct floating_field {
    fixed_digits number;
    bool has_exponent = false;
    int32_t exponent = 0;
};

void set_fixed(floating_field &field, double value, int32_t precision) {
    decimal_fixed(value, precision, field.number.digits);
    field.number.places = precision;
}

// Makes d.ddd of 0.dddd * 10^point.
void move_point(floating_field &field) {
    decimal &digits = field.number.digits;
    field.has_exponent = true;
    field.exponent = digits.count == 0 ? 0 : digits.point - 1;
    digits.point = 1;
}

int32_t significant(int32_t wanted) {
    return wanted < max_decimal_digits ? wanted : max_decimal_digits;
}

void set_exponent(floating_field &field, double value, int32_t precision) {
    decimal_significant(value, significant(precision) + 1, field.number.digits);
    field.number.places = precision;
    move_point(field);
}

void set_general(floating_field &field, double value, int32_t precision) {
    if (precision == 0) precision = 1;
    decimal &digits = field.number.digits;
    decimal_significant(value, significant(precision), digits);
    int32_t exponent = digits.count == 0 ? 0 : digits.point - 1;
    if (exponent < -4 || exponent >= precision) {
        move_point(field);
        exponent = 0;
    }
    field.number.places = precision - 1 - exponent;
    if (field.number.always_point) return;
    int32_t point = digits.count == 0 ? 0 : digits.point;
    field.number.places = digits.count > point ? digits.count - point : 0;
}

// The sign stands at the right of a field as long as the longer of both signs.
struct sign_field {
    int32_t blanks = 0;
    mark sign;

    sign_field(const vel_locale *locale, bool negative, const directive &how) {
        if (!negative && !how.has(flag_plus | flag_space)) return;
        int32_t of_negative = negative_mark(locale).length();
        int32_t of_positive = positive_mark(locale).length();
        blanks = of_negative > of_positive ? of_negative : of_positive;
        if (!negative && !how.has(flag_plus)) return;
        sign = negative ? negative_mark(locale) : positive_mark(locale);
        blanks -= negative ? of_negative : of_positive;
    }
    int32_t columns(const vel_locale *locale) const { return blanks + sign.columns(locale); }
};

// Of the three digits the first zero is dropped: "e+005" is written "e+05", and "e+100" is "e+10".
// The width of a field counts all three.
template <typename Unit>
void put_exponent(const vel_locale *locale, char_writer<Unit> &out, int32_t exponent, bool upper) {
    out.put_ascii(upper ? 'E' : 'e');
    (exponent < 0 ? negative_mark(locale) : positive_mark(locale)).put(out);
    int32_t magnitude = exponent < 0 ? -exponent : exponent;
    bool dropped = false;
    for (int32_t power = 100; power > 0; power /= 10) {
        char digit = static_cast<char>('0' + magnitude / power % 10);
        if (digit != '0' || dropped) out.put_ascii(digit);
        dropped |= digit == '0';
    }
}

template <typename Unit>
void put_finite(const vel_locale *locale, char_writer<Unit> &out, floating_field &field,
                bool negative, const decimal_style &style, const directive &how) {
    const sign_field sign(locale, negative, how);
    const vel_wchar blank = value_of(locale, ' ');
    int32_t pad = 0;
    if (how.width > 0) {
        int64_t columns = sign.columns(locale) + field.number.columns(locale, style);
        if (field.has_exponent) columns += 2 + exponent_digits;
        pad = pad_count(locale, how.width - columns, blank);
    }
    const bool zero_pad = how.pad == value_of(locale, '0');

    if (!zero_pad && !how.has(flag_left)) out.fill(blank, pad);
    out.fill(blank, sign.blanks);
    sign.sign.put(out);
    if (zero_pad) out.fill(how.pad, pad);
    field.number.put(locale, out, style);
    if (field.has_exponent) put_exponent(locale, out, field.exponent, how.has(flag_upper));
    if (how.has(flag_left)) out.fill(blank, pad);
}

template <typename Unit>
void put_special(const vel_locale *locale, char_writer<Unit> &out, double value,
                 const directive &how) {
    if (std::isinf(value) && value < 0) return out.put_ascii("-Inf", 4);
    const vel_wchar blank = value_of(locale, ' ');
    const int32_t pad = how.width > 3 ? how.width - 3 : 0;
    if (!how.has(flag_left)) out.fill(blank, pad);
    out.put_ascii(std::isnan(value) ? "NaN" : "Inf", 3);
    if (how.has(flag_left)) out.fill(blank, pad);
}

} // namespace

int64_t fixed_digits::columns(const vel_locale *locale, const decimal_style &style) const {
    int64_t columns = int64_t{before_point()} + places;
    columns += style.groups.separator_columns(locale, before_point());
    return has_point() ? columns + style.point.columns(locale) : columns;
}

template <typename Unit>
void fixed_digits::put(const vel_locale *locale, char_writer<Unit> &out,
                       const decimal_style &style) {
    const vel_wchar zero = value_of(locale, '0');
    for (int32_t i = digits.count; i < before_point(); ++i) digits.digits[i] = '0';
    if (digits.point > 0) {
        style.groups.put(out, digits.digits, digits.point);
    } else {
        out.put(zero);
    }
    if (has_point()) style.point.put(out);
    int64_t zeros = digits.point < 0 ? -int64_t{digits.point} : 0;
    if (zeros > places) zeros = places;
    const int32_t first = digits.point > 0 ? digits.point : 0;
    int64_t shown = digits.count - first;
    if (shown > places - zeros) shown = places - zeros;
    if (shown < 0) shown = 0;
    out.fill(zero, static_cast<int32_t>(zeros));
    out.put_ascii(digits.digits + first, static_cast<size_t>(shown));
    out.fill(zero, static_cast<int32_t>(places - zeros - shown));
}

template <typename Unit>
void put_double(const vel_locale *locale, char_writer<Unit> &out, double value, char style,
                const directive &how) {
    if (!std::isfinite(value)) return put_special(locale, out, value, how);
    if (how.width >= width_limit) return out.fail_with(VEL_E2BIG);
    floating_field field;
    field.number.always_point = how.has(flag_alternate);
    const int32_t precision = how.precision < 0 ? default_precision : how.precision;
    const bool grouped = style == 'f' && how.has(flag_group);
    switch (style) {
    case 'e':
        set_exponent(field, value, precision);
        break;
    case 'g':
        set_general(field, value, precision);
        break;
    default:
        set_fixed(field, value, precision);
        break;
    }
    const decimal_style decimals = {grouped ? numeric_groups(locale) : digit_groups(),
                                    point_mark(locale->conventions.numeric.decimal_point)};
    put_finite(locale, out, field, std::signbit(value), decimals, how);
}

template void put_double<char>(const vel_locale *, char_writer<char> &, double, char,
                               const directive &);
template void put_double<vel_wchar>(const vel_locale *, char_writer<vel_wchar> &, double, char,
                                    const directive &);
template void fixed_digits::put<char>(const vel_locale *, char_writer<char> &,
                                      const decimal_style &);
template void fixed_digits::put<vel_wchar>(const vel_locale *, char_writer<vel_wchar> &,
                                           const decimal_style &);

} // namespace vel

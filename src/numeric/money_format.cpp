// The formatting of money: the engine of numbers with the directives and forms of amounts.
#include <cmath>

#include "numeric/directive.h"
#include "numeric/format_loop.h"
#include "numeric/money_form.h"
#include "vels/money.h"

namespace vel {
namespace {

// The digits of an amount and what fills the columns of those that it could have.
struct amount_digits {
    const char *special = nullptr; // in place of digits
    fixed_digits number = {};
    int32_t fill_columns = 0;

    int64_t columns(const vel_locale *locale, const decimal_style &style) const {
        return (special ? 3 : number.columns(locale, style)) + fill_columns;
    }
    template <typename Unit>
    void put(const vel_locale *locale, char_writer<Unit> &out, const decimal_style &style,
             vel_wchar fill) {
        out.fill(fill, pad_count(locale, fill_columns, fill));
        if (special) return out.put_ascii(special, 3);
        number.put(locale, out, style);
    }
};

// The separators of the missing digits are filled too, so that amounts stand below one another.
int32_t fill_columns(const vel_locale *locale, const money_directive &how,
                     const decimal_style &style, int32_t digits) {
    if (how.left_digits <= digits) return 0;
    int64_t columns = int64_t{how.left_digits} - digits;
    const int64_t separators =
        style.groups.separators(how.left_digits) - style.groups.separators(digits);
    if (separators > 0)
        columns += separators * display_columns(locale, style.groups.separator->wide);
    return static_cast<int32_t>(columns < INT32_MAX ? columns : INT32_MAX);
}

void set_digits(const vel_locale *locale, double value, const money_directive &how,
                const decimal_style &style, amount_digits &out) {
    if (!std::isfinite(value)) {
        out.special = std::isnan(value) ? "NaN" : "Inf";
        return;
    }
    out.number.places = money_places(locale, how);
    decimal_fixed(value, out.number.places, out.number.digits);
    out.fill_columns = fill_columns(locale, how, style, out.number.before_point());
}

template <typename Unit>
void put_part(const vel_locale *locale, char_writer<Unit> &out, const money_form &form, char part) {
    switch (part) {
    case '-':
        return form.sign.put(out);
    case ' ':
        return out.put(form.separator);
    case 'S':
        return out.put(form.symbol, form.symbol_length);
    default:
        return out.put(value_of(locale, part));
    }
}

// With a number of digits the sign has its columns in amounts of the other sign too.
int32_t reserved_columns(const vel_locale *locale, const money_directive &how,
                         const money_form &form, amount_sign other) {
    if (how.left_digits < 0) return 0;
    const int32_t columns = form_of(locale, how, other).columns_before(locale);
    const int32_t own = form.columns_before(locale);
    return columns > own ? columns - own : 0;
}

template <typename Unit>
void put_amount(const vel_locale *locale, char_writer<Unit> &out, double value,
                const money_directive &how) {
    const bool negative = std::signbit(value) && !std::isnan(value);
    const amount_sign sign = negative ? amount_sign::negative : amount_sign::positive;
    const amount_sign other = negative ? amount_sign::positive : amount_sign::negative;
    const money_form form = form_of(locale, how, sign);
    const decimal_style style = money_style(locale, how);
    const vel_wchar blank = value_of(locale, ' ');
    amount_digits digits;
    set_digits(locale, value, how, style, digits);

    const int32_t reserved = reserved_columns(locale, how, form, other);
    int64_t columns = digits.columns(locale, style) + reserved;
    for (const char *part = form.parts; *part; ++part) columns += form.columns(locale, *part);
    const int32_t pad = pad_count(locale, how.width - columns, blank);

    out.fill(blank, how.left ? 0 : pad);
    out.fill(blank, reserved);
    for (const char *part = form.parts; *part; ++part) {
        if (*part == 'V') {
            digits.put(locale, out, style, how.fill);
        } else {
            put_part(locale, out, form, *part);
        }
    }
    out.fill(blank, how.left ? pad : 0);
}

template <typename Unit>
int32_t format_money(vel_locale *locale, Unit *buffer, int32_t size, const Unit *format,
                     argument_list &arguments) {
    return format_into(locale, buffer, size, format,
                       [&](char_writer<Unit> &out, const Unit *&text) {
                           money_directive how;
                           char_reader<Unit> at(locale, text);
                           if (read_money_directive(locale, at, how) < 0) return -1;
                           text = at.at();
                           put_amount(locale, out, va_arg(arguments.list, double), how);
                           return 0;
                       });
}

} // namespace
} // namespace vel

using namespace vel;

int32_t vel_wcsfmon(vel_locale *locale, vel_wchar *wide, int32_t limit, const vel_wchar *format,
                    ...) {
    argument_list arguments;
    va_start(arguments.list, format);
    int32_t count = format_money(locale, wide, limit, format, arguments);
    va_end(arguments.list);
    return count;
}

int32_t vel_mbsfmon(vel_locale *locale, char *bytes, int32_t size, const char *format, ...) {
    argument_list arguments;
    va_start(arguments.list, format);
    int32_t count = format_money(locale, bytes, size, format, arguments);
    va_end(arguments.list);
    return count;
}

// The parsing of money: an amount is matched against the forms that formatting could have given it.
#include "numeric/digit_collector.h"
#include "numeric/directive.h"
#include "numeric/money_form.h"
#include "numeric/parse_digits.h"
#include "numeric/parse_loop.h"
#include "vels/money.h"

namespace vel {
namespace {

struct scanned_amount {
    bool found = false;
    bool misgrouped = false;
    bool out_of_range = false;
    double value = 0;
};

template <typename Unit>
bool take_point(const vel_locale *locale, bounded_text<Unit> &at, const mark &point) {
    if (point.own()) return skip_text(at, point.text->wide);
    return skip_ascii(locale, at, '.');
}

// The digits of an amount, behind the characters that fill their place.
template <typename Unit>
scanned_amount take_amount(vel_locale *locale, char_reader<Unit> &at, const money_directive &how) {
    const decimal_style style = money_style(locale, how);
    const bool skips_fill = digit_of(locale, how.fill) < 0;
    while (skips_fill && at.peek() == how.fill) at.next();
    skip_space(locale, at);
    char buffer[max_decimal_digits];
    digit_collector digits(buffer);
    const auto take = [&](int32_t digit) { digits.take(digit); };
    bounded_text<Unit> in(locale, at.at(), INT32_MAX);
    const digits_read whole = read_digits(in, 10, style.groups, take);
    scanned_amount amount;
    amount.misgrouped = whole.misgrouped;
    amount.found = whole.count > 0;
    bounded_text<Unit> behind = in;
    if (money_places(locale, how) > 0 && take_point(locale, behind, style.point)) {
        const int32_t places = read_digits(behind, 10, digit_groups(), take).count;
        digits.add_exponent(-places);
        amount.found |= places > 0;
        if (amount.found) in = behind;
    }
    at = char_reader<Unit>(locale, in.at());
    if (amount.found) amount.value = digits.value(&amount.out_of_range);
    return amount;
}

template <typename Unit> bool take_symbol(char_reader<Unit> &at, const money_form &form) {
    char_reader<Unit> behind = at;
    for (int32_t i = 0; i < form.symbol_length; ++i, behind.next()) {
        if (behind.peek() != form.symbol[i]) return false;
    }
    at = behind;
    return true;
}

template <typename Unit>
bool take_sign(const vel_locale *locale, char_reader<Unit> &at, const mark &sign) {
    if (sign.own() && skip_text(at, sign.text->wide)) return true;
    return sign.otherwise && skip_ascii(locale, at, sign.otherwise);
}

// Steps over a part of a form; false when it is not there, with the reader where it was. Blanks may
// stand before any part.
template <typename Unit>
bool take_part(vel_locale *locale, char_reader<Unit> &input, const money_form &form, char part) {
    char_reader<Unit> at = input;
    skip_space(locale, at);
    bool taken = false;
    switch (part) {
    case 'S':
        taken = take_symbol(at, form);
        break;
    case '-':
        taken = take_sign(locale, at, form.sign);
        break;
    case ' ':
        taken = at.peek() == form.separator;
        if (taken) at.next();
        break;
    default:
        taken = skip_ascii(locale, at, part);
        break;
    }
    if (taken) input = at;
    return taken;
}

// A symbol may be missing, and so may the sign of a positive amount.
template <typename Unit>
scanned_amount take_form(vel_locale *locale, char_reader<Unit> &input, const money_directive &how,
                         amount_sign sign) {
    const money_form form = form_of(locale, how, sign);
    scanned_amount amount;
    char_reader<Unit> at = input;
    for (const char *part = form.parts; *part; ++part) {
        if (*part == 'V') {
            skip_space(locale, at);
            amount = take_amount(locale, at, how);
            if (!amount.found) return amount;
            continue;
        }
        const bool optional = *part == 'S' || *part == ' ' || sign == amount_sign::positive;
        if (!take_part(locale, at, form, *part) && !optional) return {};
    }
    if (sign == amount_sign::negative) amount.value = -amount.value;
    input = at;
    return amount;
}

// Negative amounts are understood as the format has them, in parentheses and with the sign.
template <typename Unit>
scanned_amount take_money(vel_locale *locale, char_reader<Unit> &input,
                          const money_directive &how) {
    money_directive parentheses = how;
    parentheses.parentheses = true;
    money_directive signs = how;
    signs.parentheses = false;
    signs.sign_strings = true;
    const money_directive *const forms[] = {&how, &parentheses, &signs};
    for (const money_directive *form : forms) {
        scanned_amount amount = take_form(locale, input, *form, amount_sign::negative);
        if (amount.found) return amount;
    }
    return take_form(locale, input, how, amount_sign::positive);
}

template <typename Unit>
item read_amount(vel_locale *locale, const Unit *&format, char_reader<Unit> &input,
                 argument_list &arguments) {
    money_directive how;
    char_reader<Unit> directive_text(locale, format);
    if (read_money_directive(locale, directive_text, how) < 0) return item::failed;
    format = directive_text.at();
    skip_space(locale, input);
    const scanned_amount amount = take_money(locale, input, how);
    if (!amount.found) return stop_at(locale, input, VEL_ENOCONV);
    if (amount.misgrouped) return stop(locale, VEL_EINVAL);
    if (amount.out_of_range) return stop(locale, VEL_ENONUM);
    if (how.left && how.width > 0) skip_space(locale, input);
    *va_arg(arguments.list, double *) = amount.value;
    return item::stored;
}

template <typename Unit>
int32_t parse_money(vel_locale *locale, const Unit *input, const Unit *format,
                    argument_list &arguments) {
    return parse_from(locale, input, format,
                      [&](const Unit *&directive_text, char_reader<Unit> &text) {
                          return read_amount(locale, directive_text, text, arguments);
                      });
}

} // namespace
} // namespace vel

using namespace vel;

int32_t vel_wcspmon(vel_locale *locale, const vel_wchar *input, const vel_wchar *format, ...) {
    argument_list arguments;
    va_start(arguments.list, format);
    int32_t count = parse_money(locale, input, format, arguments);
    va_end(arguments.list);
    return count;
}

int32_t vel_mbspmon(vel_locale *locale, const char *input, const char *format, ...) {
    argument_list arguments;
    va_start(arguments.list, format);
    int32_t count = parse_money(locale, input, format, arguments);
    va_end(arguments.list);
    return count;
}

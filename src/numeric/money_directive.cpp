#include "numeric/money_directive.h"

namespace vel {
namespace {

template <typename Unit> char portable_here(vel_locale *locale, const char_reader<Unit> &format) {
    return static_cast<char>(portable_of(locale, format.peek()));
}

// False at a character that is no flag.
template <typename Unit>
bool take_flag(vel_locale *locale, char_reader<Unit> &format, money_directive &out) {
    switch (portable_here(locale, format)) {
    case '=':
        format.next();
        out.fill = format.peek();
        if (out.fill == 0) return false;
        break;
    case '^':
        out.grouped = false;
        break;
    case '+':
        out.signs = true;
        break;
    case '(':
        out.parentheses = true;
        break;
    case '!':
        out.symbol = false;
        break;
    case '-':
        out.left = true;
        break;
    default:
        return false;
    }
    format.next();
    return true;
}

// True without the mark, and with digits behind it.
template <typename Unit>
bool take_digits_behind(vel_locale *locale, char_reader<Unit> &format, char mark, int32_t &out) {
    if (portable_here(locale, format) != mark) return true;
    format.next();
    return read_count(locale, format, out);
}

} // namespace

template <typename Unit>
int32_t read_money_directive(vel_locale *locale, char_reader<Unit> &format, money_directive &out) {
    out.fill = value_of(locale, ' ');
    while (take_flag(locale, format, out)) {
    }
    read_count(locale, format, out.width);
    if (!take_digits_behind(locale, format, '#', out.left_digits) ||
        !take_digits_behind(locale, format, '.', out.right_digits)) {
        return fail(locale, VEL_ENUMFMT);
    }
    const char letter = portable_here(locale, format);
    if (format.peek() == 0) return fail(locale, format.failed() ? VEL_EILSEQ : VEL_EFORMAT);
    if (letter != 'i' && letter != 'n') return fail(locale, VEL_ETIMEFMT);
    if (out.signs && out.parentheses) return fail(locale, VEL_ENUMFMT);
    out.international = letter == 'i';
    format.next();
    return 0;
}

template int32_t read_money_directive<char>(vel_locale *, char_reader<char> &, money_directive &);
template int32_t read_money_directive<vel_wchar>(vel_locale *, char_reader<vel_wchar> &,
                                                 money_directive &);

} // namespace vel

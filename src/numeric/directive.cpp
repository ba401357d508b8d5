#include "numeric/directive.h"

#include "ext/error.h"
#include "numeric/format_digits.h"

namespace vel {
namespace {

uint32_t flag_of(char character) {
    switch (character) {
    case ' ':
        return flag_space;
    case '#':
        return flag_alternate;
    case '\'':
        return flag_group;
    case '+':
        return flag_plus;
    case '-':
        return flag_left;
    case '0':
        return flag_zero;
    default:
        return 0;
    }
}

bool is_letter(char character) {
    uint32_t folded = static_cast<unsigned char>(character) | 0x20u;
    return folded - 'a' < 26;
}

template <typename Unit> char portable_here(vel_locale *locale, const char_reader<Unit> &format) {
    return static_cast<char>(portable_of(locale, format.peek()));
}

// A zero ends the flags, so that the width may begin with one behind "-".
template <typename Unit>
void parse_flags(vel_locale *locale, char_reader<Unit> &format, directive &out) {
    while (uint32_t flag = flag_of(portable_here(locale, format))) {
        format.next();
        if (flag == flag_left) out.flags &= ~flag_zero;
        if (flag != flag_zero || !out.has(flag_left)) out.flags |= flag;
        if (flag == flag_zero) return;
    }
}

template <typename Unit> bool take(vel_locale *locale, char_reader<Unit> &format, char wanted) {
    if (portable_here(locale, format) != wanted) return false;
    format.next();
    return true;
}

template <typename Unit>
void parse_width(vel_locale *locale, char_reader<Unit> &format, directive &out,
                 argument_list *arguments) {
    if (!take(locale, format, '*')) {
        read_count(locale, format, out.width);
        return;
    }
    if (arguments) {
        out.width = va_arg(arguments->list, int);
    } else {
        out.flags |= flag_suppress;
    }
}

template <typename Unit>
bool parse_precision(vel_locale *locale, char_reader<Unit> &format, directive &out,
                     argument_list *arguments) {
    if (!take(locale, format, '.')) return true;
    if (take(locale, format, '*')) {
        if (arguments) out.precision = va_arg(arguments->list, int);
        return true;
    }
    if (read_count(locale, format, out.precision)) return true;
    out.precision = 0;
    return is_letter(portable_here(locale, format));
}

} // namespace

// Arguments have no positions: in "%1$d" the 1 is a width, and "$" belongs to nothing.
template <typename Unit>
int32_t vel_parse_directive(vel_locale *locale, char_reader<Unit> &format, directive &out,
                            argument_list *arguments) {
    if (!is_letter(portable_here(locale, format))) {
        char_reader<Unit> at(locale, format.at());
        parse_flags(locale, at, out);
        parse_width(locale, at, out, arguments);
        if (!parse_precision(locale, at, out, arguments)) return fail(locale, VEL_ENUMFMT);
        format = at;
    }
    if (out.has(flag_left)) out.justification = -1;
    out.pad = value_of(locale, out.has(flag_zero) && !out.has(flag_left) ? '0' : ' ');
    return 0;
}

template int32_t vel_parse_directive<char>(vel_locale *, char_reader<char> &, directive &,
                                           argument_list *);
template int32_t vel_parse_directive<vel_wchar>(vel_locale *, char_reader<vel_wchar> &, directive &,
                                                argument_list *);

} // namespace vel

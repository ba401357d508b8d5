// Reading floating numbers.
#include <bit>

#include "ext/error.h"
#include "ext/host_errno.h"
#include "numeric/digit_collector.h"
#include "numeric/number_text.h"
#include "vels/number.h"

namespace vel {
namespace {

constexpr double no_number = 2147483647.0; // the failure value of multibyte text

// Whether a digit of another script stands here, which nothing can be made of.
template <typename Text> bool at_other_digit(vel_locale *locale, const Text &text) {
    vel_wchar c = text.peek();
    return c != 0 && portable_of(locale, c) == 0 && in_class(locale, c, VEL_CLASS_DIGIT);
}

template <typename Text>
[[gnu::always_inline]] inline bool collect_groups(vel_locale *locale, const number_style &style,
                                                  Text &text, digit_collector &out) {
    grouped_run run = take_grouped(style, text, out);
    if (run.characters == 0 || at_other_digit(locale, text)) return false;
    bool is_refused = run.characters > max_grouped_characters || run.fault == group_fault::missing;
    if (is_refused) set_error(locale, VEL_EINVAL);
    return !is_refused && run.fault == group_fault::none;
}

// False when no integer part stands here.
template <typename Text>
[[gnu::always_inline]] inline bool vel_collect_integer(vel_locale *locale,
                                                       const number_style &style, Text &text,
                                                       bool grouped, digit_collector &out) {
    if (grouped) return collect_groups(locale, style, text, out);
    return take_digits(text, out) > 0;
}

struct exponent_text {
    int64_t value;
    int32_t characters;
};

// An exponent counts only when it has digits.
template <typename Text>
[[gnu::noinline]] exponent_text read_exponent(const vel_locale *locale, Text text) {
    const int32_t begin = text.left();
    text.next();
    bool negative = skip_ascii_sign(locale, text);
    if (text.digit() < 0) return {0, 0};
    constexpr int64_t more_than_any = int64_t{1} << 40; // digits that text can hold
    int64_t value = 0;
    for (int32_t digit; (digit = text.digit()) >= 0; text.next()) {
        if (value < more_than_any) value = value * 10 + digit;
    }
    return {negative ? -value : value, begin - text.left()};
}

template <typename Text>
[[gnu::always_inline]] inline void collect_exponent(const vel_locale *locale, Text &text,
                                                    digit_collector &out) {
    if ((text.portable() | 0x20) != 'e') return;
    exponent_text exponent = read_exponent(locale, text);
    out.add_exponent(exponent.value);
    for (int32_t left = exponent.characters; left > 0; --left) text.next();
}

// The digits behind the decimal point; their number.
template <typename Text>
[[gnu::always_inline]] inline int32_t vel_collect_fraction(vel_locale *locale,
                                                           const number_style &style, Text &text,
                                                           digit_collector &out) {
    if (!vel_match_decimal_point(locale, style, text)) return 0;
    int32_t digits = take_digits(text, out);
    out.add_exponent(-digits);
    return digits;
}

double with_sign(double value, bool negative) {
    return std::bit_cast<double>(std::bit_cast<uint64_t>(value) | uint64_t{negative} << 63);
}

// Steps over a number at `string`.
template <portable_form form, typename Unit>
scanned_double scan_in(vel_locale *locale, const Unit *&string, int32_t most, bool grouped,
                       number_kind kind) {
    const number_style style = style_of(locale, kind);
    bounded_text<Unit, form> at(locale, string, most);
    char buffer[max_decimal_digits];
    digit_collector digits(buffer);
    scanned_double scanned = {};
    bool negative = skip_sign(locale, style, at);
    bool has_whole = at.peek() != first_of_point(locale, style);
    if (has_whole && !vel_collect_integer(locale, style, at, grouped, digits)) return scanned;
    int32_t places = vel_collect_fraction(locale, style, at, digits);
    if (!has_whole && places == 0) {
        set_error(locale, VEL_ENOCONV);
        return scanned;
    }
    collect_exponent(locale, at, digits);
    scanned.value = with_sign(digits.value(&scanned.out_of_range), negative);
    scanned.used = most - at.left();
    string = at.at();
    return scanned;
}

// A number behind white space; `string` is left where it is when there is none.
template <portable_form form, typename Unit>
scanned_double read_in(vel_locale *locale, const Unit *&string, bool grouped, number_kind kind) {
    const Unit *at = skip_white_space<form>(locale, string);
    scanned_double scanned = scan_in<form>(locale, at, INT32_MAX, grouped, kind);
    if (scanned.used) string = at;
    return scanned;
}

template <typename Unit>
scanned_double read_double(vel_locale *locale, const Unit *string, Unit **end, bool grouped,
                           number_kind kind) {
    auto read = has_ascii_units<Unit>(locale) ? read_in<portable_form::ascii, Unit>
                                              : read_in<portable_form::by_table, Unit>;
    scanned_double scanned = read(locale, string, grouped, kind);
    set_host_errno(scanned.out_of_range ? host_error::out_of_range : host_error::none);
    if (end) *end = const_cast<Unit *>(string);
    return scanned;
}

} // namespace

template <typename Unit>
scanned_double scan_double(vel_locale *locale, char_reader<Unit> &text, int32_t most, bool grouped,
                           number_kind kind) {
    auto scan = has_ascii_units<Unit>(locale) ? scan_in<portable_form::ascii, Unit>
                                              : scan_in<portable_form::by_table, Unit>;
    const Unit *at = text.at();
    scanned_double scanned = scan(locale, at, most, grouped, kind);
    if (scanned.used) text = char_reader<Unit>(locale, at);
    return scanned;
}

template scanned_double scan_double(vel_locale *, char_reader<char> &, int32_t, bool, number_kind);
template scanned_double scan_double(vel_locale *, char_reader<vel_wchar> &, int32_t, bool,
                                    number_kind);

} // namespace vel

using namespace vel;

double vel_wcstod_num_mon(vel_locale *locale, const vel_wchar *wide, vel_wchar **end,
                          int32_t grouping, int32_t monetary) {
    number_kind kind = monetary ? number_kind::monetary : number_kind::numeric;
    return read_double(locale, wide, end, grouping != 0, kind).value;
}

double vel_wcstod(vel_locale *locale, const vel_wchar *wide, vel_wchar **end, int32_t grouping) {
    return read_double(locale, wide, end, grouping != 0, number_kind::numeric).value;
}

double vel_mbstod(vel_locale *locale, const char *string, char **end, int32_t grouping) {
    char *stop;
    scanned_double scanned =
        read_double(locale, string, &stop, grouping != 0, number_kind::numeric);
    if (end) *end = stop;
    if (scanned.out_of_range || !is_convertible(locale, string, stop)) {
        set_error(locale, VEL_ENONUM);
        return no_number;
    }
    return scanned.value;
}

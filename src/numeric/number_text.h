// What numbers are written with in a locale, and finding it in text.
#pragma once

#include "charmap/ascii_units.h"
#include "ctype/character_class.h"
#include "numeric/floats.h"
#include "numeric/grouping.h"

namespace vel {

constexpr int32_t max_grouped_characters = 256;

struct number_style {
    const number_marks &marks;
    const vel_grouping &grouping;
    const vel_wchar *positive_sign;
    const vel_wchar *negative_sign;
};

inline number_style style_of(const vel_locale *locale, number_kind kind) {
    const vel_conventions &all = locale->conventions;
    if (kind == number_kind::numeric) {
        return {locale->numeric_marks, all.numeric.grouping, all.numeric.positive_sign.wide,
                all.numeric.negative_sign.wide};
    }
    return {locale->monetary_marks, all.monetary.grouping, all.monetary.positive_sign.wide,
            all.monetary.negative_sign.wide};
}

// How the portable characters of text are told: by the tables of the code set or, where its units
// are known to be ASCII, from the units themselves.
enum class portable_form : bool { by_table, ascii };

// Text that ends after a number of characters. It holds positions only and decodes when asked: the
// loops below copy it often, and then keep it in registers.
template <typename Unit, portable_form form = portable_form::by_table> class bounded_text {
public:
    bounded_text(const vel_locale *locale, const Unit *text, int32_t most)
        : locale_(locale), at_(text), left_(most) {}
    // Copied by its members, not as a block of memory, for the same reason.
    bounded_text(const bounded_text &other)
        : locale_(other.locale_), at_(other.at_), left_(other.left_) {}
    bounded_text &operator=(const bounded_text &other) {
        at_ = other.at_;
        left_ = other.left_;
        return *this;
    }

    vel_wchar peek() const {
        if (left_ <= 0) return 0;
        return is_one_unit() ? unit() : peek_longer(locale_, at_);
    }
    void next() {
        at_ = is_one_unit() ? at_ + 1 : after_longer(locale_, at_);
        --left_;
    }
    // Steps over one unit or none, without a branch: nothing foretells the signs of numbers.
    void next_if(bool is_wanted) {
        at_ += is_wanted;
        left_ -= is_wanted;
    }
    // Whether this sign of one ASCII unit stands here; false when the form does not tell.
    bool is_sign(vel_wchar sign) const {
        if constexpr (!is_ascii) return false;
        return (left_ > 0) & (sign < 0x80) & (sign - '0' > 9) & (unit() == sign);
    }
    // Whether the portable character with this ASCII code stands here.
    bool is(char ascii) const {
        if constexpr (is_ascii) return left_ > 0 && unit() == static_cast<unsigned char>(ascii);
        return peek() == value_of(locale_, ascii);
    }
    // The value of the digit here, -1 for any other character.
    int32_t digit() const {
        if constexpr (!is_ascii) return digit_of(locale_, peek());
        uint32_t value = left_ > 0 ? unit() - '0' : 10;
        return value <= 9 ? static_cast<int32_t>(value) : -1;
    }
    // The ASCII code of the portable character here, 0 for any other.
    unsigned char portable() const {
        vel_wchar value = peek();
        if constexpr (is_ascii) return value < 0x80 ? static_cast<unsigned char>(value) : 0;
        return portable_of(locale_, value);
    }
    const Unit *at() const { return at_; }
    int32_t left() const { return left_; }

private:
    static constexpr bool is_wide = std::is_same_v<Unit, vel_wchar>;
    static constexpr bool is_ascii = form == portable_form::ascii;

    vel_wchar unit() const { return static_cast<std::make_unsigned_t<Unit>>(*at_); }
    bool is_one_unit() const {
        if constexpr (is_wide) return true;
        if constexpr (is_ascii) return unit() < 0x80;
        return is_end(characters_of(locale_).cells()[unit()]);
    }
    // Not members of a position, which would have to be in memory for them.
    [[gnu::noinline]] static vel_wchar peek_longer(const vel_locale *locale, const Unit *at) {
        return char_reader<Unit>(locale, at).peek();
    }
    [[gnu::noinline]] static const Unit *after_longer(const vel_locale *locale, const Unit *at) {
        char_reader<Unit> text(locale, at);
        text.next();
        return text.at();
    }

    const vel_locale *locale_;
    const Unit *at_;
    int32_t left_;
};

// Steps over a string when it stands here and is not empty.
template <typename Text> bool skip_text(Text &text, const vel_wchar *wanted) {
    if (*wanted == 0 || text.peek() != *wanted) return false;
    Text at = text;
    for (; *wanted; ++wanted) {
        if (at.peek() != *wanted) return false;
        at.next();
    }
    text = at;
    return true;
}

// The same for a mark that nearly always is one character.
template <typename Text>
[[gnu::always_inline]] inline bool skip_mark(const vel_wchar *wanted, Text &text) {
    if (text.peek() != *wanted || *wanted == 0) return false;
    if (wanted[1] == 0) {
        text.next();
        return true;
    }
    Text at = text;
    bool is_here = skip_text(at, wanted);
    text = at;
    return is_here;
}

template <typename Text> bool skip_ascii(const vel_locale *locale, Text &text, char wanted) {
    if (text.peek() != value_of(locale, wanted)) return false;
    text.next();
    return true;
}
template <typename Unit, portable_form form>
bool skip_ascii(const vel_locale *, bounded_text<Unit, form> &text, char wanted) {
    if (!text.is(wanted)) return false;
    text.next();
    return true;
}

// A locale without a decimal point, as a null one, would else write and read 1.5 as 15.
inline vel_wchar first_of_point(const vel_locale *locale, const number_style &style) {
    return style.marks.decimal_point_length ? style.marks.decimal_point[0] : value_of(locale, '.');
}

template <typename Text>
bool vel_match_decimal_point(const vel_locale *locale, const number_style &style, Text &text) {
    if (style.marks.decimal_point_length == 0) return skip_ascii(locale, text, '.');
    return skip_mark(style.marks.decimal_point, text);
}

// Steps over an ASCII sign; whether it was "-".
template <typename Text> bool skip_ascii_sign(const vel_locale *locale, Text &text) {
    if (skip_ascii(locale, text, '-')) return true;
    skip_ascii(locale, text, '+');
    return false;
}

template <typename Text>
[[gnu::noinline]] bool skip_any_sign(const vel_locale *locale, const number_style &style,
                                     Text &text) {
    if (skip_text(text, style.negative_sign)) return true;
    if (skip_text(text, style.positive_sign)) return false;
    return skip_ascii_sign(locale, text);
}

// Steps over a sign of the locale or an ASCII one; whether the number is negative. The ASCII signs
// are always understood: a locale may have no sign strings.
template <typename Text>
[[gnu::always_inline]] inline bool skip_sign(const vel_locale *locale, const number_style &style,
                                             Text &text) {
    const vel_wchar *usual = style.negative_sign;
    const bool is_usual = usual[0] != 0 && usual[1] == 0 ? text.is_sign(usual[0]) : false;
    text.next_if(is_usual);
    if (is_usual | (text.digit() >= 0)) return is_usual;
    Text at = text;
    bool negative = skip_any_sign(locale, style, at);
    text = at;
    return negative;
}

// What is wrong with the places of the separators in a run of digits.
enum class group_fault { none, misplaced, missing };

// The digits between the separators of a run, as many as have been seen.
class group_lengths {
public:
    // False when there are more than a grouped number may have.
    bool add(int32_t digits) {
        if (count_ == max_grouped_characters) return false;
        lengths_[count_++] = digits;
        return true;
    }
    // Checks from the end: every complete group needs a separator before it. Nothing is asked of a
    // locale that groups but has no separator: it writes its numbers without one.
    group_fault check(const number_style &style) const {
        group_sizes sizes(style.grouping);
        for (int32_t i = count_ - 1; i >= 0; --i) {
            bool is_first = i == 0;
            int32_t size = style.marks.thousands_sep_length ? sizes.next() : 0;
            if (size > 0 && lengths_[i] > size) return group_fault::missing;
            if (!is_first && lengths_[i] != size) return group_fault::misplaced;
        }
        return group_fault::none;
    }

private:
    int32_t count_ = 0;
    int32_t lengths_[max_grouped_characters];
};

struct grouped_run {
    int32_t characters = 0;
    group_fault fault = group_fault::none;
};

// Takes the digits that stand here, and gives them to a sink:
//   has_room()       whether there is room for one more
//   add(digit)       puts it there
//   add_more(digit)  takes one that there is no room for
// `digits` is a copy of `sink`, whose address nobody has, to stay in registers.
template <typename Text, typename Sink>
[[gnu::always_inline]] inline void take_run(Text &at, Sink &digits, Sink &sink) {
    for (int32_t digit; (digit = at.digit()) >= 0; at.next()) {
        if (digits.has_room()) [[likely]] {
            digits.add(digit);
            continue;
        }
        sink = digits;
        sink.add_more(digit);
        digits = sink;
    }
}

// The same for a run on its own; the number of digits.
template <typename Text, typename Sink>
[[gnu::always_inline]] inline int32_t take_digits(Text &text, Sink &sink) {
    Text at = text;
    Sink digits = sink;
    take_run(at, digits, sink);
    int32_t count = text.left() - at.left();
    text = at;
    sink = digits;
    return count;
}

// Takes the digits and separators that stand here, wherever the separators are.
template <typename Text, typename Sink>
[[gnu::always_inline]] inline grouped_run take_grouped(const number_style &style, Text &text,
                                                       Sink &sink) {
    group_lengths groups;
    Text at = text;
    Sink digits = sink;
    do {
        int32_t before = at.left();
        take_run(at, digits, sink);
        if (!groups.add(before - at.left())) return {INT32_MAX, group_fault::missing};
    } while (skip_mark(style.marks.thousands_sep, at));
    grouped_run run = {text.left() - at.left(), groups.check(style)};
    text = at;
    sink = digits;
    return run;
}

template <typename Unit>
[[gnu::noinline]] const Unit *after_white_space(vel_locale *locale, const Unit *string) {
    char_reader<Unit> text(locale, string);
    skip_class(locale, text, VEL_CLASS_SPACE);
    return text.at();
}

// Where a number may begin in a string.
template <portable_form form, typename Unit>
const Unit *skip_white_space(vel_locale *locale, const Unit *string) {
    if (bounded_text<Unit, form>(locale, string, 1).portable() > ' ') return string;
    return after_white_space(locale, string);
}

// Whether multibyte text behind a number is valid to its end, and whether there is any text at all.
bool is_valid_behind(vel_locale *locale, const char *string, const char *rest);

// Whether multibyte text can hold a number: it is not empty and valid to its end. `rest` is where
// reading has come to. In a single-byte code set every byte counts as valid.
inline bool is_convertible(vel_locale *locale, const char *string, const char *rest) {
    if (*rest == 0 && rest != string && characters_of(locale).shortest == 1) return true;
    return is_valid_behind(locale, string, rest);
}

} // namespace vel

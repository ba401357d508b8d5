// The walk over a time format, which formatting and measuring share.
#pragma once

#include "charmap/ascii_units.h"
#include "ctype/character_class.h"
#include "ext/error.h"
#include "numeric/directive.h"
#include "time/format_table.h"

namespace vel {

// `Target` derives from this and provides
//   put_run(format)           takes what it can of a format in units of ASCII; where it stops
//                             the walk goes on with one character or conversion
//   put_character(value)      a character outside the conversions
//   put_conversion(conversion, directive, in_digits)
// The last two are false after a failure whose number they have stored; the last is never called
// for an unknown conversion or a prefix.
template <typename Unit, typename Target> class format_walk {
public:
    explicit format_walk(vel_locale *locale)
        : locale_(locale), ascii_units_(has_ascii_units<Unit>(locale)) {}

    bool walk(const Unit *format);

protected:
    // Walks a format of the locale that a conversion stands for.
    bool expand(const locale_text &format) { return may_expand() && expand_one(format); }

    // The same in two steps, where one conversion may stand for any of several formats: after the
    // one question each of them is walked as if it were alone.
    bool may_expand();
    bool expand_one(const locale_text &format);

    // What a letter right behind the "%" here stands for, in a format in units of ASCII.
    static const time_conversion &conversion_at(const Unit *at) {
        return plain_conversion(*at == '%' ? static_cast<std::make_unsigned_t<Unit>>(at[1]) : 0);
    }
    bool fails(int32_t number) {
        set_error(locale_, number);
        return false;
    }

    vel_locale *locale_;
    const bool ascii_units_;

private:
    // Formats of a locale may lead into one another without end, or into so many others that no one
    // could wait for the end: what one conversion of the caller's format expands to is limited.
    static constexpr int32_t most_nested = 32;

    using reader = char_reader<Unit>;

    bool put_next(reader &format);
    bool put_directive(reader &format);
    bool take_letter(reader &format, unsigned char &letter);
    bool take_digits(reader &format, const time_conversion &conversion, directive &how);
    Target &target() { return static_cast<Target &>(*this); }

    int32_t depth_ = 0;
    int32_t nested_ = 0; // expansions within that of the caller's conversion
};

template <typename Unit, typename Target> bool format_walk<Unit, Target>::walk(const Unit *at) {
    static constexpr directive plain;
    for (;;) {
        if (ascii_units_) {
            at = target().put_run(at);
            if (*at == 0) return true;
            const time_conversion &alone = conversion_at(at);
            if (alone.stands_alone()) {
                if (!target().put_conversion(alone, plain, false)) return false;
                at += 2;
                continue;
            }
        }
        reader format(locale_, at);
        if (format.peek() == 0) return !format.failed() || fails(VEL_EILSEQ);
        if (!put_next(format)) return false;
        at = format.at();
    }
}

template <typename Unit, typename Target> bool format_walk<Unit, Target>::may_expand() {
    if (depth_ == 0)
        nested_ = 0;
    else if (++nested_ > most_nested)
        return fails(VEL_EFORMAT);
    return true;
}

template <typename Unit, typename Target>
bool format_walk<Unit, Target>::expand_one(const locale_text &format) {
    ++depth_;
    bool is_done = walk(text_of(format, Unit()));
    --depth_;
    return is_done;
}

template <typename Unit, typename Target> bool format_walk<Unit, Target>::put_next(reader &format) {
    vel_wchar value = format.peek();
    format.next();
    if (portable_of(locale_, value) == '%') return put_directive(format);
    return target().put_character(value);
}

template <typename Unit, typename Target>
bool format_walk<Unit, Target>::put_directive(reader &format) {
    directive how;
    if (vel_parse_directive(locale_, format, how, nullptr) != 0) return false;
    unsigned char letter;
    if (!take_letter(format, letter)) return false;

    bool in_era = letter == 'E' && locale_->time.eras.count > 0;
    bool in_digits = false;
    if (letter == 'E' && !take_letter(format, letter)) return false;
    if (letter == 'O' && !in_era) {
        in_digits = locale_->time.alt_digits.count > 0;
        if (!take_letter(format, letter)) return false;
    }
    const time_conversion *conversion =
        in_era ? &era_conversion(letter) : &plain_conversion(letter);
    if (conversion->kind == conversion_kind::prefix && !in_digits) {
        if (!take_letter(format, letter)) return false;
        conversion = &dotted_conversion(letter);
    }
    bool is_known = conversion->kind > conversion_kind::prefix;
    if (!is_known || (in_digits && !conversion->in_digits)) return fails(VEL_ETIMEFMT);
    if (!take_digits(format, *conversion, how)) return false;
    return target().put_conversion(*conversion, how, in_digits);
}

// A letter that is no portable character is 0, which no conversion has.
template <typename Unit, typename Target>
bool format_walk<Unit, Target>::take_letter(reader &format, unsigned char &letter) {
    vel_wchar value = format.peek();
    if (value == 0) return fails(format.failed() ? VEL_EILSEQ : VEL_EFORMAT);
    letter = portable_of(locale_, value);
    format.next();
    return true;
}

// The digit behind a fraction is its precision.
template <typename Unit, typename Target>
bool format_walk<Unit, Target>::take_digits(reader &format, const time_conversion &conversion,
                                            directive &how) {
    bool is_dotted = conversion.kind == conversion_kind::dotted;
    if (!is_dotted && conversion.kind != conversion_kind::fraction) return true;
    int32_t digit = digit_of(locale_, format.peek());
    if (digit < 0 || (digit > 5 && !is_dotted)) return true;
    if (is_dotted && (digit < 1 || digit > 5)) return fails(VEL_ETIMEFMT);
    how.precision = digit;
    format.next();
    return true;
}

} // namespace vel

// The short way to read what most formats consist of: ASCII, and numbers without flags or width. It
// stops before whatever it does not know or find, without a word: the long way takes that up.
#pragma once

#include <type_traits>

#include "time/parse_table.h"

namespace vel {

template <typename Unit> class quick_reader {
public:
    quick_reader(const vel_locale *locale, time_parsed &out) : locale_(locale), out_(out) {}

    // Moves both positions on. Units of both below 0x80 are characters of ASCII.
    [[gnu::always_inline]] void run(const Unit *&format, const Unit *&input) {
        const Unit *wanted = format;
        const Unit *at = input;
        for (;; ++wanted) {
            uint32_t c = value(*wanted);
            if (c == '%') {
                const parse_row &row = plain_parse_row(value(wanted[1]));
                if (row.what != reading::number) break;
                const Unit *behind = read_number(at, *row.rule);
                if (behind == at) break;
                at = behind;
                ++wanted;
            } else if (c - 1 >= 0x7F) {
                break;
            } else if (!is_blank(c)) {
                if (*at != *wanted) break;
                ++at;
            } else {
                if (*at == *wanted) ++at;
                if (value(*at) >= 0x80 || is_blank(value(*at))) break;
            }
        }
        format = wanted;
        input = at;
    }

private:
    static uint32_t value(Unit unit) { return static_cast<std::make_unsigned_t<Unit>>(unit); }
    // Portable characters have their classes in all locales.
    static bool is_blank(uint32_t ascii) { return ascii == ' ' || ascii == '\t'; }

    // Where the text goes on behind a number; where it begins when that is not read here.
    const Unit *read_number(const Unit *text, const number_rule &rule) {
        if (rule.blank || rule.width < 2) return text;
        const Unit *at = text;
        int32_t number = 0;
        for (const Unit *end = at + rule.width; at < end; ++at) {
            uint32_t digit = value(*at) - '0';
            if (digit > 9) break;
            number = number * 10 + static_cast<int32_t>(digit);
        }
        if (at == text || number < rule.low || number > highest_of(locale_, rule)) return text;
        store_number(rule, number, out_);
        return at;
    }

    const vel_locale *locale_;
    time_parsed &out_;
};

} // namespace vel

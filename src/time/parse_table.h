// The conversions of time formats, as parsing reads them.
#pragma once

#include "time/parsed.h"
#include "vels/errors.h"

namespace vel {

// The highest month is that of the locale's list.
constexpr int32_t months_of_locale = -1;

// A number: its range, where it goes, and what it is called when it is wrong.
struct number_rule {
    int32_t time_parsed::*field;
    uint32_t bit;
    uint32_t clears;
    int32_t low, high; // as written
    int32_t adjust;    // added to what is written
    int8_t width;      // the most digits when the format does not say; 0: no limit
    int8_t read_error;
    int8_t range_error;
    hour_kind hours;
    year_kind years;
    bool blank; // formatting puts a blank before a number of one digit
};

inline int32_t highest_of(const vel_locale *locale, const number_rule &rule) {
    return rule.high == months_of_locale ? locale->time.months.count : rule.high;
}

inline void store_number(const number_rule &rule, int32_t value, time_parsed &out) {
    out.*rule.field = value + rule.adjust;
    out.seen = (out.seen & ~rule.clears) | rule.bit;
    if (rule.hours != hour_kind::none) out.hours = rule.hours;
    if (rule.years != year_kind::none) out.years = rule.years;
}

enum class reading : uint8_t {
    unknown,
    number,
    series,   // numbers with signs between them
    expanded, // a format of the locale
    percent,
    weekday,
    month_name,
    am_pm,
    fraction,
    prefix, // "i": the letter behind it decides
    spaces,
    era_name,
    era_full_year,
};

struct parse_row {
    reading what;
    bool in_digits;          // "O" may stand before the letter
    uint8_t error;           // reported in place of whatever is wrong inside; 0: none
    const number_rule *rule; // of a number
    const char *parts;       // of a series: letters of numbers, and the signs between them
    locale_text time_category::*format;
    locale_text era_entry::*name;

    // Whether what it reads is told by its letter alone.
    bool stands_alone() const {
        return what != reading::unknown && what != reading::prefix && what != reading::fraction;
    }
};

struct lettered_row {
    char letter;
    parse_row row;
};
// Positions in a list of rows by letter; the first row is that of an unknown one.
struct row_index {
    uint8_t of[128];
};
extern const lettered_row plain_parse_rows[], era_parse_rows[];
extern const row_index plain_parse_index, era_parse_index;

// By the ASCII code of the letter, and by that of the letter behind "E".
inline const parse_row &plain_parse_row(uint32_t letter) {
    return plain_parse_rows[letter < 128 ? plain_parse_index.of[letter] : 0].row;
}
inline const parse_row &era_parse_row(uint32_t letter) {
    return era_parse_rows[letter < 128 ? era_parse_index.of[letter] : 0].row;
}

} // namespace vel

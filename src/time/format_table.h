// The conversions of time formats: what each letter shows, and which values it takes.
#pragma once

#include "record/record.h"
#include "time/calendar.h"

namespace vel {

// The form of a string of the locale in units of this type.
inline const char *text_of(const locale_text &text, char) {
    return text.bytes;
}
inline const vel_wchar *text_of(const locale_text &text, vel_wchar) {
    return text.wide;
}

enum field_id : uint8_t {
    field_subsecond,
    field_second,
    field_minute,
    field_hour,
    field_day,
    field_month,
    field_year,
    field_weekday,
    field_yearday,
    field_any_year, // not checked
};

// A member of a time, its range, and the error number outside it.
struct time_field {
    int32_t vel_time_work::*member;
    int32_t low;
    int32_t high; // or by_locale
    int32_t error;
};
constexpr int32_t by_locale = -1;
extern const time_field time_fields[];

// The highest value of a field in a locale.
int32_t highest_of(const vel_locale *locale, field_id field);

// What is shown of a field.
enum class number_form : uint8_t {
    as_is,
    from_one,    // counted from 1
    half_day,    // hours, 12 in place of 0
    sunday_last, // 7 in place of 0
    full_year,   // from 1900 on
    century,     // of that
    short_year,  // the year in its century
};
// `value` lies in the range of its field. Never negative: years before 0 have no sign.
inline uint32_t shown_number(number_form form, int32_t value) {
    switch (form) {
    case number_form::as_is:
        break;
    case number_form::from_one:
        return static_cast<uint32_t>(value) + 1;
    case number_form::half_day:
        return static_cast<uint32_t>(value % 12 == 0 ? 12 : value % 12);
    case number_form::sunday_last:
        return static_cast<uint32_t>(value == 0 ? 7 : value);
    case number_form::full_year:
        return static_cast<uint32_t>(value + year_base);
    case number_form::century:
        return static_cast<uint32_t>(value + year_base) / 100;
    case number_form::short_year: {
        int64_t short_year = (int64_t{value} + year_base) % 100;
        return static_cast<uint32_t>(short_year < 0 ? -short_year : short_year);
    }
    }
    return static_cast<uint32_t>(value);
}

struct time_number {
    field_id field;
    number_form form;
    int8_t precision; // when the format gives none; -1: as many digits as there are
    uint8_t full;     // the error number when it does not fit
};

// Numbers with signs between them.
struct number_part {
    time_number number;
    char behind; // 0 for the last
};
struct number_series {
    int32_t count;
    number_part parts[3];
};
extern const number_series series_of_numbers[];

enum class conversion_kind : uint8_t {
    unknown,
    prefix,    // "i": the letter behind it decides
    sign,      // one portable character
    number,    //
    blank_day, // a number with a blank in place of a leading zero
    series,    // numbers
    fraction,  // of a second
    dotted,    // the same behind a dot
    name,      // from a list, by a field
    half_day,  // AM or PM
    expansion, // a format of the locale
    era_name,
    era_other_name,
    era_year,
    era_full_year,
};

struct time_conversion {
    conversion_kind kind;
    char sign;
    uint8_t series;  // index in series_of_numbers
    bool in_digits;  // "O" may stand before the letter
    bool is_of_eras; // of a format: only for dates that belong to an era
    time_number number;
    text_list time_category::*list;
    locale_text time_category::*expanded;

    // Whether what it shows is told by its letter alone.
    bool stands_alone() const {
        return kind > conversion_kind::prefix && kind != conversion_kind::fraction;
    }
};

struct lettered_conversion {
    char letter;
    time_conversion conversion;
};
extern const lettered_conversion plain_conversions[];
struct row_numbers {
    uint8_t of[128];
};
extern const row_numbers plain_rows;

// By the ASCII code of the letter. An unknown letter gives an unknown conversion.
inline const time_conversion &plain_conversion(uint32_t letter) {
    return plain_conversions[letter < 128 ? plain_rows.of[letter] : 0].conversion;
}
// By the letter behind "E" and behind "i".
const time_conversion &era_conversion(uint32_t letter);
const time_conversion &dotted_conversion(uint32_t letter);

} // namespace vel

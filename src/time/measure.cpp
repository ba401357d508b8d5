#include "time/measure.h"

#include "charmap/character.h"
#include "numeric/digits.h"
#include "numeric/format_digits.h"
#include "time/calendar.h"
#include "time/era.h"
#include "time/format_walk.h"
#include "time/name_fit.h"

namespace vel {
namespace {

struct length {
    int64_t characters = 0;
    int64_t bytes = 0;

    void add(const length &other) {
        characters += other.characters;
        bytes += other.bytes;
    }
    void widen(const length &other) {
        if (other.characters > characters) characters = other.characters;
        if (other.bytes > bytes) bytes = other.bytes;
    }
};

uint32_t greater(uint32_t a, uint32_t b) {
    return a > b ? a : b;
}

template <typename Unit> class measurer : public format_walk<Unit, measurer<Unit>> {
    using base = format_walk<Unit, measurer<Unit>>;

public:
    explicit measurer(vel_locale *locale) : base(locale), table_(characters_of(locale)) {}

    const length &sum() const { return sum_; }

    const Unit *put_run(const Unit *format) const { return format; }
    bool put_character(vel_wchar value) { return add({1, table_.code_bytes(value)}); }
    bool put_conversion(const time_conversion &conversion, const directive &how, bool in_digits);

private:
    bool add(const length &longest) {
        sum_.add(longest);
        bool fits = sum_.characters <= INT32_MAX && sum_.bytes <= INT32_MAX;
        return fits || this->fails(VEL_E2BIG);
    }

    // Portable characters, which are the shortest of the code set.
    length portable(int64_t count) const { return {count, count * table_.shortest}; }
    length padded(length text, int32_t columns, const directive &how) const {
        if (how.width > columns) text.add(portable(how.width - columns));
        return text;
    }

    length of_value(uint32_t value, const directive &how, int32_t precision) const;
    length of_sign(const directive &how) const;
    length of_number(const time_number &number, const directive &how, bool in_digits) const;
    length of_series(const number_series &series, const directive &how, bool in_digits) const;
    length of_fraction(const time_number &number, const directive &how, int32_t signs) const;
    length of_name(const locale_text &name, const directive &how, int32_t most_columns) const;
    length of_list(const text_list &names, const directive &how, int32_t most_columns) const;
    length of_half_days(const directive &how) const;
    length of_eras(const time_conversion &conversion, const directive &how) const;
    uint32_t greatest_shown(const time_number &number) const;
    bool add_full_years(const time_conversion &conversion, const directive &how);

    const sealed_table &table_;
    length sum_;
    bool in_full_year_ = false;
};

template <typename Unit>
bool measurer<Unit>::put_conversion(const time_conversion &conversion, const directive &how,
                                    bool in_digits) {
    switch (conversion.kind) {
    case conversion_kind::sign:
        return add(portable(1));
    case conversion_kind::number:
    case conversion_kind::blank_day:
        // With its blank a day of one digit is as long as one of two.
        return add(of_number(conversion.number, how, in_digits));
    case conversion_kind::series:
        return add(of_series(series_of_numbers[conversion.series], how, in_digits));
    case conversion_kind::fraction:
        return add(of_fraction(conversion.number, how, 0));
    case conversion_kind::dotted:
        return add(of_fraction(conversion.number, how, 1));
    case conversion_kind::name:
        return add(of_list(this->locale_->time.*conversion.list, how, how.precision));
    case conversion_kind::half_day:
        return add(of_half_days(how));
    case conversion_kind::expansion:
        return this->expand(this->locale_->time.*conversion.expanded);
    case conversion_kind::era_full_year:
        return add_full_years(conversion, how);
    default:
        return add(of_eras(conversion, how));
    }
}

template <typename Unit>
length measurer<Unit>::of_value(uint32_t value, const directive &how, int32_t precision) const {
    if (how.precision >= 0) precision = how.precision;
    int32_t digits = digit_count(value);
    int32_t zeros = precision > digits ? precision - digits : 0;
    length text = portable(int64_t{digits} + zeros);
    length signs = of_sign(how);
    if (how.has(flag_group)) {
        const digit_groups groups = numeric_groups(this->locale_);
        for (int32_t i = groups.separators(digits); i > 0; --i) {
            signs.add(of_name(*groups.separator, {}, 0));
        }
    }
    text.add(signs);
    int64_t missing = how.width - text.characters;
    if (missing > 0) text.add(portable(missing));
    return text;
}

// What "+" and the blank put before a number.
template <typename Unit> length measurer<Unit>::of_sign(const directive &how) const {
    if (!how.has(flag_plus | flag_space)) return {};
    const mark sign = positive_mark(this->locale_);
    return sign.own() ? of_name(*sign.text, {}, 0) : portable(1);
}

// The greatest value has the most digits, but for the short year: 1900 shows fewer than 1999.
template <typename Unit> uint32_t measurer<Unit>::greatest_shown(const time_number &number) const {
    switch (number.form) {
    case number_form::short_year:
        return 99;
    case number_form::half_day:
        return 12;
    case number_form::sunday_last:
        return 7;
    default:
        return shown_number(number.form, highest_of(this->locale_, number.field));
    }
}

template <typename Unit>
length measurer<Unit>::of_number(const time_number &number, const directive &how,
                                 bool in_digits) const {
    length longest = of_value(greatest_shown(number), how, number.precision);
    if (in_digits) longest.widen(of_list(this->locale_->time.alt_digits, how, 0));
    return longest;
}

template <typename Unit>
length measurer<Unit>::of_series(const number_series &series, const directive &how,
                                 bool in_digits) const {
    length text = portable(series.count - 1);
    for (int32_t i = 0; i < series.count; ++i) {
        text.add(of_number(series.parts[i].number, how, in_digits));
    }
    return text;
}

template <typename Unit>
length measurer<Unit>::of_fraction(const time_number &number, const directive &how,
                                   int32_t signs) const {
    int64_t digits = how.precision >= 0 ? how.precision : number.precision;
    int64_t text = digits + signs;
    return portable(how.width > text ? how.width : text);
}

template <typename Unit>
length measurer<Unit>::of_name(const locale_text &name, const directive &how,
                               int32_t most_columns) const {
    fitted_name fit = fit_name(this->locale_, name.wide, most_columns);
    length text;
    for (int32_t i = 0; i < fit.count; ++i) text.add({1, table_.code_bytes(name.wide[i])});
    // A whole name is written as its bytes are, even where they are no text of the code set.
    int64_t as_read = most_columns > 0 ? 0 : static_cast<int64_t>(strlen(name.bytes));
    if (text.bytes < as_read) text.bytes = as_read;
    return padded(text, fit.columns, how);
}

template <typename Unit>
length measurer<Unit>::of_list(const text_list &names, const directive &how,
                               int32_t most_columns) const {
    length longest;
    for (int32_t i = 0; i < names.count; ++i) {
        longest.widen(of_name(names.items[i], how, most_columns));
    }
    return longest;
}

template <typename Unit> length measurer<Unit>::of_half_days(const directive &how) const {
    const time_category &time = this->locale_->time;
    length longest = of_name(time.am, how, how.precision);
    longest.widen(of_name(time.pm, how, how.precision));
    return longest;
}

template <typename Unit>
length measurer<Unit>::of_eras(const time_conversion &conversion, const directive &how) const {
    const time_field &years = time_fields[field_year];
    const time_derived &derived = this->locale_->time_derived;
    length longest;
    for (int32_t i = 0; i < derived.era_count; ++i) {
        const era_entry &era = derived.eras[i];
        if (conversion.kind != conversion_kind::era_year) {
            bool is_name = conversion.kind == conversion_kind::era_name;
            longest.widen(of_name(is_name ? era.name : era.other_name, how, how.precision));
            continue;
        }
        // Years of an era run one way, so that its ends show the greatest.
        int32_t first = era.first.year, last = era.last.year;
        if (first < years.low + year_base) first = years.low + year_base;
        if (last > years.high + year_base) last = years.high + year_base;
        uint32_t year = greater(shown_year(era, first), shown_year(era, last));
        longest.widen(of_value(year, how, -1));
    }
    return longest;
}

// The eras' own formats, each with what it leads to, and the plain year of an era without one.
template <typename Unit>
bool measurer<Unit>::add_full_years(const time_conversion &conversion, const directive &how) {
    if (in_full_year_) return this->fails(VEL_EFORMAT);
    if (!this->may_expand()) return false;
    in_full_year_ = true;
    const time_derived &derived = this->locale_->time_derived;
    length before = sum_, longest = before;
    bool is_done = true;
    for (int32_t i = 0; is_done && i < derived.era_count; ++i) {
        const locale_text &format = derived.eras[i].format;
        sum_ = before;
        is_done = format.wide[0] ? this->expand_one(format)
                                 : add(of_number(conversion.number, how, false));
        longest.widen(sum_);
    }
    sum_ = longest;
    in_full_year_ = false;
    return is_done;
}

template <typename Unit>
int32_t measure(vel_locale *locale, const Unit *format, format_extent &out) {
    if (!format) return fail(locale, VEL_EFORMAT);
    measurer<Unit> measuring(locale);
    if (!measuring.walk(format)) return -1;
    out = {static_cast<int32_t>(measuring.sum().characters),
           static_cast<int32_t>(measuring.sum().bytes)};
    return 0;
}

} // namespace

int32_t measure_time_format(vel_locale *locale, const char *format, format_extent &out) {
    return measure(locale, format, out);
}

int32_t measure_time_format(vel_locale *locale, const vel_wchar *format, format_extent &out) {
    return measure(locale, format, out);
}

} // namespace vel

// Writing dates and times, straight into the caller's buffer.
#include "charmap/char_writer.h"
#include "numeric/integer_field.h"
#include "time/calendar.h"
#include "time/era.h"
#include "time/format_quick.h"
#include "time/format_walk.h"
#include "time/name_fit.h"
#include "time/work.h"

namespace vel {
namespace {

// A buffer to which others write as well, through a char_writer each.
template <typename Unit> struct open_buffer {
    Unit *at;
    Unit *end; // room for the terminator follows

    int32_t room() const { return static_cast<int32_t>(end - at); }
};

// Whether the text of names can be copied: its bytes are known to be text of the code set.
template <typename Unit> bool copies_names(const vel_locale *locale) {
    if constexpr (std::is_same_v<Unit, vel_wchar>) return true;
    table_shape shape = characters_of(locale).shape;
    return shape == table_shape::utf8 || shape == table_shape::single_byte;
}

template <typename Unit> class formatter : public format_walk<Unit, formatter<Unit>> {
    using base = format_walk<Unit, formatter<Unit>>;

public:
    // `given` is the caller's Gregorian date, `time` the same in the locale's calendar.
    formatter(vel_locale *locale, const vel_time_work &given, const vel_time_work &time,
              open_buffer<Unit> out)
        : base(locale), given_(given), time_(time), out_(out),
          quick_(locale, time, copies_names<Unit>(locale)) {}

    Unit *at() const { return out_.at; }

    const Unit *put_run(const Unit *format) {
        quick_.run(format, out_.at, out_.end);
        return format;
    }
    bool put_character(vel_wchar value) {
        if (this->ascii_units_ && value < 0x80 && out_.at != out_.end) {
            *out_.at++ = static_cast<Unit>(value);
            return true;
        }
        return write([&](char_writer<Unit> &out) { out.put(value); });
    }
    bool put_conversion(const time_conversion &conversion, const directive &how, bool in_digits);

private:
    // Lets `put` write with a char_writer.
    template <typename Put> bool write(Put put, int32_t full = VEL_E2BIG) {
        char_writer<Unit> out(this->locale_, out_.at, out_.room());
        put(out);
        out_.at += out.written();
        if (out.error() == 0) return true;
        return this->fails(out.error() == VEL_E2BIG ? full : out.error());
    }

    bool has_field(field_id id, int32_t &value) const {
        const time_field &field = time_fields[id];
        value = time_.*field.member;
        int32_t high = field.high == by_locale ? highest_of(this->locale_, id) : field.high;
        return value >= field.low && value <= high;
    }
    bool is_in_range(field_id id, int32_t &value) {
        return has_field(id, value) || this->fails(time_fields[id].error);
    }

    const locale_text *listed(const time_conversion &conversion) const;

    bool put_number(const time_number &number, const directive &how, bool in_digits);
    bool put_blank_day(const time_number &number, const directive &how, bool in_digits);
    bool put_series(const number_series &series, const directive &how, bool in_digits);
    bool put_value(uint32_t value, const directive &how, int32_t precision, int32_t full);
    bool put_fraction(const time_number &number, const directive &how, bool is_dotted);
    bool put_listed(const time_conversion &conversion, const directive &how);
    bool put_half_day(const time_number &number, const directive &how);
    bool put_name(const locale_text &name, const directive &how, int32_t most_columns);
    bool put_era(const time_conversion &conversion, const directive &how);
    const era_entry *find_era();
    const locale_text *own_digits(uint32_t value) const {
        const text_list &digits = this->locale_->time.alt_digits;
        return value < static_cast<uint32_t>(digits.count) ? &digits.items[value] : nullptr;
    }

    const vel_time_work &given_;
    const vel_time_work &time_;
    open_buffer<Unit> out_;
    const quick_writer<Unit> quick_;
};

template <typename Unit>
bool formatter<Unit>::put_conversion(const time_conversion &conversion, const directive &how,
                                     bool in_digits) {
    switch (conversion.kind) {
    case conversion_kind::number:
        return put_number(conversion.number, how, in_digits);
    case conversion_kind::name:
        return put_listed(conversion, how);
    case conversion_kind::sign:
        return put_character(value_of(this->locale_, conversion.sign));
    case conversion_kind::blank_day:
        return put_blank_day(conversion.number, how, in_digits);
    case conversion_kind::series:
        return put_series(series_of_numbers[conversion.series], how, in_digits);
    case conversion_kind::fraction:
        return put_fraction(conversion.number, how, false);
    case conversion_kind::dotted:
        return put_fraction(conversion.number, how, true);
    case conversion_kind::half_day:
        return put_half_day(conversion.number, how);
    case conversion_kind::expansion:
        if (conversion.is_of_eras && !find_era()) return false;
        return this->expand(this->locale_->time.*conversion.expanded);
    default:
        return put_era(conversion, how);
    }
}

// The name that a conversion shows; null when the date has none in the list. Months are in range by
// their number and named by their position.
template <typename Unit>
const locale_text *formatter<Unit>::listed(const time_conversion &conversion) const {
    const text_list &names = this->locale_->time.*conversion.list;
    field_id field = conversion.number.field;
    int32_t index = time_.*time_fields[field].member;
    if (index < 0 || index >= names.count) return nullptr;
    if (field == field_month) index = time_.month_name;
    return index >= 0 && index < names.count ? &names.items[index] : nullptr;
}

template <typename Unit>
bool formatter<Unit>::put_number(const time_number &number, const directive &how, bool in_digits) {
    int32_t value;
    if (!is_in_range(number.field, value)) return false;
    uint32_t shown = shown_number(number.form, value);
    const locale_text *own = in_digits ? own_digits(shown) : nullptr;
    if (own) return put_name(*own, how, 0);
    return put_value(shown, how, number.precision, number.full);
}

// The blank stands for a digit. A width pads with blanks itself, and a digit of the locale's own
// takes the place of blank and digit.
template <typename Unit>
bool formatter<Unit>::put_blank_day(const time_number &number, const directive &how,
                                    bool in_digits) {
    int32_t day;
    if (!is_in_range(number.field, day)) return false;
    bool is_short = day < 10 && how.precision < 2 && how.width < 2;
    if (is_short && !(in_digits && own_digits(static_cast<uint32_t>(day)))) {
        if (!put_character(value_of(this->locale_, ' '))) return false;
    }
    return put_number(number, how, in_digits);
}

template <typename Unit>
bool formatter<Unit>::put_series(const number_series &series, const directive &how,
                                 bool in_digits) {
    for (int32_t i = 0; i < series.count; ++i) {
        const number_part &part = series.parts[i];
        if (!put_number(part.number, how, in_digits)) return false;
        if (part.behind && !put_character(value_of(this->locale_, part.behind))) return false;
    }
    return true;
}

template <typename Unit>
bool formatter<Unit>::put_value(uint32_t value, const directive &how, int32_t precision,
                                int32_t full) {
    if (how.precision >= 0) precision = how.precision;
    int32_t count = precision == 2 || value > 9 ? 2 : 1;
    bool is_short = value <= 99 && precision <= 2 && how.flags == 0 && how.width <= count;
    if (is_short && this->ascii_units_ && out_.room() >= 2) {
        Unit digits[2];
        put_pair(digits, value);
        if (count == 2) *out_.at++ = digits[0];
        *out_.at++ = digits[1];
        return true;
    }
    directive precise = how;
    precise.precision = precision;
    return write(
        [&](char_writer<Unit> &out) {
            vel_put_integer(this->locale_, out, {value, false, 10}, precise);
        },
        full);
}

// Six digits of which the first ones are shown, with zeros behind them when more are asked for.
template <typename Unit>
bool formatter<Unit>::put_fraction(const time_number &number, const directive &how,
                                   bool is_dotted) {
    constexpr int32_t known_digits = 6;
    int32_t value;
    if (!is_in_range(number.field, value)) return false;
    char digits[known_digits];
    for (int32_t i = known_digits; i-- > 0; value /= 10) {
        digits[i] = static_cast<char>('0' + value % 10);
    }
    int32_t count = how.precision >= 0 ? how.precision : number.precision;
    int32_t known = count < known_digits ? count : known_digits;
    int32_t padding = how.width - is_dotted - count;
    bool is_left = how.has(flag_left);
    return write([&](char_writer<Unit> &out) {
        if (!is_left) out.fill(how.pad, padding);
        if (is_dotted) out.put_ascii('.');
        out.put_ascii(digits, static_cast<size_t>(known));
        out.fill(value_of(this->locale_, '0'), count - known);
        if (is_left) out.fill(how.pad, padding);
    });
}

template <typename Unit>
bool formatter<Unit>::put_listed(const time_conversion &conversion, const directive &how) {
    const locale_text *name = listed(conversion);
    if (!name) return this->fails(time_fields[conversion.number.field].error);
    return put_name(*name, how, how.precision);
}

template <typename Unit>
bool formatter<Unit>::put_half_day(const time_number &number, const directive &how) {
    int32_t hour;
    if (!is_in_range(number.field, hour)) return false;
    const time_category &time = this->locale_->time;
    return put_name(hour < 12 ? time.am : time.pm, how, how.precision);
}

template <typename Unit>
bool formatter<Unit>::put_name(const locale_text &name, const directive &how,
                               int32_t most_columns) {
    if (how.width <= 0 && most_columns <= 0) [[likely]] {
        return write([&](char_writer<Unit> &out) { out.put(name); });
    }
    fitted_name fit = fit_name(this->locale_, name.wide, most_columns);
    bool is_left = how.has(flag_left);
    return write([&](char_writer<Unit> &out) {
        if (!is_left) out.fill(how.pad, how.width - fit.columns);
        out.put(name.wide, fit.count);
        if (is_left) out.fill(how.pad, how.width - fit.columns);
    });
}

// The era of the date, null after a failure.
template <typename Unit> const era_entry *formatter<Unit>::find_era() {
    int32_t year, month, day;
    bool is_date = is_in_range(field_year, year) && is_in_range(field_month, month) &&
                   is_in_range(field_day, day);
    if (!is_date) return nullptr;
    const era_entry *era =
        vel_find_era(this->locale_, given_.year + year_base, given_.month + 1, given_.day);
    if (!era) this->fails(VEL_EBADLEN);
    return era;
}

template <typename Unit>
bool formatter<Unit>::put_era(const time_conversion &conversion, const directive &how) {
    const era_entry *era = find_era();
    if (!era) return false;
    switch (conversion.kind) {
    case conversion_kind::era_name:
        return put_name(era->name, how, how.precision);
    case conversion_kind::era_other_name:
        return put_name(era->other_name, how, how.precision);
    case conversion_kind::era_year:
        return put_value(shown_year(*era, given_.year + year_base), how, -1, VEL_E2BIG);
    default:
        if (era->format.wide[0]) return this->expand(era->format);
        return put_number(conversion.number, how, false);
    }
}

// `room` is what the buffer has without the terminator. The units written, or -1.
template <typename Unit>
int32_t vel_ftime_core(vel_locale *locale, Unit *buffer, int32_t room, const Unit *format,
                       const vel_time_record &time) {
    vel_time_work given = work_of(time);
    if (room < 0) return fail(locale, VEL_E2BIG);
    vel_time_work local;
    bool is_gregorian = locale->time.calendar <= calendar_gregorian;
    if (!is_gregorian && vel_cal_gregorian_to_local(locale, &given, &local) != 0) return -1;
    formatter<Unit> out(locale, given, is_gregorian ? given : local, {buffer, buffer + room});
    return out.walk(format) ? static_cast<int32_t>(out.at() - buffer) : -1;
}

} // namespace
} // namespace vel

using namespace vel;

int32_t vel_mbsftime(vel_locale *locale, char *buffer, int32_t size, const char *format,
                     const vel_time_record *time) {
    if (!format) return fail_zero(locale, VEL_EFORMAT);
    if (!buffer || !time) return fail_zero(locale, VEL_EFAULT);
    const sealed_table &table = characters_of(locale);
    int32_t room = size < 0 ? -1 : size - table.shortest;
    int32_t written = vel_ftime_core(locale, buffer, room, format, *time);
    if (written < 0) return 0;
    put_terminator(table, as_bytes(buffer + written));
    return written;
}

int32_t vel_wcsftime(vel_locale *locale, vel_wchar *buffer, int32_t size, const vel_wchar *format,
                     const vel_time_record *time) {
    if (!format) return fail_zero(locale, VEL_EFORMAT);
    if (!buffer || !time) return fail_zero(locale, VEL_EFAULT);
    int32_t room = size < 0 ? -1 : size - 1;
    int32_t written = vel_ftime_core(locale, buffer, room, format, *time);
    if (written < 0) return 0;
    buffer[written] = 0;
    return written;
}

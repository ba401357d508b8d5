#include "time/resolve.h"

#include "ext/error.h"
#include "time/calendar.h"
#include "time/era.h"
#include "time/work.h"
#include "vels/time.h"

namespace vel {
namespace {

constexpr int32_t lowest_year = -1900; // since 1900
constexpr int32_t highest_year = 8099;
constexpr int32_t february = 1;

constexpr uint32_t seen_any_date = seen_day | seen_any_month | seen_any_year;

// The length of a month, from 0, of a year in full.
int32_t month_length(int32_t month, int32_t year) {
    constexpr int32_t lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return lengths[month] + (month == february && vel_is_leap_year(year));
}

class resolver {
public:
    resolver(vel_locale *locale, const time_parsed &parsed, const century_rule &rule,
             const vel_time_record &record)
        : locale_(locale), parsed_(parsed), rule_(rule), seen_(parsed.seen),
          work_(work_of(record)) {}

    bool run() {
        if (!is_gregorian() && has(seen_any_date) && !begin_local()) return false;
        take_fields();
        take_hour();
        take_month();
        if (!take_year()) return false;
        if (!is_gregorian() && has(seen_any_date) && !end_local()) return false;
        return !is_whole_date() || check_date();
    }
    vel_time_record record() const { return record_of(work_); }

private:
    bool has(uint32_t bits) const { return seen_ & bits; }
    bool has_full_year() const {
        return has(seen_year | seen_era_year) || (has(seen_century) && has(seen_short_year));
    }
    bool is_whole_date() const { return has(seen_day) && has(seen_any_month) && has_full_year(); }
    bool is_gregorian() const { return locale_->time.calendar <= calendar_gregorian; }
    bool fails(int32_t number) {
        set_error(locale_, number);
        return false;
    }

    bool begin_local();
    bool end_local();
    void take_fields();
    void take_hour();
    void take_month();
    bool take_year();
    bool take_short_year();
    bool take_era_year();
    bool check_date();
    bool contradicts(int32_t weekday) const;

    vel_locale *locale_;
    const time_parsed &parsed_;
    const century_rule &rule_;
    uint32_t seen_;
    vel_time_work work_;
};

// What was not read of the date comes from the caller's, which is Gregorian as the result is; one
// that the calendar does not reach serves only where nothing is missing.
bool resolver::begin_local() {
    int32_t error = get_error(locale_);
    vel_time_work local;
    if (vel_cal_gregorian_to_local(locale_, &work_, &local) == 0) {
        work_ = local;
        return true;
    }
    if (!has(seen_day) || !has(seen_any_month) || !has(seen_any_year)) return false;
    set_error(locale_, error);
    return true;
}

// A day beyond the end of its month would become one of the next.
bool resolver::end_local() {
    int32_t day = work_.day;
    vel_time_work back;
    if (vel_cal_local_to_gregorian(locale_, &work_, &work_) != 0) return false;
    if (vel_cal_gregorian_to_local(locale_, &work_, &back) != 0) return false;
    return back.day == day || fails(VEL_ETIME27);
}

void resolver::take_fields() {
    if (has(seen_subsecond)) work_.subsecond = parsed_.subsecond;
    if (has(seen_second)) work_.second = parsed_.second;
    if (has(seen_minute)) work_.minute = parsed_.minute;
    if (has(seen_day)) work_.day = parsed_.day;
    if (has(seen_weekday)) work_.weekday = parsed_.weekday;
    if (has(seen_yearday)) work_.yearday = parsed_.yearday;
}

void resolver::take_hour() {
    bool of_12 = parsed_.hours == hour_kind::of_12 && has(seen_hour12);
    if (of_12 && has(seen_am_pm)) {
        work_.hour = parsed_.hour12 % 12 + 12 * parsed_.am_pm;
    } else if (of_12) {
        work_.hour = parsed_.hour12;
    } else if (has(seen_hour)) {
        work_.hour = parsed_.hour;
    }
}

// In other calendars the position of a name says the month only together with the year: what was
// not read is -1 for the conversion to find out.
void resolver::take_month() {
    constexpr int32_t unknown = -1;
    if (has(seen_month)) {
        work_.month = parsed_.month;
        work_.month_name = is_gregorian() ? parsed_.month : unknown;
    } else if (has(seen_month_name)) {
        work_.month_name = parsed_.month_name;
        work_.month = is_gregorian() ? parsed_.month_name : unknown;
    }
}

// A year in full outranks its parts, whichever of them was read later.
bool resolver::take_year() {
    if (parsed_.years == year_kind::era && has(seen_era_year)) return take_era_year();
    seen_ &= ~seen_era_year;
    if (has(seen_year)) {
        work_.year = parsed_.year;
    } else if (has(seen_short_year)) {
        return take_short_year();
    } else if (has(seen_century)) {
        work_.year = parsed_.century * 100 - year_base;
    }
    return true;
}

bool resolver::take_short_year() {
    int32_t century = parsed_.century;
    if (!has(seen_century)) {
        int32_t month = has(seen_month) ? parsed_.month : parsed_.month_name;
        century = vel_getcentury_internal(
            locale_, static_cast<uint16_t>(has(seen_any_month) ? month + 1 : 1),
            static_cast<uint16_t>(has(seen_day) ? parsed_.day : 1),
            static_cast<uint16_t>(parsed_.short_year), rule_.reference.month, rule_.reference.day,
            rule_.reference.year, rule_.letter);
        if (century < 0) return false;
        seen_ |= seen_century;
    }
    work_.year = century * 100 + parsed_.short_year - year_base;
    return true;
}

// Of the eras with the name that was read, or of all, the first that holds the date; if none does,
// the first that holds its year, since people go on counting until they hear of a new era.
bool resolver::take_era_year() {
    const time_derived &derived = locale_->time_derived;
    bool has_day = has(seen_any_month) && has(seen_day);
    int32_t month = (has(seen_month) ? parsed_.month : parsed_.month_name) + 1;
    int64_t found = INT64_MIN;
    for (int32_t i = 0; i < derived.era_count; ++i) {
        const era_entry &era = derived.eras[i];
        if (parsed_.era && !same_text(era.*parsed_.era_name, parsed_.era->*parsed_.era_name)) {
            continue;
        }
        int64_t year =
            era.start_year + (int64_t{parsed_.era_year} - era.offset) * int64_t{era.direction};
        if (year < era.first.year || year > era.last.year) continue;
        bool holds_date = has_day && holds(era, {static_cast<int32_t>(year), month, parsed_.day});
        if (found == INT64_MIN || holds_date) found = year;
        if (holds_date) break;
    }
    if (found < lowest_year + year_base || found > highest_year + year_base) {
        return fails(VEL_ETIME31);
    }
    work_.year = static_cast<int32_t>(found) - year_base;
    return true;
}

// Whether a weekday that was read is another one. In some locales two have one abbreviation.
bool resolver::contradicts(int32_t weekday) const {
    if (!has(seen_weekday) || parsed_.weekday == weekday) return false;
    const text_list *names = parsed_.weekday_names;
    return !names || !same_text(names->items[weekday], names->items[parsed_.weekday]);
}

// The day of the year is set one higher than formatting takes it, 1 for 1 January: programs that
// read it count on that. Conversions from other calendars fill it, and the weekday, by themselves.
bool resolver::check_date() {
    if (work_.year < lowest_year || work_.year > highest_year) return fails(VEL_ETIME31);
    if (work_.month < 0 || work_.month >= 12 || work_.month >= locale_->time.months.count) {
        return fails(VEL_ETIME30);
    }
    int32_t year = work_.year + year_base;
    if (work_.day < 1 || work_.day > month_length(work_.month, year)) return fails(VEL_ETIME27);
    if (!is_gregorian()) return true;
    int32_t weekday = (weekday_of(work_.day, work_.month, year) + 7) % 7;
    if (contradicts(weekday)) return fails(VEL_ETIME38);
    work_.weekday = weekday;
    if (!has(seen_yearday)) work_.yearday = day_of_year(work_.day, work_.month, year) + 1;
    return true;
}

} // namespace

int32_t vel_ptime_resolve(vel_locale *locale, const time_parsed &parsed, const century_rule &rule,
                          vel_time_record &record) {
    resolver made(locale, parsed, rule, record);
    if (!made.run()) return -1;
    record = made.record();
    return 0;
}

} // namespace vel

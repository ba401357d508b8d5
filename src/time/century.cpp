// The century of a two-digit year, by its distance from a reference date.
#include "ext/error.h"
#include "record/record.h"
#include "time/calendar.h"

namespace vel {
namespace {

// The date that counts as the current one in place of the host's.
struct set_date {
    bool is_set;
    vel_date date;
} current;

constexpr int32_t hebrew_century = 57;
constexpr int32_t islamic_century = 14;

// 0, or an error number.
int32_t current_date(vel_date &date) {
    if (current.is_set) {
        date = current.date;
        return 0;
    }
    return _vel_ext_currdate(&date) == 0 ? 0 : VEL_EINVAL;
}

// 0, or the number of what is wrong with month and day; the length of the month is not looked at.
int32_t check(const vel_date &date) {
    if (date.month < 1 || date.month > 12) return VEL_ETIME30;
    return date.day < 1 || date.day > 31 ? VEL_ETIME27 : 0;
}

// The day with this month and day in a year, which may be down to -400: a whole cycle of the
// calendar is added, so that divisions are of positive numbers.
int32_t day_in(const vel_date &date, int32_t year) {
    return day_number(date.day, date.month - 1, year + 400);
}

struct century_question {
    vel_date asked; // its year has two digits
    vel_date reference;
    int32_t century() const { return reference.year / 100; }
    // Days from the reference date to the date in a century.
    int32_t distance(int32_t century) const {
        return day_in(asked, 100 * century + asked.year) - day_in(reference, reference.year);
    }
};

uint32_t magnitude(int32_t days) {
    return static_cast<uint32_t>(days < 0 ? -days : days);
}

int32_t closest_century(const century_question &question) {
    int32_t own = question.century();
    uint32_t here = magnitude(question.distance(own));
    uint32_t before = magnitude(question.distance(own - 1));
    uint32_t after = magnitude(question.distance(own + 1));
    if (here < before) return here >= after ? own + 1 : own;
    return before >= after ? own + 1 : own - 1;
}

int32_t century_by_rule(const century_question &question, int32_t rule) {
    int32_t own = question.century();
    switch (rule) {
    case 'C':
        return closest_century(question);
    case 'F':
        return question.distance(own) > 0 ? own : own + 1;
    case 'P':
        return question.distance(own) < 0 ? own : own - 1;
    default:
        return own;
    }
}

} // namespace
} // namespace vel

using namespace vel;

int32_t vel_getcentury_internal(vel_locale *locale, uint16_t month, uint16_t day, uint16_t year,
                                uint16_t reference_month, uint16_t reference_day,
                                uint16_t reference_year, int32_t rule) {
    if (locale->time.calendar > calendar_gregorian) {
        return vel_alt_getcentury(locale, month, day, year, rule);
    }
    if (year > 99) return year / 100;

    century_question question = {{month, day, year},
                                 {reference_month, reference_day, reference_year}};
    vel_date &reference = question.reference;
    if (!reference.month || !reference.day || !reference.year) {
        int32_t error = current_date(reference);
        if (error != 0) return fail(locale, error);
    }
    if (!month) question.asked.month = reference.month;
    if (!day) question.asked.day = reference.day;
    for (const vel_date *date : {&reference, &question.asked}) {
        int32_t error = check(*date);
        if (error != 0) return fail(locale, error);
    }
    int32_t century = century_by_rule(question, rule);
    return century < 0 ? fail(locale, VEL_ETIME31) : century;
}

int32_t vel_getcentury(vel_locale *locale, uint16_t month, uint16_t day, uint16_t year,
                       int32_t rule) {
    return vel_getcentury_internal(locale, month, day, year, 0, 0, 0, rule);
}

int32_t vel_alt_getcentury(vel_locale *locale, uint16_t, uint16_t, uint16_t, int32_t) {
    if (locale->time.calendar == calendar_hebrew) return hebrew_century;
    return locale->time.calendar == calendar_islamic ? islamic_century : 0;
}

int32_t vel_set_current_time(uint16_t day, uint16_t month, uint16_t year) {
    current = {true, {month, day, year}};
    return 0;
}

int32_t vel_reset_time() {
    current = {};
    return 0;
}

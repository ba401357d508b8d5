// The TIME section: the calendar line, then strings and lists of strings.
//
// Contract. A category that this reader accepts keeps these promises to later code: the calendar is
// one of the four; there are seven names of days in both forms; every list holds as many strings as
// its count says, and no string is null. Lists and strings grow as they arrive; the work is linear
// in the length of the file.
#include "locale/readers.h"
#include "record/texts.h"
#include "vels/errors.h"

namespace vel {
namespace {

constexpr int32_t calendar_line_size = 32;
constexpr int32_t days_in_week = 7;

struct calendar_name {
    const char *line;
    calendar_number number;
};
constexpr calendar_name calendar_names[] = {
    {"gregorian\n", calendar_gregorian},
    {"hebrew\n", calendar_hebrew},
    {"islamic\n", calendar_islamic},
    {"arabic\n", calendar_arabic},
};

bool read_calendar(section &in, int32_t *calendar) {
    char line[calendar_line_size];
    if (in.stream.gets(line, sizeof line)) {
        for (const calendar_name &known : calendar_names) {
            *calendar = known.number;
            if (strcmp(line, known.line) == 0) return true;
        }
    }
    *calendar = calendar_none;
    return in.refuse(VEL_ECALENDAR);
}

// One step of the section, in file order: a string, or a list whose count is fixed or in the file.
struct time_step {
    locale_text time_category::*text;
    text_list time_category::*list;
    int32_t count; // 0: in the file
};
constexpr time_step steps[] = {
    {nullptr, &time_category::abbreviated_days, days_in_week},
    {nullptr, &time_category::days, days_in_week},
    {nullptr, &time_category::abbreviated_months, 0},
    {nullptr, &time_category::months, 0},
    {&time_category::d_t_fmt, nullptr, 0},
    {&time_category::d_fmt, nullptr, 0},
    {&time_category::t_fmt, nullptr, 0},
    {&time_category::am, nullptr, 0},
    {&time_category::pm, nullptr, 0},
    {&time_category::t_fmt_ampm, nullptr, 0},
    {nullptr, &time_category::eras, 0},
    {&time_category::era_d_fmt, nullptr, 0},
    {&time_category::era_t_fmt, nullptr, 0},
    {&time_category::era_d_t_fmt, nullptr, 0},
    {nullptr, &time_category::alt_digits, 0},
};

// Whatever is wrong with a string of this section has one number.
bool unreadable_text(section &in) {
    in.error = VEL_ENOMEM;
    return false;
}

bool read_list(section &in, text_list &list, int32_t count) {
    if (count == 0 && !in.number(&count)) return false;
    return in.list(list, count) || unreadable_text(in);
}

bool read_step(section &in, time_category &time, const time_step &step) {
    if (step.list) return read_list(in, time.*step.list, step.count);
    return in.text(time.*step.text) || unreadable_text(in);
}

} // namespace

bool read_time(section &in, vel_locale *locale) {
    if (!read_calendar(in, &locale->time.calendar)) return false;
    for (const time_step &step : steps) {
        if (!read_step(in, locale->time, step)) return false;
    }
    return true;
}

} // namespace vel

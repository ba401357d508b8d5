// Locales of the pack, and times to format.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <memory>
#include <string>

#include "record/record.h"
#include "vels/errors.h"
#include "vels/locale.h"
#include "vels/time.h"

namespace vel_test {

struct unload {
    void operator()(vel_locale *locale) const { vel_lc_unload(locale); }
};
using locale_owner = std::unique_ptr<vel_locale, unload>;

inline locale_owner open_locale(const char *specification) {
    unsetenv("VEL_PATH");
    setenv("CORVANEDIR", VELS_TEST_DATA_ROOT, 1);
    vel_locale *locale = nullptr;
    EXPECT_EQ(vel_lc_load(&locale, specification, -1, nullptr), 0) << specification;
    return locale_owner(locale);
}

// The error number that a call has left, which is then forgotten.
inline int32_t take_error(vel_locale *locale) {
    int32_t *cell = _vel_ext_errno(locale);
    int32_t number = *cell;
    *cell = 0;
    return number;
}

// A locale of the pack taken into another calendar for the time of a test.
class in_calendar {
public:
    in_calendar(vel_locale *locale, int32_t calendar)
        : locale_(locale), before_(locale->time.calendar) {
        locale->time.calendar = calendar;
    }
    ~in_calendar() { locale_->time.calendar = before_; }

private:
    vel_locale *locale_;
    int32_t before_;
};

inline vel_time_record time_at(std::chrono::sys_days date, int32_t hour = 0, int32_t minute = 0,
                               int32_t second = 0, int32_t subsecond = 0) {
    using namespace std::chrono;
    const year_month_day parts(date);
    const sys_days new_year(parts.year() / January / 1);
    return {subsecond,
            second,
            minute,
            hour,
            static_cast<int32_t>(static_cast<unsigned>(parts.day())),
            static_cast<int32_t>(static_cast<unsigned>(parts.month())) - 1,
            static_cast<int>(parts.year()) - 1900,
            static_cast<int32_t>(weekday(date).c_encoding()),
            static_cast<int32_t>((date - new_year).count()),
            0,
            {0, 0}};
}

inline vel_time_record time_of(int year, unsigned month, unsigned day, int32_t hour = 0,
                               int32_t minute = 0, int32_t second = 0, int32_t subsecond = 0) {
    const std::chrono::year_month_day date{std::chrono::year(year), std::chrono::month(month),
                                           std::chrono::day(day)};
    return time_at(std::chrono::sys_days(date), hour, minute, second, subsecond);
}

} // namespace vel_test

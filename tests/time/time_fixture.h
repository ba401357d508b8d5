// Locales of the pack, and times to format.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include "record/portable.h"
#include "record/record.h"
#include "support/pack.h"
#include "vels/errors.h"
#include "vels/time.h"

namespace vel_test {

using locale_owner = loaded_locale;

inline locale_owner open_locale(const char *specification) {
    locale_owner owner = load_from_pack(specification);
    EXPECT_TRUE(owner) << specification;
    return owner;
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

// The objects of the pack, by the names that load them.
inline std::vector<std::string> objects_of_pack() {
    namespace fs = std::filesystem;
    std::vector<std::string> names;
    const fs::path root = fs::path(VELS_TEST_DATA_ROOT) / "vels" / "lc11";
    for (const auto &entry : fs::recursive_directory_iterator(root)) {
        if (!entry.is_regular_file()) continue;
        names.push_back(fs::relative(entry.path(), root).generic_string());
        std::replace(names.back().begin(), names.back().end(), '/', '\\');
    }
    EXPECT_GT(names.size(), 100u);
    return names;
}

// ASCII text in the code set of a locale.
inline std::string in_code_set(const vel_locale *locale, std::string text) {
    for (char &c : text)
        if (static_cast<unsigned char>(c) < 0x80) c = static_cast<char>(vel::value_of(locale, c));
    return text;
}

// A text of a locale made by hand.
inline vel::locale_text text_of(const char *bytes, const char32_t *wide) {
    return {const_cast<char *>(bytes), reinterpret_cast<vel_wchar *>(const_cast<char32_t *>(wide))};
}

inline vel_time_record time_at(std::chrono::sys_days date, int32_t hour = 0, int32_t minute = 0,
                               int32_t second = 0, int32_t subsecond = 0) {
    using namespace std::chrono;
    const year_month_day parts(date);
    const sys_days new_year(parts.year() / January / 1);
    const auto number = [](auto of) { return static_cast<int32_t>(static_cast<unsigned>(of)); };
    return {subsecond,
            second,
            minute,
            hour,
            number(parts.day()),
            number(parts.month()) - 1,
            static_cast<int>(parts.year()) - 1900,
            number(weekday(date).c_encoding()),
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

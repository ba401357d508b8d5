// The calendars, and the century of a two-digit year.
#include "time/time_fixture.h"

#include <cstring>
#include <span>

#include "time/work.h"

namespace {

using namespace vel_test;
using namespace std::chrono;

class calendar : public testing::Test {
protected:
    locale_owner owner = open_locale("c.utf-8");
    vel_locale *locale = owner.get();

    vel_time_work local(const vel_time_work &gregorian) {
        vel_time_work result;
        EXPECT_EQ(vel_cal_gregorian_to_local(locale, &gregorian, &result), 0);
        return result;
    }
    // What a conversion fails with, or 0.
    template <typename Convert> int32_t error_of(Convert convert, const vel_time_work &from) {
        vel_time_work result, zero{};
        memset(&result, 1, sizeof result);
        if (convert(locale, &from, &result) == 0) return 0;
        EXPECT_EQ(memcmp(&result, &zero, sizeof zero), 0);
        return take_error(locale);
    }
};

vel_time_work work(int year, unsigned month, unsigned day) {
    return vel::work_of(time_of(year, month, day, 13, 5, 9, 77));
}
vel_time_work local_date(int32_t year, int32_t month, int32_t name, int32_t day) {
    vel_time_work date{};
    date.year = year - 1900;
    date.month = month;
    date.month_name = name;
    date.day = day;
    return date;
}
auto members(const vel_time_work &of) {
    return std::tuple(of.subsecond, of.second, of.minute, of.hour, of.day, of.month, of.month_name,
                      of.year, of.weekday, of.yearday, of.daylight);
}

// Every day there and back, with days that follow one another.
TEST_F(calendar, every_day_converts_and_converts_back) {
    const struct {
        int32_t number;
        sys_days first;
    } calendars[] = {{vel::calendar_hebrew, year(1) / January / 1},
                     {vel::calendar_islamic, year(622) / July / 18}};
    for (const auto &[number, first] : calendars) {
        in_calendar use(locale, number);
        vel_time_work before = local(vel::work_of(time_at(first)));
        for (sys_days day = first + days(1); day < sys_days(year(2400) / January / 1);
             day += days(1)) {
            const vel_time_work given = vel::work_of(time_at(day, 7, 8, 9, 10));
            const vel_time_work there = local(given);
            const bool same_year = there.year == before.year;
            const bool same_month = same_year && there.month == before.month;
            ASSERT_TRUE(same_year || there.year == before.year + 1) << given.year;
            ASSERT_EQ(there.yearday, same_year ? before.yearday + 1 : 0) << given.year;
            ASSERT_EQ(there.day, same_month ? before.day + 1 : 1) << given.year;
            ASSERT_TRUE(same_month || before.day == 29 || before.day == 30) << given.year;
            ASSERT_EQ(there.weekday, given.weekday);
            vel_time_work back;
            ASSERT_EQ(vel_cal_local_to_gregorian(locale, &there, &back), 0);
            ASSERT_EQ(members(back), members(given));
            vel_time_work by_name = there;
            by_name.month = -1;
            ASSERT_EQ(vel_cal_local_to_gregorian(locale, &by_name, &back), 0);
            ASSERT_EQ(members(back), members(given));
            before = there;
        }
    }
}

struct known_date {
    int year;
    unsigned month, day;
    int32_t local_year, local_month, name, local_day;
};

TEST_F(calendar, published_dates) {
    const known_date hebrew[] = {{1999, 9, 11, 5760, 0, 0, 1},   {1948, 5, 14, 5708, 8, 7, 5},
                                 {2016, 10, 3, 5777, 0, 0, 1},   {2024, 2, 10, 5784, 5, 12, 1},
                                 {2024, 3, 24, 5784, 6, 13, 14}, {2024, 4, 23, 5784, 7, 6, 15},
                                 {2025, 3, 14, 5785, 5, 5, 14},  {2024, 12, 26, 5785, 2, 2, 25}};
    const known_date islamic[] = {{622, 7, 18, 1, 0, 0, 1},
                                  {1882, 11, 11, 1300, 0, 0, 1},
                                  {2013, 11, 4, 1435, 0, 0, 1},
                                  {2076, 11, 27, 1500, 0, 0, 1}};
    const auto check = [&](int32_t number, const auto &dates) {
        in_calendar use(locale, number);
        for (const known_date &date : dates) {
            const vel_time_work got = local(work(date.year, date.month, date.day));
            EXPECT_EQ(std::tuple(got.year + 1900, got.month, got.month_name, got.day),
                      std::tuple(date.local_year, date.local_month, date.name, date.local_day))
                << date.year << '-' << date.month << '-' << date.day;
        }
    };
    check(vel::calendar_hebrew, hebrew);
    check(vel::calendar_islamic, islamic);
}

TEST_F(calendar, dates_without_a_counterpart) {
    constexpr int32_t huge = INT32_MAX, tiny = INT32_MIN;
    const auto to_local = vel_cal_gregorian_to_local;
    const auto to_gregorian = vel_cal_local_to_gregorian;
    constexpr int32_t gregorian = vel::calendar_gregorian, hebrew = vel::calendar_hebrew,
                      islamic = vel::calendar_islamic, arabic = vel::calendar_arabic;
    struct row {
        int32_t number;
        bool is_to_local;
        int32_t year, month, name, day, error;
    };
    const row short_rows[] = {
        {hebrew, true, 1, 0, 0, 1, 0},        {hebrew, true, 0, 11, 0, 31, 31},
        {islamic, false, 1, 0, 0, 0, 27},     {hebrew, true, 10000, 1, 0, 23, 0},
        {hebrew, true, 2000, 12, 0, 1, 30},   {hebrew, false, 3761, 3, 3, 18, 0},
        {hebrew, false, 5784, 12, 0, 1, 0},   {islamic, true, 622, 6, 0, 17, 31},
        {hebrew, true, 10000, 1, 0, 24, 31},  {hebrew, false, 3761, 3, 3, 17, 31},
        {hebrew, false, 14214, 0, 0, 1, 31},  {hebrew, false, 5785, 12, 0, 1, 30},
        {hebrew, false, 5784, 13, 0, 1, 30},  {islamic, true, 10323, 9, 0, 20, 0},
        {hebrew, true, 2000, 0, 0, huge, 27}, {hebrew, false, 5785, -1, 12, 1, 30},
        {hebrew, false, 5784, -1, 14, 1, 30}, {hebrew, false, 5784, -1, -1, 1, 30},
        {islamic, true, 10323, 9, 0, 21, 31}, {islamic, false, 9999, 11, 0, 29, 0},
        {islamic, false, 10000, 0, 0, 1, 31}};
    const row long_rows[] = {{islamic, false, 1445, -1, tiny, 1, 30},
                             {arabic, true, 2000, 0, 0, 1, VEL_ECALENDAR},
                             {arabic, false, 2000, 0, 0, 1, VEL_ECALENDAR},
                             {gregorian, false, 2000, huge, tiny, huge, 0}};
    const auto check = [&](std::span<const row> rows) {
        for (const row &each : rows) {
            in_calendar use(locale, each.number);
            const vel_time_work date = local_date(each.year, each.month, each.name, each.day);
            EXPECT_EQ(error_of(each.is_to_local ? to_local : to_gregorian, date), each.error)
                << each.year << '-' << each.month << '-' << each.day;
        }
    };
    check(short_rows);
    check(long_rows);
    for (int32_t number : {hebrew, islamic}) {
        in_calendar use(locale, number);
        for (int32_t year : {huge, tiny, huge - 1900, 0}) {
            for (int32_t field : {huge, tiny}) {
                vel_time_work date = local_date(2000, field, field, field);
                date.year = year;
                EXPECT_NE(error_of(to_local, date), 0);
                EXPECT_NE(error_of(to_gregorian, date), 0);
            }
        }
    }
}

TEST_F(calendar, century_of_a_short_year) {
    const struct {
        uint16_t month, day, year;
        vel_date reference; // month, day, year
        char rule;
        int32_t century;
    } rows[] = {{0, 0, 99, {6, 1, 2001}, 'C', 19},  {0, 0, 1, {6, 1, 2001}, 'F', 21},
                {0, 0, 1, {6, 1, 2001}, 'P', 19},   {6, 2, 1, {6, 1, 2001}, 'F', 20},
                {5, 31, 1, {6, 1, 2001}, 'P', 20},  {6, 1, 51, {6, 1, 2001}, 'C', 20},
                {6, 2, 51, {6, 1, 2001}, 'C', 19},  {1, 1, 20, {6, 1, 1999}, 'C', 20},
                {1, 1, 20, {6, 1, 1999}, 'R', 19},  {1, 1, 20, {6, 1, 1999}, 'x', 19},
                {13, 32, 123, {0, 0, 0}, 'C', 1},   {2, 29, 0, {3, 1, 1900}, 'F', 20},
                {2, 29, 0, {2, 28, 1900}, 'F', 19}, {13, 1, 1, {6, 1, 2001}, 'C', -30},
                {1, 32, 1, {6, 1, 2001}, 'C', -27}, {1, 1, 1, {13, 1, 2001}, 'C', -30},
                {9, 9, 99, {6, 1, 7}, 'P', -31},    {1, 1, 99, {6, 1, 65535}, 'F', 655}};
    for (const auto &row : rows) {
        const int32_t century =
            vel_getcentury_internal(locale, row.month, row.day, row.year, row.reference.month,
                                    row.reference.day, row.reference.year, row.rule);
        const int32_t wanted = row.century < 0 ? -1 : row.century;
        EXPECT_EQ(century, wanted) << row.year << ' ' << row.rule;
        if (row.century < 0) {
            EXPECT_EQ(take_error(locale), -row.century) << row.year;
            continue;
        }
        if (row.year > 99) continue;
        vel_set_current_time(row.reference.day, row.reference.month, row.reference.year);
        EXPECT_EQ(vel_getcentury(locale, row.month, row.day, row.year, row.rule), wanted);
        vel_reset_time();
    }
    const int32_t now =
        static_cast<int32_t>(year_month_day(floor<days>(system_clock::now())).year());
    EXPECT_EQ(vel_getcentury(locale, 1, 1, 1, 'R'), now / 100);

    const std::pair<int32_t, int32_t> calendars[] = {{vel::calendar_hebrew, 57},
                                                     {vel::calendar_islamic, 14}};
    for (auto [number, century] : calendars) {
        in_calendar use(locale, number);
        EXPECT_EQ(vel_getcentury(locale, 1, 1, 99, 'C'), century);
        EXPECT_EQ(vel_alt_getcentury(locale, 1, 1, 99, 'C'), century);
    }
    EXPECT_EQ(vel_alt_getcentury(locale, 1, 1, 99, 'C'), 0);
}

} // namespace

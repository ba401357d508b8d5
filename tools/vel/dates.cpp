#include "vel/dates.h"

#include <charconv>
#include <chrono>
#include <ctime>
#include <string_view>

#include <fmt/format.h>

#include "vel/failure.h"

namespace vel_tool {
namespace {

using namespace std::chrono;

constexpr int first_year = 1900; // of the year field
constexpr year_month_day earliest{year{0}, January, day{1}};
constexpr year_month_day latest{year{9999}, December, day{31}};
constexpr int64_t seconds_a_day = 24 * 60 * 60;
constexpr size_t fraction_digits = 6;

vel_time_record record_at(year_month_day date, int64_t second_of_day, int32_t microseconds) {
    sys_days at = date;
    vel_time_record record{};
    record.subsecond = microseconds;
    record.second = static_cast<int32_t>(second_of_day % 60);
    record.minute = static_cast<int32_t>(second_of_day / 60 % 60);
    record.hour = static_cast<int32_t>(second_of_day / 3600);
    record.day = static_cast<int32_t>(static_cast<unsigned>(date.day()));
    record.month = static_cast<int32_t>(static_cast<unsigned>(date.month())) - 1;
    record.year = static_cast<int>(date.year()) - first_year;
    record.weekday = static_cast<int32_t>(weekday{at}.c_encoding());
    record.yearday = static_cast<int32_t>((at - sys_days{date.year() / January / 1}).count());
    return record;
}

// Takes digits and signs from the front of a text.
class scanner {
public:
    explicit scanner(std::string_view text) : rest_(text) {}

    bool at_end() const { return rest_.empty(); }

    bool take(char c) {
        if (rest_.empty() || rest_[0] != c) return false;
        rest_.remove_prefix(1);
        return true;
    }

    // Exactly `count` digits.
    bool number(size_t count, int &value) {
        if (rest_.size() < count) return false;
        const char *end = rest_.data() + count;
        if (rest_[0] == '-' || std::from_chars(rest_.data(), end, value).ptr != end) return false;
        rest_.remove_prefix(count);
        return true;
    }

    // One to six digits behind a decimal point, as microseconds.
    bool fraction(int &microseconds) {
        size_t count = std::min(rest_.find_first_not_of("0123456789"), rest_.size());
        if (count > fraction_digits || !number(count, microseconds) || count == 0) return false;
        for (; count < fraction_digits; ++count) microseconds *= 10;
        return true;
    }

private:
    std::string_view rest_;
};

bool read_iso(const std::string &when, vel_time_record &record) {
    scanner text(when);
    int y = 0, m = 0, d = 0, hour = 0, minute = 0, second = 0, microseconds = 0;
    bool good = text.number(4, y) && text.take('-') && text.number(2, m) && text.take('-') &&
                text.number(2, d);
    if (good && (text.take('T') || text.take(' '))) {
        good = text.number(2, hour) && text.take(':') && text.number(2, minute);
        if (good && text.take(':')) {
            good = text.number(2, second) && (!text.take('.') || text.fraction(microseconds));
        }
    }
    year_month_day date{year{y}, month{static_cast<unsigned>(m)}, day{static_cast<unsigned>(d)}};
    if (!good || !text.at_end() || !date.ok() || hour > 23 || minute > 59 || second > 59) {
        return false;
    }
    record = record_at(date, (hour * 60 + minute) * 60 + second, microseconds);
    return true;
}

bool read_seconds(const std::string &when, vel_time_record &record) {
    if (when.empty() || when[0] != '@') return false;
    const char *end = when.data() + when.size();
    int64_t seconds = 0;
    auto [stop, error] = std::from_chars(when.data() + 1, end, seconds);
    if (stop != end || error != std::errc()) return false;
    constexpr int64_t least = sys_days{earliest}.time_since_epoch().count() * seconds_a_day;
    constexpr int64_t most = (sys_days{latest}.time_since_epoch().count() + 1) * seconds_a_day - 1;
    if (seconds < least || seconds > most) return false;
    sys_days at = floor<days>(sys_seconds{std::chrono::seconds{seconds}});
    record = record_at(at, seconds - at.time_since_epoch().count() * seconds_a_day, 0);
    return true;
}

vel_time_record now() {
    timespec clock{};
    clock_gettime(CLOCK_REALTIME, &clock);
    tm local{};
    localtime_r(&clock.tv_sec, &local);
    year_month_day date{year{local.tm_year + first_year},
                        month{static_cast<unsigned>(local.tm_mon + 1)},
                        day{static_cast<unsigned>(local.tm_mday)}};
    int second = std::min(local.tm_sec, 59); // a leap second has no place in the record
    return record_at(date, (local.tm_hour * 60 + local.tm_min) * 60 + second,
                     static_cast<int32_t>(clock.tv_nsec / 1000));
}

} // namespace

vel_time_record record_of(const std::string &when) {
    if (when == "now") return now();
    vel_time_record record{};
    if (read_iso(when, record) || read_seconds(when, record)) return record;
    throw failure(fmt::format("'{}' is no date: write 2026-11-21, 2026-11-21T13:00:05, @1763730005 "
                              "or now, from year 0 to 9999",
                              when));
}

vel_time_record midnight_of(vel_time_record record) {
    record.subsecond = record.second = record.minute = record.hour = 0;
    return record;
}

std::string iso_text(const vel_time_record &record) {
    std::string text =
        fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}", record.year + first_year,
                    record.month + 1, record.day, record.hour, record.minute, record.second);
    if (record.subsecond) text += fmt::format(".{:06}", record.subsecond);
    return text;
}

} // namespace vel_tool

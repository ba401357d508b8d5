// Rows about dates in the text of a locale, in both directions.
#include "our_locale.h"
#include "value_work.h"
#include "values.h"
#include "walk.h"

#include <ctime>

#ifdef BENCH_WITH_ICU
#include <unicode/udat.h>
#endif

#include "vels/locale.h"
#include "vels/time.h"

namespace bench {
namespace {

constexpr std::size_t room = 256;

constexpr const char *locale_name = "de_DE";
constexpr const char *full_date = "%A, %d. %B %Y %H:%M:%S";

// A date in each of the forms in which the libraries take it.
struct date {
    std::time_t seconds;
    std::tm fields;
    vel_time_record record;
    std::string text;
    std::u16string units;
};

vel_time_record record_of(const std::tm &from) {
    vel_time_record record = {};
    record.second = from.tm_sec;
    record.minute = from.tm_min;
    record.hour = from.tm_hour;
    record.day = from.tm_mday;
    record.month = from.tm_mon;
    record.year = from.tm_year;
    record.weekday = from.tm_wday;
    record.yearday = from.tm_yday;
    return record;
}

std::size_t write_by_host(const date &from, locale_t locale) {
    return strftime_l(scratch_for<char>(), room, full_date, &from.fields, locale);
}

std::string bytes_in_output(std::int64_t count) {
    return bytes_written(scratch_for<char>(), count);
}

std::vector<date> make_dates(locale_t host) {
    std::vector<date> dates;
    for (std::time_t seconds : make_times()) {
        date made = {};
        made.seconds = seconds;
        gmtime_r(&seconds, &made.fields);
        made.record = record_of(made.fields);
        made.text = bytes_in_output(static_cast<std::int64_t>(write_by_host(made, host)));
        made.units = utf16_of(made.text);
        dates.push_back(made);
    }
    return dates;
}

std::vector<std::string> texts_of(const std::vector<date> &dates) {
    std::vector<std::string> texts;
    for (const date &each : dates) texts.push_back(each.text);
    return texts;
}

// Points in time, which is what reading a date comes to.
std::vector<std::string> seconds_of(const std::vector<date> &dates) {
    std::vector<std::string> seconds;
    for (const date &each : dates) seconds.push_back(std::to_string(each.seconds));
    return seconds;
}

std::string seconds_of_fields(std::tm fields) {
    return std::to_string(timegm(&fields));
}

#ifdef BENCH_WITH_ICU
UDateFormat *open_icu_dates() {
    UErrorCode error = U_ZERO_ERROR;
    UDateFormat *opened = udat_open(UDAT_PATTERN, UDAT_PATTERN, locale_name, u"UTC", -1,
                                    u"EEEE, dd. MMMM yyyy HH:mm:ss", -1, &error);
    if (U_FAILURE(error)) throw std::runtime_error("ICU opens no date format");
    return opened;
}

std::int64_t write_by_icu(UDateFormat *format, const date &from) {
    UErrorCode error = U_ZERO_ERROR;
    return udat_format(format, static_cast<UDate>(from.seconds) * 1000, scratch_for<UChar>(), room,
                       nullptr, &error);
}

std::string utf8_in_output(std::int64_t count) {
    std::string text;
    for (std::int64_t i = 0; i < count; ++i) append_utf8(text, scratch_for<char16_t>()[i]);
    return text;
}
#endif

prepared_row dates_to_text() {
    locale_t host = host_locale(locale_name, code_set::utf8);
    vel_locale *ours = our_locale(locale_name, code_set::utf8);
    auto dates = make_dates(host);
    value_work<date> work("full date to text", dates, texts_of(dates));
    auto run = [=](const date &from) {
        return vel_mbsftime(ours, scratch_for<char>(), room, full_date, &from.record);
    };
    work.add("vels", run, bytes_in_output);
    work.add(
        "host", [=](const date &from) { return write_by_host(from, host); }, bytes_in_output);
#ifdef BENCH_WITH_ICU
    std::shared_ptr<UDateFormat> format(open_icu_dates(), udat_close);
    work.add(
        "ICU", [=](const date &from) { return write_by_icu(format.get(), from); }, utf8_in_output);
#endif
    return work.ready();
}

// The timed part ends with the fields; that these are right is seen by the time that they make.
prepared_row dates_from_text() {
    locale_t host = host_locale(locale_name, code_set::utf8);
    vel_locale *ours = our_locale(locale_name, code_set::utf8);
    auto dates = make_dates(host);
    value_work<date> work("full date from text", dates, seconds_of(dates));

    auto *record = scratch_for<vel_time_record>();
    auto run = [=](const date &from) {
        *record = {};
        return vel_mbsptime(ours, from.text.c_str(), full_date, record, 0) != nullptr;
    };
    auto tell_record = [=](bool is_read) {
        std::tm fields = {};
        fields.tm_sec = record->second;
        fields.tm_min = record->minute;
        fields.tm_hour = record->hour;
        fields.tm_mday = record->day;
        fields.tm_mon = record->month;
        fields.tm_year = record->year;
        return is_read ? seconds_of_fields(fields) : "a failure";
    };
    work.add("vels", run, tell_record);

    auto *fields = scratch_for<std::tm>();
    auto read = [=](const date &from) {
        *fields = {};
        return strptime(from.text.c_str(), full_date, fields) != nullptr;
    };
    auto tell_fields = [=](bool is_read) {
        return is_read ? seconds_of_fields(*fields) : "a failure";
    };
    work.add("host", read, tell_fields, host);
#ifdef BENCH_WITH_ICU
    std::shared_ptr<UDateFormat> format(open_icu_dates(), udat_close);
    auto parse = [=](const date &from) {
        UErrorCode error = U_ZERO_ERROR;
        auto size = static_cast<std::int32_t>(from.units.size());
        return udat_parse(format.get(), from.units.data(), size, nullptr, &error);
    };
    auto tell_time = [](double time) {
        return std::to_string(static_cast<std::time_t>(time / 1e3));
    };
    work.add("ICU", parse, tell_time);
#endif
    return work.ready();
}

// What a program pays that opens a locale for each date. The locale is held, code-set names are
// cached.
prepared_row opening_for_dates() {
    locale_t host = host_locale(locale_name, code_set::utf8);
    our_locale(locale_name, code_set::utf8);
    cache_code_set_names();
    auto dates = make_dates(host);
    value_work<date> work("open, full date to text, close", dates, texts_of(dates));
    auto run = [](const date &from) {
        vel_locale *opened = load_locale(locale_name, code_set::utf8);
        char *out = scratch_for<char>();
        std::int32_t count = vel_mbsftime(opened, out, room, full_date, &from.record);
        vel_lc_unload(opened);
        return count;
    };
    work.add("vels", run, bytes_in_output);
    std::string name = host_locale_name(locale_name, code_set::utf8);
    auto open_host = [=](const date &from) {
        locale_t opened = newlocale(LC_ALL_MASK, name.c_str(), nullptr);
        std::size_t count = write_by_host(from, opened);
        freelocale(opened);
        return count;
    };
    work.add("host", open_host, bytes_in_output);
#ifdef BENCH_WITH_ICU
    auto open_icu = [](const date &from) {
        UDateFormat *format = open_icu_dates();
        std::int64_t count = write_by_icu(format, from);
        udat_close(format);
        return count;
    };
    work.add("ICU", open_icu, utf8_in_output);
#endif
    return work.ready();
}

} // namespace

std::vector<row> date_rows() {
    return {
        {"full date to text", unit::nanoseconds, aim::times_host(5), dates_to_text},
        {"full date from text", unit::nanoseconds, aim::times_host(6), dates_from_text},
        {"open, full date to text, close", unit::nanoseconds, {}, opening_for_dates},
    };
}

} // namespace bench

// Reading dates and times.
#include <algorithm>
#include <span>

#include "charmap/char_reader.h"
#include "time/time_fixture.h"
#include "vels/multibyte.h"

namespace {

using namespace vel_test;
using namespace std::chrono_literals;

bool operator==(const vel_time_record &a, const vel_time_record &b) {
    return memcmp(&a, &b, sizeof a) == 0;
}

std::string shown(const vel_time_record &t) {
    char text[128];
    snprintf(text, sizeof text, "%d-%d-%d %d:%d:%d.%d weekday %d yearday %d", t.year + 1900,
             t.month + 1, t.day, t.hour, t.minute, t.second, t.subsecond, t.weekday, t.yearday);
    return text;
}

// Empty when the text is cut inside a character.
std::vector<vel_wchar> widened(vel_locale *locale, const std::string &text) {
    std::vector<vel_wchar> wide(text.size() + 1);
    int32_t size = static_cast<int32_t>(wide.size());
    if (vel_im_mbstowcs(locale, wide.data(), text.c_str(), size) < 0) wide.clear();
    take_error(locale);
    return wide;
}

// What parsing gives: the error number, or the time and how many bytes were left.
struct outcome {
    int32_t error = 0;
    size_t left = 0;
    vel_time_record time;
};

// Both faces must agree, and none may touch the record when it fails. The text stands at the end of
// its block, so that sanitizers see a step beyond it.
outcome parse(vel_locale *locale, const std::string &text, const std::string &format,
              const vel_time_record &before, vel_date reference = {6, 1, 2001},
              int32_t rule = 'C') {
    outcome bytes{0, 0, before}, wide{0, 0, before};
    std::vector<char> exact(text.c_str(), text.c_str() + text.size() + 1);
    const char *rest =
        vel_mbsptime_internal(locale, exact.data(), format.c_str(), &bytes.time, &reference, rule);
    bytes.error = take_error(locale);
    if (rest) bytes.left = strlen(rest);
    EXPECT_EQ(!rest, bytes.error != 0) << text << " by " << format << ": " << bytes.error;
    EXPECT_TRUE(rest || bytes.time == before) << text << " by " << format;
    auto wide_text = widened(locale, text), wide_format = widened(locale, format);
    if (wide_text.empty() || wide_format.empty()) return bytes;
    const vel_wchar *wide_rest = vel_wcsptime_internal(locale, wide_text.data(), wide_format.data(),
                                                       &wide.time, &reference, rule);
    wide.error = take_error(locale);
    EXPECT_EQ(bytes.error, wide.error) << text << " by " << format;
    EXPECT_TRUE(bytes.time == wide.time) << text << " by " << format;
    if (rest && wide_rest) {
        EXPECT_EQ(widened(locale, rest).at(0), *wide_rest) << text;
    }
    return bytes;
}

std::string formatted(vel_locale *locale, const std::string &format, const vel_time_record &time) {
    char text[512] = "";
    vel_mbsftime(locale, text, sizeof text, format.c_str(), &time);
    EXPECT_EQ(take_error(locale), 0) << format << " of " << shown(time);
    return text;
}

struct accepted {
    const char *text, *format, *expected;
    size_t left = 0;
};

void expect_accepted(vel_locale *locale, std::span<const accepted> rows) {
    for (const accepted &row : rows) {
        outcome read = parse(locale, row.text, row.format, time_of(2001, 6, 1));
        const vel_time_record &t = read.time;
        char text[64];
        int n = snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", t.year + 1900,
                         t.month + 1, t.day, t.hour, t.minute, t.second);
        if (t.subsecond) snprintf(text + n, sizeof text - n, ".%06d", t.subsecond);
        EXPECT_EQ(read.error, 0) << row.text << " by " << row.format;
        EXPECT_STREQ(text, row.expected) << row.text << " by " << row.format;
        EXPECT_EQ(read.left, row.left) << row.text << " by " << row.format;
    }
}

struct refused {
    const char *text, *format;
    int32_t error;
};

void expect_refused(vel_locale *locale, const std::vector<refused> &rows) {
    for (const refused &row : rows)
        EXPECT_EQ(parse(locale, row.text, row.format, time_of(2001, 6, 1)).error, row.error)
            << row.text << " by " << row.format;
}

TEST(time_parsing, conversions_read_their_fields) {
    const accepted short_rows[] = {
        {"12", "%I", "2001-06-01 12:00:00"},          {"PM", "%p", "2001-06-01 00:00:00"},
        {"99", "%y", "1999-06-01 00:00:00"},          {"19", "%C", "1900-06-01 00:00:00"},
        {"99", "%Ey", "1999-06-01 00:00:00"},         {"0099", "%iY", "0099-06-01 00:00:00"},
        {"007", "%.3H", "2001-06-01 07:00:00"},       {"423", "%w%H", "2001-06-01 23:00:00"},
        {"1999", "%C%y", "1999-06-01 00:00:00"},      {" 512", "%e%m", "2001-12-05 00:00:00"},
        {"0423", "%w%H", "2001-06-01 23:00:00"},      {"08:09", "%OR", "2001-06-01 08:09:00"},
        {"Mar3", "%B %d", "2001-03-03 00:00:00"},     {" 5.7", "%e.%m", "2001-07-05 00:00:00"},
        {"12 AM", "%I %p", "2001-06-01 00:00:00"},    {"12 pm", "%I %p", "2001-06-01 12:00:00"},
        {"5", "%F", "2001-06-01 00:00:00.500000"},    {"march3", "%b%d", "2001-03-03 00:00:00"},
        {"7    |", "%-5H|", "2001-06-01 07:00:00"},   {"1901 01", "%Y %y", "1901-06-01 00:00:00"},
        {"02:03:04 PM", "%r", "2001-06-01 14:03:04"}, {"7:05pm", "%H:%M", "2001-06-01 07:05:00", 2},
    };
    const accepted long_rows[] = {{"11/30/99 %", "%D %%", "1999-11-30 00:00:00"},
                                  {"MARCH   3", "%b \t%d", "2001-03-03 00:00:00"},
                                  {"1234", "%F3", "2001-06-01 00:00:00.123000", 1},
                                  {"09.12", "%S%iF", "2001-06-01 00:00:09.120000"},
                                  {"29/02/2000", "%d/%m/%Y", "2000-02-29 00:00:00"},
                                  {"1234567x", "%F", "2001-06-01 00:00:00.123456", 1},
                                  {"23:59:58 \n x", "%T%n", "2001-06-01 23:59:58", 1}};
    locale_owner english = open_locale("en_us.utf8");
    expect_accepted(english.get(), short_rows);
    expect_accepted(english.get(), long_rows);
}

TEST(time_parsing, errors_have_their_numbers) {
    locale_owner english = open_locale("en_us.utf8");
    expect_refused(english.get(),
                   {{"7", "%w", 9},     {"x", "y", 46},     {"1", "%", 15},     {"x", "%F", 33},
                    {"x", "%S", 34},    {"x", "%M", 35},    {"x", "%H", 36},    {"x", "%I", 36},
                    {"0", "%I", 26},    {"x", "%d", 37},    {"0", "%e", 27},    {"x", "%A", 38},
                    {"x", "%u", 38},    {"8", "%u", 28},    {"x", "%B", 48},    {"x", "%m", 40},
                    {"x", "%j", 29},    {"x", "%Y", 41},    {"x", "%C", 41},    {"x", "%p", 46},
                    {"x", "%n", 46},    {"x", "%%", 22},    {"x", "%r", 22},    {"1", "%Q", 22},
                    {"1", "%5", 15},    {"1", "%i", 15},    {"1", "%E", 15},    {"5", "%iF", 33},
                    {"60", "%S", 24},   {"60", "%M", 25},   {"24", "%H", 26},   {"13", "%I", 26},
                    {"-1", "%d", 37},   {"32", "%d", 27},   {"13", "%m", 30},   {"1", "%iS", 22},
                    {"1", "%.%", 45},   {"12", "%F3", 33},  {"367", "%j", 29},  {"100", "%3y", 9},
                    {"7", "%.2H", 36},  {"100", "%3C", 31}, {".1", "%iF6", 22}, {"99999", "%6Y", 9},
                    {"12:60", "%R", 25}});
    expect_refused(english.get(), {{"31/04/2001", "%d/%m/%Y", 27},
                                   {"29/02/1900", "%d/%m/%Y", 27},
                                   {"1 05/05/2001", "%u %d/%m/%Y", 38},
                                   {"99999999999999999999", "%20d", 27},
                                   {"Mon 05/05/2001", "%a %d/%m/%Y", 38}});
    vel_time_record time{};
    EXPECT_EQ(vel_mbsptime(english.get(), "1", nullptr, &time, 'C'), nullptr);
    EXPECT_EQ(take_error(english.get()), VEL_EFORMAT);
    for (const char *format : {"x", "%d", "\xFF"}) {
        EXPECT_EQ(vel_mbsptime(english.get(), "\xFF", format, &time, 'C'), nullptr);
        EXPECT_EQ(take_error(english.get()), VEL_EILSEQ);
    }
    locale_owner latin = open_locale("de_de.819");
    for (auto [text, format] : {std::pair{0x141u, vel_wchar{'x'}}, {vel_wchar{'x'}, 0x141u}}) {
        vel_wchar wide_text[] = {text, 0}, wide_format[] = {format, 0};
        EXPECT_EQ(vel_wcsptime(latin.get(), wide_text, wide_format, &time, 'C'), nullptr);
        EXPECT_EQ(take_error(latin.get()), VEL_EILSEQ);
    }
}

TEST(time_parsing, other_languages) {
    // Names that begin with others, and digits whose numbers run into one another.
    const std::pair<const char *, accepted> rows[] = {
        {"tr_tr.utf8", {"Pazartesi 01 01 2001", "%A %d %m %Y", "2001-01-01 00:00:00"}},
        {"vi_vn.utf8", {"Tháng 12,", "%B,", "2001-12-01 00:00:00"}},
        {"lzh_tw.utf-8", {"廿一年", "%OC%Oy年", "2001-06-01 00:00:00"}},
        {"lzh_tw.utf-8", {"廿廿一年", "%OC%Oy年", "2021-06-01 00:00:00"}},
        {"lzh_tw.utf-8", {"十二", "%Od", "2001-06-12 00:00:00"}},
        {"lzh_tw.utf-8", {"12", "%Od", "2001-06-12 00:00:00"}},
        {"ja_jp.utf8", {"令和元年05月01日", "%Ex", "2019-05-01 00:00:00"}},
        {"ja_jp.utf8", {"令和1年5月1日", "%Ex", "2019-05-01 00:00:00"}},
        {"ja_jp.utf8", {"昭和64年", "%EY", "1989-06-01 00:00:00"}},
        {"ja_jp.utf8", {"明治 45", "%EC %Ey", "1912-06-01 00:00:00"}},
        {"ja_jp.utf8", {"平成2001", "%EC%Y", "2001-06-01 00:00:00"}},
        {"th_th.utf8", {"7 พ.ค. 2543", "%Ex", "2000-05-07 00:00:00"}}};
    for (const auto &[locale, row] : rows) expect_accepted(open_locale(locale).get(), {&row, 1});
    locale_owner japanese = open_locale("ja_jp.utf8");
    expect_refused(japanese.get(), {{"2年", "%EY", 41},
                                    {"x", "%EC", 9},
                                    {"明治3", "%EC%Ey", 31},
                                    {"令和99999", "%EC%Ey", 31},
                                    {"1", "%EH", 22},
                                    {"1", "%OY", 22}});
}

// What was formatted is read back: as the same time when the rest of it is known, and in any case
// as a time that looks the same.
void expect_read_back(vel_locale *locale, const std::string &ascii, const vel_time_record &time) {
    std::string format = in_code_set(locale, ascii), text = formatted(locale, format, time);
    vel_date reference = {static_cast<uint16_t>(time.month + 1), static_cast<uint16_t>(time.day),
                          static_cast<uint16_t>(time.year + 1900)};
    outcome read = parse(locale, text, format, time, reference);
    ASSERT_EQ(read.error, 0) << ascii << ": " << text;
    EXPECT_EQ(read.left, 0u) << ascii << ": " << text;
    // Twelve hours without a text for the morning and the afternoon do not tell them apart.
    if (!*locale->time.am.wide && read.time.hour == time.hour - 12) read.time.hour += 12;
    // A whole date gives the day of the year counted from 1; the calendars of their own, from 0.
    if (read.time.yearday == time.yearday + 1) --read.time.yearday;
    EXPECT_EQ(shown(read.time), shown(time)) << ascii << ": " << text;

    vel_time_record blank = time_of(time.year + 1900, 1, 1);
    outcome fresh = parse(locale, text, format, blank, reference);
    ASSERT_EQ(fresh.error, 0) << ascii << ": " << text;
    EXPECT_EQ(formatted(locale, format, fresh.time), text) << ascii;
}

TEST(time_parsing, every_locale_reads_what_it_writes) {
    std::vector<vel_time_record> times;
    for (unsigned month = 1; month <= 12; ++month) {
        times.push_back(time_of(2001, month, month, static_cast<int32_t>(month), 10, 31));
    }
    for (unsigned day = 5; day <= 11; ++day) times.push_back(time_of(2021, 5, day, 14, 5, 9));
    times.push_back(time_of(2024, 2, 29, 0, 59, 59));
    times.push_back(time_of(1999, 12, 31, 12, 0, 0));
    // The days about changes of era in Japan.
    for (auto day : {2019y / 4 / 30, 2019y / 5 / 1, 1989y / 1 / 7, 1989y / 1 / 8, 1926y / 12 / 25,
                     1912y / 7 / 30, 1873y / 1 / 1})
        times.push_back(time_at(day, 7, 8, 9));
    for (const std::string &name : objects_of_pack()) {
        SCOPED_TRACE(name);
        locale_owner locale = open_locale(name.c_str());
        ASSERT_TRUE(locale);
        for (const vel_time_record &time : times) {
            for (const char *format : {"%A %d %B %Y %H:%M:%S", "%a %b%e %Y", "%x", "%X", "%c", "%r",
                                       "%Ex", "%EX", "%Ec", "%OH:%OM:%OS %Od. %Om. %Y"}) {
                expect_read_back(locale.get(), format, time);
            }
        }
        if (HasFatalFailure()) return;
    }
}

TEST(time_parsing, dates_that_a_calendar_lacks) {
    locale_owner locale = open_locale("en_us.utf8");
    in_calendar islamic(locale.get(), vel::calendar_islamic);
    expect_refused(locale.get(), {{"30 2 1444", "%d %m %Y", 27},
                                  {"1 13 1444", "%d %m %Y", 30},
                                  {"1 1 0000", "%d %m %Y", 31}});
    // The time of day needs no calendar, whatever the caller's date is.
    vel_time_record wild;
    std::fill_n(reinterpret_cast<int32_t *>(&wild), 12, INT32_MIN);
    EXPECT_EQ(parse(locale.get(), "12:30", "%R", wild).time.hour, 12);
    EXPECT_EQ(parse(locale.get(), "12", "%d", wild).error, VEL_ETIME31);
    EXPECT_EQ(parse(locale.get(), "01.02.1444", "%d.%m.%Y", wild).time.year, 2022 - 1900);
    in_calendar arabic(locale.get(), vel::calendar_arabic);
    EXPECT_EQ(parse(locale.get(), "1", "%d", wild).error, VEL_ECALENDAR);
}

TEST(time_parsing, text_and_format_end_anywhere) {
    for (const char *name : {"ja_jp.utf8", "de_de.utf8", "fa_ir.utf8"}) {
        locale_owner locale = open_locale(name);
        std::string format = "%A %d %B %Y %OH:%M:%S.%F3 %c %Ec %EY%n%iF|";
        std::string text = formatted(locale.get(), format, time_of(2021, 5, 8, 14, 5, 9, 123456));
        for (size_t length = 0; length < text.size(); ++length)
            EXPECT_NE(parse(locale.get(), text.substr(0, length), format, {}).error, 0) << length;
        for (size_t length = 0; length < format.size(); ++length) {
            parse(locale.get(), text, format.substr(0, length), {});
        }
    }
}

TEST(time_parsing, formats_without_end_are_refused) {
    locale_owner locale = open_locale("ja_jp.utf8");
    vel::time_category &time = locale->time;
    const vel::time_category before = time;
    vel::era_entry &era = locale->time_derived.eras[0];
    const vel::locale_text format = era.format;
    time.d_t_fmt = text_of("%x%x%x%x%x%x%x%x%x%x%x%x", U"%x%x%x%x%x%x%x%x%x%x%x%x");
    time.d_fmt = text_of("%X%X%X%X%X%X%X%X%X%X%X%X", U"%X%X%X%X%X%X%X%X%X%X%X%X");
    time.t_fmt = text_of("%r%r%r%r%r%r%r%r%r%r%r%r", U"%r%r%r%r%r%r%r%r%r%r%r%r");
    time.t_fmt_ampm = text_of("", U"");
    time.era_d_fmt = text_of("%Ex", U"%Ex");
    era.format = text_of("%EY", U"%EY");
    expect_refused(
        locale.get(),
        {{"x", "%c", VEL_EFORMAT}, {"x", "%Ex", VEL_EFORMAT}, {"x", "%EY", VEL_ETIME41}});
    time = before;
    era.format = format;
}

} // namespace

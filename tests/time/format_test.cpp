// Formatting of dates and times, and measuring of formats.
#include "time/time_fixture.h"

#include <cstring>

#include "time/measure.h"
#include "vels/multibyte.h"

namespace {

using namespace vel_test;

constexpr char guard = '\x5A';

std::string from_code_set(const vel_locale *locale, std::string text) {
    for (char &c : text) {
        const auto value = static_cast<unsigned char>(c);
        if (const auto ascii = vel::portable_of(locale, value)) c = static_cast<char>(ascii);
    }
    return text;
}
std::vector<vel_wchar> widen(vel_locale *locale, const std::string &text) {
    std::vector<vel_wchar> wide(text.size() + 1);
    const int32_t count =
        vel_im_mbstowcs(locale, wide.data(), text.c_str(), static_cast<int32_t>(wide.size()));
    EXPECT_GE(count, 0) << text;
    wide.resize(static_cast<size_t>(vel_wcslen(wide.data())));
    return wide;
}

// Formats in both forms, into buffers of every size; the text, or "error N".
std::string format(vel_locale *locale, const std::string &format, const vel_time_record &time) {
    std::string bytes(1000, guard);
    take_error(locale);
    const int32_t length = vel_mbsftime(locale, bytes.data(), 1000, format.c_str(), &time);
    const int32_t error = take_error(locale);
    std::vector<vel_wchar> wide_format = widen(locale, format), wide(1000);
    wide_format.push_back(0);
    const int32_t characters = vel_wcsftime(locale, wide.data(), 1000, wide_format.data(), &time);
    EXPECT_EQ(take_error(locale), error) << format;
    if (error != 0) {
        EXPECT_EQ(length, 0);
        EXPECT_EQ(characters, 0);
        return "error " + std::to_string(error);
    }
    const std::string text = bytes.substr(0, static_cast<size_t>(length));
    wide.resize(static_cast<size_t>(characters));
    EXPECT_EQ(widen(locale, text), wide) << format;

    vel::format_extent extent{}, wide_extent{};
    EXPECT_EQ(vel::measure_time_format(locale, format.c_str(), extent), 0) << format;
    EXPECT_EQ(vel::measure_time_format(locale, wide_format.data(), wide_extent), 0);
    EXPECT_EQ(extent.bytes, wide_extent.bytes);
    EXPECT_GE(extent.bytes, length) << format;
    EXPECT_GE(extent.characters, characters) << format;

    const int32_t least = vel_mb_loc_min(locale);
    for (int32_t size = -1; size <= length + least; ++size) {
        std::string out(1000, guard);
        const int32_t written = vel_mbsftime(locale, out.data(), size, format.c_str(), &time);
        const int32_t number = take_error(locale);
        const bool fits = size >= length + least;
        EXPECT_EQ(written, fits ? length : 0) << format << " in " << size;
        EXPECT_TRUE(fits ? number == 0 : number == VEL_E2BIG || number == VEL_ETIME41)
            << format << " in " << size << ": " << number;
        EXPECT_EQ(out.find_first_not_of(guard, static_cast<size_t>(size < 0 ? 0 : size)), out.npos)
            << format << " in " << size;
    }
    return text;
}

struct format_case {
    const char *format;
    const char *text;
};

const vel_time_record afternoon = time_of(2021, 7, 5, 13, 5, 9, 123456); // a Monday
const vel_time_record midnight = time_of(900, 12, 31, 0, 0, 0, 6);

TEST(format, conversions) {
    const format_case cases[] = {
        {"%d %e %.2e %.1d %3e %-3e:", "05  5 05 5   5 5  :"},
        {"%F %F0 %F3 %F8 %.8F %.2F %8F %08F %-8F:",
         "123456  123 1234568 12345600 12   123456 00123456 123456  :"},
        {"%iF %iF1 %iF5 %iY %6iF", ".12 .1 .12345 2021    .12"},
        {"100%%%n%t", "100%\n\t"},
        {"%5Y %-6Y: %06Y %.6Y %+d %'Y", " 2021 2021  : 002021 002021 +05 2,021"},
        {"%5a %-5a: %.2A %5.2A %05a", "  Mon Mon  : Mo    Mo 00Mon"},
        {"%Ey %EY %Od %OC %EOy %Ex", "21 2021 05 20 21 07/05/2021"},
        {"\xC3\xA4%d\xE2\x82\xAC", "\xC3\xA4"
                                   "05\xE2\x82\xAC"},
        {"", ""}};
    const locale_owner owner = open_locale("en_us.utf8");
    const locale_owner ebcdic = open_locale("en_us.ibm037");
    for (const auto &[text, wanted] : cases) {
        EXPECT_EQ(format(owner.get(), text, afternoon), wanted) << text;
        if (strchr(text, '\xC3')) continue;
        const std::string there = format(ebcdic.get(), in_code_set(ebcdic.get(), text), afternoon);
        EXPECT_EQ(from_code_set(ebcdic.get(), there), wanted) << text;
    }
    const std::pair<int, std::vector<const char *>> refused[] = {
        {15, {"%", "%5", "%i", "%E"}}, {22, {"%k", "%iF0", "%iF6", "%iM"}}, {45, {"%.!"}}};
    for (vel_locale *of : {owner.get(), ebcdic.get()})
        for (const auto &[error, texts] : refused)
            for (const char *text : texts)
                EXPECT_EQ(format(of, in_code_set(of, text), afternoon),
                          "error " + std::to_string(error));
    EXPECT_EQ(format(owner.get(), "%u %w %iF %F %j", midnight), "05 05 .00 000006 365");
    vel_time_record year_0 = midnight;
    year_0.year = -1900;
    year_0.weekday = 0;
    year_0.hour = 12;
    EXPECT_EQ(format(owner.get(), "%Y %u %w %p %I", year_0), "0000 07 00 PM 12");
}

TEST(format, fields_out_of_range) {
    const struct {
        int32_t vel_time_record::*field;
        int32_t low, high, error;
        const char *letters;
    } rows[] = {{&vel_time_record::subsecond, 0, 999999, 23, "F"},
                {&vel_time_record::second, 0, 59, 24, "ST"},
                {&vel_time_record::minute, 0, 59, 25, "MRT"},
                {&vel_time_record::hour, 0, 23, 26, "HIpRT"},
                {&vel_time_record::day, 1, 99, 27, "deD"},
                {&vel_time_record::weekday, 0, 6, 28, "aAuw"},
                {&vel_time_record::yearday, 0, 365, 29, "j"},
                {&vel_time_record::month, 0, 11, 30, "bBhmD"},
                {&vel_time_record::year, -1900, 8099, 31, "YCgD"}};
    const locale_owner owner = open_locale("en_us.utf8");
    for (const auto &row : rows) {
        for (const char *letter = row.letters; *letter; ++letter) {
            const std::string conversion = std::string("%") + *letter;
            const std::string failure = "error " + std::to_string(row.error);
            vel_time_record time = afternoon;
            for (int32_t value : {row.low, row.high}) {
                time.*row.field = value;
                EXPECT_EQ(format(owner.get(), conversion, time).find("error"), std::string::npos);
            }
            for (int32_t value : {row.low - 1, row.high + 1, INT32_MIN, INT32_MAX}) {
                time.*row.field = value;
                EXPECT_EQ(format(owner.get(), conversion, time), failure) << conversion << value;
                EXPECT_EQ(format(owner.get(), "%3" + conversion.substr(1), time), failure);
            }
        }
    }
    vel_time_record time = afternoon;
    for (int32_t year : {INT32_MIN, INT32_MAX}) {
        time.year = year;
        EXPECT_EQ(format(owner.get(), "%y", time), year < 0 ? "48" : "47");
    }
    const std::pair<const char *, int32_t> calls[] = {
        {nullptr, VEL_EFORMAT}, {"%Y", VEL_ETIME41}, {"%iY", VEL_E2BIG}, {"\xFF", VEL_EILSEQ}};
    for (auto [text, error] : calls) {
        char out[4];
        EXPECT_EQ(vel_mbsftime(owner.get(), out, 4, text, &afternoon), 0);
        EXPECT_EQ(take_error(owner.get()), error);
    }
}

// Plain conversions are held against the host's for all locales elsewhere.
TEST(format, alternative_forms) {
    const locale_owner ja = open_locale("ja_jp.utf8");
    const format_case cases[] = {
        {"%Ex %EY %EC %Eg %Ey %.2Ey", "令和3年07月05日 令和3年 令和 令和 3 03"},
        {"%Od %Oe:%OT:%OC:%OD", "五 五:十三:五:九:二十:七/五/二十一"},
        {"%6Od:%-6a:%3a:%.1a", "    五:月    : 月:"},
        {"%Ed", "error 22"},
        {"%OY", "error 22"},
        {"%OB", "error 22"}};
    for (const auto &[text, wanted] : cases) EXPECT_EQ(format(ja.get(), text, afternoon), wanted);
}

// Eras of every kind in a record made by hand.
TEST(format, eras) {
    const locale_owner owner = open_locale("c.utf-8");
    vel_locale *locale = owner.get();
    const vel::locale_text old_name = text_of("old", U"old"), other = text_of("O", U"O");
    const vel::locale_text none = text_of("", U""), new_name = text_of("new", U"new");
    const vel::locale_text full = text_of("%EC-%Ey", U"%EC-%Ey"), endless = text_of("%EY", U"%EY");
    vel::era_entry eras[] = {
        {{INT32_MIN, 1, 1}, {0, 12, 31}, 1, -1, 0, old_name, other, none},
        {{1, 1, 1}, {2000, 6, 30}, 1, 1, 1, new_name, new_name, full},
        {{2000, 7, 1}, {2000, 7, 31}, 5, 1, 2000, new_name, new_name, endless}};
    const vel::text_list eras_before = locale->time.eras;
    const vel::time_derived derived_before = locale->time_derived;
    locale->time.eras = {3, nullptr};
    locale->time_derived.era_count = 2;
    locale->time_derived.eras = eras;

    vel_time_record year_0 = time_of(2000, 5, 5);
    year_0.year = -1900;
    EXPECT_EQ(format(locale, "%EC %Eg %Ey %EY", year_0), "old O 1 0000");
    EXPECT_EQ(format(locale, "%EC %Eg %Ey %EY %5EC", time_of(2000, 6, 30)),
              "new new 2000 new-2000   new");
    EXPECT_EQ(format(locale, "%Ey", time_of(2000, 7, 1)), "error 9");
    year_0.month = 12;
    EXPECT_EQ(format(locale, "%EC", year_0), "error 30");
    year_0.month = 0;
    eras[0].offset = INT32_MIN;
    EXPECT_EQ(format(locale, "%Ey", year_0), "2147483648");
    locale->time_derived.era_count = 3;
    EXPECT_EQ(format(locale, "%EY", time_of(2000, 7, 1)), "error 15");
    locale->time.eras = eras_before;
    locale->time_derived = derived_before;
}

// Formats of a locale that lead into one another.
TEST(format, hostile_formats) {
    const locale_owner owner = open_locale("c.utf-8");
    vel_locale *locale = owner.get();
    const vel::time_category before = locale->time;
    locale->time.d_t_fmt = text_of("%c", U"%c");
    std::string many;
    std::u32string wide_many;
    for (int i = 0; i < 1000; ++i) many += "%x", wide_many += U"%x";
    locale->time.t_fmt = text_of(many.c_str(), wide_many.c_str());
    vel::format_extent extent;
    for (const char *text : {"%c", "%X"}) {
        EXPECT_EQ(format(locale, text, afternoon), "error 15") << text;
        EXPECT_EQ(vel::measure_time_format(locale, text, extent), -1);
        EXPECT_EQ(take_error(locale), VEL_EFORMAT);
    }
    locale->time = before;
    EXPECT_EQ(vel::measure_time_format(locale, "%2147483647d%2147483647d", extent), -1);
    EXPECT_EQ(take_error(locale), VEL_E2BIG);
    EXPECT_EQ(vel::measure_time_format(locale, "%.2147483647F%iF", extent), -1);
    EXPECT_EQ(take_error(locale), VEL_E2BIG);
}

TEST(format, other_calendars) {
    const locale_owner owner = open_locale("en_us.utf8");
    vel_locale *locale = owner.get();
    {
        const in_calendar hebrew(locale, vel::calendar_hebrew);
        EXPECT_EQ(format(locale, "%d %m %Y %u %T", time_of(2024, 10, 3, 1, 2, 3)),
                  "01 01 5785 04 01:02:03");
        EXPECT_EQ(format(locale, "%j", time_of(2024, 10, 2)), "383");      // the end of a leap year
        EXPECT_EQ(format(locale, "%b", time_of(2024, 2, 10)), "error 30"); // needs 14 names
    }
    const locale_owner hebrew = open_locale("en_us.utf8@hebr");
    const std::pair<vel_time_record, const char *> months[] = {{time_of(2024, 2, 10), "Adar I 06"},
                                                               {time_of(2024, 3, 24), "Adar II 07"},
                                                               {time_of(2024, 10, 2), "Elul 13"},
                                                               {time_of(2025, 3, 14), "Adar 06"}};
    for (const auto &[time, wanted] : months)
        EXPECT_EQ(format(hebrew.get(), "%B %m", time), wanted);
    {
        const in_calendar islamic(locale, vel::calendar_islamic);
        EXPECT_EQ(format(locale, "%H", time_of(600, 7, 18)), "error 31");
    }
    const in_calendar arabic(locale, vel::calendar_arabic);
    EXPECT_EQ(format(locale, "%d", afternoon), "error 50");
}

// Every locale of the pack: nothing is longer than it was measured, and nothing fails.
TEST(format, measures_hold_in_every_locale) {
    const char *formats[] = {"%c:%x:%X:%r:%Ec:%Ex:%EX:%EY", "%20A:%-20B:%3.3a:%.4b:%5p",
                             "%Od%OD%OT:%8Oe:%Oy:%Oj", "%+d:%'Y:%09F:%iF:% m:%12j"};
    for (const std::string &name : objects_of_pack()) {
        SCOPED_TRACE(name);
        const locale_owner owner = open_locale(name.c_str());
        vel_locale *locale = owner.get();
        ASSERT_TRUE(locale);
        for (const char *text : formats) {
            for (unsigned month = 1; month <= 12; ++month) {
                const std::string got =
                    format(locale, in_code_set(locale, text),
                           time_of(2012 + static_cast<int>(month), month, 28,
                                   static_cast<int32_t>(month) * 2 - 1, 59, 58, 987654));
                EXPECT_EQ(got.find("error"), std::string::npos) << text << got;
            }
        }
    }
}

} // namespace

// Times that both write, and what both say of a locale's names and formats.
#include "differential/conventions.h"
#include "time/time_fixture.h"

namespace differential {
namespace {

using namespace std::chrono;

constexpr known_tally known_times[] = {{"%0Ey", 9, 612, "years of an era"}};
constexpr known_tally known_items[] = {{"CRNCYSTR", 1, 1, "no currency"},
                                       {"rewritten", 80, 108, "letters of formats"},
                                       {"empty", 126, 136, "empty formats"}};

// First and last days of months in years of every kind, at all times of the day.
std::vector<vel_time_record> common_times() {
    std::vector<vel_time_record> made;
    int clock = 0;
    for (int of : {1,    4,    99,   100,  400,  999,  1000, 1582, 1600, 1700, 1752, 1899, 1900,
                   1968, 1970, 1999, 2000, 2001, 2004, 2026, 2037, 2038, 2100, 2400, 9998, 9999})
        for (unsigned m = 1; m <= 12; ++m)
            for (day d : {day(1), (year(of) / m / last).day()}) {
                made.push_back(
                    vel_test::time_at(year(of) / m / d, clock / 3600, clock / 60 % 60, clock % 60));
                clock = (clock + 3671) % 86400;
            }
    return made;
}

// The days about each date in a list of eras: "+:2:2020/01/01:+*:name:format;...".
std::vector<vel_time_record> era_times(const std::string &eras) {
    std::vector<vel_time_record> made;
    for (size_t at = 0; (at = eras.find('/', at)) != eras.npos; at += 4) {
        int y, m, d;
        const char *date = eras.c_str() + eras.rfind(':', at) + 1;
        if (sscanf(date, "%d/%d/%d", &y, &m, &d) != 3 || y < 1 || y > 9998) continue;
        for (int offset : {y > 1 ? -1 : 0, 0, 1, 366})
            made.push_back(vel_test::time_at(sys_days(year(y) / m / d) + days(offset), 12));
    }
    return made;
}

void replace_all(std::string &in, std::string_view what, const std::string &by) {
    for (size_t at = 0; (at = in.find(what, at)) != in.npos; at += by.size())
        in.replace(at, what.size(), by);
}

// What the host has to be asked for: years with as many digits as ours, and the formats of the
// locale as ours are, without zones and with plain forms of what has no letter.
std::string asked(const both &locale, std::string format) {
    const auto item = [&](nl_item number, std::string otherwise = "") {
        const std::string text = nl_langinfo_l(number, locale.host());
        return text.empty() ? otherwise : text;
    };
    const bool has_eras = vel_get_era_count(locale.ours()) > 0;
    const std::pair<const char *, std::string> replacements[] = {
        {"%Ec", has_eras ? item(ERA_D_T_FMT, "%c") : "%c"},
        {"%Ex", has_eras ? item(ERA_D_FMT, "%x") : "%x"},
        {"%EX", has_eras ? item(ERA_T_FMT, "%X") : "%X"},
        {"%c", item(D_T_FMT)},
        {"%x", item(D_FMT)},
        {"%X", item(T_FMT)},
        {"%r", item(T_FMT_AMPM, "%I:%M:%S %p")},
        {" %Z", ""},
        {"%Z ", ""},
        {" %z", ""},
        {"%P", "%p"},
        {"%Op", "%p"},
        {"%OB", "%B"},
        {"%Ob", "%b"},
        {"%F", "%Y-%m-%d"},
        {"%EY", has_eras ? "%-EY" : "%Y"},
        {"%Ey", has_eras ? "%-Ey" : "%y"},
        {"%Y", "%04Y"}};
    for (const auto &[what, by] : replacements) replace_all(format, what, by);
    return format;
}

std::string by_host(const both &locale, const std::string &format, const vel_time_record &of) {
    std::tm t{};
    std::tie(t.tm_sec, t.tm_min, t.tm_hour, t.tm_mday, t.tm_mon, t.tm_year, t.tm_wday, t.tm_yday) =
        std::tie(of.second, of.minute, of.hour, of.day, of.month, of.year, of.weekday, of.yearday);
    char text[1024];
    return {text, strftime_l(text, sizeof text, format.c_str(), &t, locale.host())};
}

// Ours, and the host's where it is another one.
using conversion = std::pair<std::string, std::string>;
std::vector<conversion> conversions() {
    std::vector<conversion> made = {
        {"%g", "%C"},     {"%u", "0%u"},    {"%w", "0%w"},   {"%.1u", "%u"},  {"%.1w", "%w"},
        {"%.1Ou", "%Ou"}, {"%.1Ow", "%Ow"}, {"%.1Y", "%-Y"}, {"%.1d", "%-d"}, {"%.1m", "%-m"},
        {"%.1j", "%-j"},  {"%2.1H", "%k"},  {"%2.1I", "%l"}, {"%Ey", "%0Ey"}};
    for (char letter : std::string_view("aAbhBcCdDeHIjmMnprRStTxXyY%"))
        made.push_back({std::string("%") + letter, ""});
    for (const char *other : {"%Ec", "%EC", "%Ex", "%EX", "%Ey", "%EY", "%Od", "%Oe", "%OH", "%OI",
                              "%Om", "%OM", "%OS", "%Oy", "%A, %Od. %B %EY (%j)"})
        made.push_back({other, ""});
    return made;
}

using time_against_host = conventions;

TEST_F(time_against_host, every_conversion) {
    tally found;
    const std::vector<vel_time_record> common = common_times();
    for_each_locale([&](const both &locale) {
        std::vector<vel_time_record> times =
            era_times(vel_nl_langinfo(locale.ours(), VEL_ITEM_ERA));
        times.insert(times.end(), common.begin(), common.end());
        for (const auto &[ours, host] : conversions()) {
            const std::string question = asked(locale, host.empty() ? ours : host);
            for (const vel_time_record &time : times)
                found.compare(host == "%0Ey" ? host : ours, locale.name(),
                              by_host(locale, "%Y-%m-%d %T", time),
                              locale.written(vel_mbsftime, ours, &time),
                              by_host(locale, question, time));
        }
    });
    found.settle(known_times);
}

struct item_pair {
    const char *name;
    int32_t ours;
    nl_item host;
    int32_t count = 1;
};
constexpr item_pair items[] = {{"ERA", VEL_ITEM_ERA, ERA},
                               {"D_FMT", VEL_ITEM_D_FMT, D_FMT},
                               {"T_FMT", VEL_ITEM_T_FMT, T_FMT},
                               {"NOSTR", VEL_ITEM_NOSTR, NOSTR},
                               {"DAY", VEL_ITEM_DAY_1, DAY_1, 7},
                               {"MON", VEL_ITEM_MON_1, MON_1, 12},
                               {"YESSTR", VEL_ITEM_YESSTR, YESSTR},
                               {"NOEXPR", VEL_ITEM_NOEXPR, NOEXPR},
                               {"D_T_FMT", VEL_ITEM_D_T_FMT, D_T_FMT},
                               {"YESEXPR", VEL_ITEM_YESEXPR, YESEXPR},
                               {"CODESET", VEL_ITEM_CODESET, CODESET},
                               {"ABDAY", VEL_ITEM_ABDAY_1, ABDAY_1, 7},
                               {"ABMON", VEL_ITEM_ABMON_1, ABMON_1, 12},
                               {"CRNCYSTR", VEL_ITEM_CRNCYSTR, CRNCYSTR},
                               {"ERA_D_FMT", VEL_ITEM_ERA_D_FMT, ERA_D_FMT},
                               {"ERA_T_FMT", VEL_ITEM_ERA_T_FMT, ERA_T_FMT},
                               {"THOUSEP", VEL_ITEM_THOUSANDS_SEP, THOUSEP},
                               {"AM_STR, PM_STR", VEL_ITEM_AM_STR, AM_STR, 2},
                               {"T_FMT_AMPM", VEL_ITEM_T_FMT_AMPM, T_FMT_AMPM},
                               {"ALT_DIGITS", VEL_ITEM_ALT_DIGITS, ALT_DIGITS},
                               {"RADIXCHAR", VEL_ITEM_DECIMAL_POINT, RADIXCHAR},
                               {"ERA_D_T_FMT", VEL_ITEM_ERA_D_T_FMT, ERA_D_T_FMT}};

// Formats that are not the source's own are held against the host by what they write.
std::string kind_of(const item_pair &item, const std::string &host) {
    if (std::string_view(item.name).find("FMT") == std::string_view::npos) return item.name;
    for (const char *letter : {"%Z", "%z", "%P", "%O", "%k", "%l", "%F", "%-"})
        if (host.find(letter) != host.npos) return "rewritten";
    return host.empty() ? "empty" : item.name;
}

TEST_F(time_against_host, items) {
    tally found;
    for_each_locale([&](const both &locale) {
        for (const item_pair &item : items)
            for (int32_t i = 0; i < item.count; ++i) {
                if (item.host == CODESET && is_ebcdic(locale.of())) continue;
                const std::string ours =
                    locale.from_ours(vel_nl_langinfo(locale.ours(), item.ours + i));
                const char *part = nl_langinfo_l(item.host + i, locale.host());
                std::string host = part;
                // A list of the host's has a terminator between its members.
                const bool is_list = item.host == ERA || item.host == ALT_DIGITS;
                for (auto n = std::ranges::count(ours, ';'); is_list && n > 0; --n) {
                    part += strlen(part) + 1;
                    host.append(";").append(part);
                }
                found.compare(kind_of(item, host), locale.name(), item.name, ours, host);
            }
    });
    found.settle(known_items);
}

} // namespace
} // namespace differential

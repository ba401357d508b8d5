// The list of eras and the trees of names, made when a locale is completed.
#include "locale/locale_fixture.h"
#include "time/names.h"

namespace {

using namespace vel_test;

std::string date_text(const vel::era_date &date) {
    return std::to_string(date.year) + "/" + std::to_string(date.month) + "/" +
           std::to_string(date.day);
}

class time_names : public locale_test {
protected:
    vel_locale *load_with(const std::vector<std::string> &months,
                          const std::vector<std::string> &eras) {
        const std::vector<std::string> days = {"A", "B", "C", "D", "E", "F", "G"};
        object_parts parts;
        parts.time = hex_texts(days) + hex_texts(days) + counted({}) + counted(months) +
                     hex_texts({"", "", "", "", "", ""}) + counted(eras) + hex_texts({"", "", ""}) +
                     counted({});
        return load(parts);
    }
};

TEST_F(time_names, eras_are_read_in_calendar_order) {
    const struct row {
        const char *text, *expected; // offset, direction, start year, dates, names, format
    } rows[] = {{"+:2:1990/01/01:+*:Ab:%EC", "2 1 1990 1990/1/1 2147483647/12/31 Ab Ab %EC"},
                {"+:6:1873/01/01:1912/07/29:Ab:%y:Cd", "6 1 1873 1873/1/1 1912/7/29 Ab Cd %y"},
                {"+:1:1911/12/31:-*:Ab:", "1 -1 1911 -2147483648/1/1 1911/12/31 Ab Ab "},
                {"-:9:2000/01/01:2008/12/31:Ab:", "9 -1 2000 2000/1/1 2008/12/31 Ab Ab "},
                {"-:9:2008/12/31:2000/01/01:Ab:", "9 1 2008 2000/1/1 2008/12/31 Ab Ab "},
                {"+:1:-543/01/01:+*::%H:a:b", "1 1 -542 -542/1/1 2147483647/12/31  a:b %H"}};
    std::vector<std::string> texts = {"", "+:1:1900/01/01:+*:no format", "+:1:1900/01/01"};
    for (const char *start :
         {"x:1:1900/01/01:+*", "+:1x:1900/01/01:+*", "+::1900/01/01:+*", "+:1:1900/13/01:+*",
          "+:1:1900/01/32:+*", "+:1:1900/01:+*", "+:1:-*:1900/01/01", "+:1:1900/01/01:+*x",
          "+:1:9999999999/01/01:+*", "+:9999999999:1900/01/01:+*"})
        texts.push_back(start + std::string(":a:b"));
    for (const row &r : rows) texts.insert(texts.begin() + 2 * (&r - rows), r.text);
    const vel::time_derived &derived = load_with({}, texts)->time_derived;
    ASSERT_EQ(derived.era_count, static_cast<int32_t>(std::size(rows)));
    for (const row &r : rows) {
        const vel::era_entry &era = derived.eras[&r - rows];
        EXPECT_EQ(std::to_string(era.offset) + " " + std::to_string(era.direction) + " " +
                      std::to_string(era.start_year) + " " + date_text(era.first) + " " +
                      date_text(era.last) + " " + era.name.bytes + " " + era.other_name.bytes +
                      " " + era.format.bytes,
                  r.expected)
            << r.text;
    }
}

TEST_F(time_names, the_longest_name_is_found) {
    vel_locale *locale = load_with({"ab", "ABAB", "", " b a ", "ab", "b"}, {});
    const std::tuple<const char *, int32_t, std::ptrdiff_t> rows[] = {
        {"ab", 0, 2},          {"aBx", 0, 2},
        {"aba", 0, 2},         {"abAbab", 1, 4},
        {"b a", 3, 3},         {"b a  ", 3, 4},
        {" b a ", 3, 5},       {"b", 5, 1},
        {"", vel::no_name, 0}, {"xab", vel::no_name, 0},
        {"a", vel::no_name, 0}};
    for (auto [text, name, used] : rows) {
        auto found = vel::vel_match_name(locale, text, vel::list_months);
        EXPECT_EQ(found.name, name) << text;
        EXPECT_EQ(found.behind - text, used) << text;
    }
    EXPECT_EQ(vel::empty_name(locale, vel::list_months), 2);
    EXPECT_EQ(vel::vel_match_name(create_null(), "A", vel::list_days).name, vel::no_name);
}

// A list that is made up to be long is cut, so that loading stays linear.
TEST_F(time_names, long_lists_are_cut) {
    std::vector<std::string> months;
    for (int i = 0; i < 100000; ++i) months.push_back("m" + std::to_string(i));
    vel_locale *locale = load_with(months, {});
    EXPECT_EQ(vel::vel_match_name(locale, "m4095", vel::list_months).name, 4095);
    EXPECT_EQ(vel::vel_match_name(locale, "m99999", vel::list_months).name, 999);
}

} // namespace

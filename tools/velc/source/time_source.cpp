#include <charconv>

#include "velc/source/categories.h"

namespace velc {

namespace {

using time_field = keyword<time_format>;

// texts := string { ';' string }
text_list take_texts(lexer &in) {
    text_list texts;
    take_list(in, [&] { texts.push_back(in.text(in.take())); });
    return texts;
}

template <auto Member, std::size_t Least, std::size_t Most>
void take_names(lexer &in, time_format &to) {
    const token first = in.peek();
    text_list names = take_texts(in);
    if (names.size() < Least || names.size() > Most)
        in.fail_at(first.line, fmt::format("found {} names, expected {}", names.size(),
                                           Least == Most ? fmt::format("{}", Least)
                                                         : fmt::format("{} to {}", Least, Most)));
    to.*Member = std::move(names);
}

// How many there have to be is known when the whole section is.
template <auto Member> void take_months(lexer &in, time_format &to) {
    to.*Member = take_texts(in);
}

struct month_keyword {
    std::string_view name;
    text_list time_format::*member;
};
constexpr month_keyword month_keywords[] = {
    {"abmon", &time_format::abmon},
    {"mon", &time_format::mon},
    {"ab_alt_mon", &time_format::ab_alt_mon},
    {"alt_mon", &time_format::alt_mon},
};

void check_months(const lexer &in, const section<time_format> &found) {
    const calendar_row &calendar = row_of(found.own->calendar);
    for (const month_keyword &keyword : month_keywords) {
        const auto line = found.lines.find(keyword.name);
        if (line == found.lines.end()) continue;
        const std::size_t count = ((*found.own).*keyword.member).size();
        if (count != calendar.months)
            in.fail_at(line->second, fmt::format("found {} names, expected {} in the {} calendar",
                                                 count, calendar.months, calendar.name));
    }
}

void take_calendar(lexer &in, time_format &to) {
    const token t = in.take();
    const auto known = find_calendar(to_utf8(in.text(t)));
    if (!known) in.fail(t, "gregorian, hebrew, islamic or arabic");
    to.calendar = *known;
}

// week := number [ ';' number [ ';' number ] ]
void take_week(lexer &in, time_format &to) {
    to.week = {take_number_between(in, 1, 127), unset, unset};
    if (!in.accept(token_kind::semicolon)) return;
    to.week.first_date = take_number_between(in, 10101, 99991231);
    if (!in.accept(token_kind::semicolon)) return;
    to.week.min_days = take_number_between(in, 1, 127);
}

// Cuts up the text of an era.
class era_reader {
public:
    era_reader(const lexer &in, const token &t) : in_(in), token_(t), rest_(in.text(t)) {
        whole_ = rest_;
    }

    // era := direction ':' offset ':' date ':' date ':' name ':' format
    era_entry read() {
        era_entry era;
        era.text = whole_;
        const std::string direction = to_utf8(field());
        if (direction != "+" && direction != "-") fail("'+' or '-' as the direction of the era");
        era.direction = direction[0];
        era.offset = number(to_utf8(field()));
        era.start = date(to_utf8(field()));
        era.end = date(to_utf8(field()));
        era.name = field();
        era.format = std::move(rest_);
        return era;
    }

private:
    std::u32string field() {
        const std::size_t colon = rest_.find(U':');
        if (colon == rest_.npos) fail("six fields separated by ':'");
        std::u32string text = rest_.substr(0, colon);
        rest_.erase(0, colon + 1);
        return text;
    }

    int number(std::string_view text) const {
        int value = 0;
        if (text.starts_with('+')) text.remove_prefix(1);
        const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        if (error != std::errc() || stop != text.data() + text.size()) fail("a number in the era");
        return value;
    }

    // date := ['-' | '+'] year '/' month '/' day | '-*' | '+*'
    era_date date(std::string_view text) const {
        if (text == "-*") return {era_date::kind::beginning_of_time, 0, 0, 0};
        if (text == "+*") return {era_date::kind::end_of_time, 0, 0, 0};
        const std::size_t first = text.find('/'), last = text.rfind('/');
        if (first == text.npos || first == last) fail("year/month/day, -* or +* in the era");
        const era_date found{era_date::kind::date, number(text.substr(0, first)),
                             number(text.substr(first + 1, last - first - 1)),
                             number(text.substr(last + 1))};
        if (found.month < 1 || found.month > 12 || found.day < 1 || found.day > 31)
            fail("a month up to 12 and a day up to 31 in the era");
        return found;
    }

    [[noreturn]] void fail(std::string_view expected) const { in_.fail(token_, expected); }

    const lexer &in_;
    token token_;
    std::u32string rest_, whole_;
};

// eras := era { ';' era } | '""'
void take_eras(lexer &in, time_format &to) {
    to.era.clear();
    take_list(in, [&] {
        const token t = in.expect(token_kind::string, "an era in quotes");
        if (t.text.empty() && to.era.empty() && in.at_end()) return;
        to.era.push_back(era_reader(in, t).read());
    });
}

template <auto Member> constexpr auto text_of = take_text<time_format, Member>;

constexpr std::size_t many = 1000;

constexpr std::array time_keywords = {
    time_field{"calendar", take_calendar},
    time_field{"abday", take_names<&time_format::abday, 7, 7>},
    time_field{"day", take_names<&time_format::day, 7, 7>},
    time_field{"abmon", take_months<&time_format::abmon>},
    time_field{"mon", take_months<&time_format::mon>},
    time_field{"ab_alt_mon", take_months<&time_format::ab_alt_mon>},
    time_field{"alt_mon", take_months<&time_format::alt_mon>},
    time_field{"am_pm", take_names<&time_format::am_pm, 2, 2>},
    time_field{"d_t_fmt", text_of<&time_format::d_t_fmt>},
    time_field{"d_fmt", text_of<&time_format::d_fmt>},
    time_field{"t_fmt", text_of<&time_format::t_fmt>},
    time_field{"t_fmt_ampm", text_of<&time_format::t_fmt_ampm>},
    time_field{"date_fmt", text_of<&time_format::date_fmt>},
    time_field{"era", take_eras},
    time_field{"era_year", text_of<&time_format::era_year>},
    time_field{"era_d_fmt", text_of<&time_format::era_d_fmt>},
    time_field{"era_t_fmt", text_of<&time_format::era_t_fmt>},
    time_field{"era_d_t_fmt", text_of<&time_format::era_d_t_fmt>},
    time_field{"alt_digits", take_names<&time_format::alt_digits, 1, 100>},
    time_field{"week", take_week},
    time_field{"first_weekday", take_number<time_format, &time_format::first_weekday, unset, 127>},
    time_field{"first_workday", take_number<time_format, &time_format::first_workday, unset, 127>},
    time_field{"cal_direction", take_number<time_format, &time_format::cal_direction, unset, 3>},
    time_field{"timezone", take_names<&time_format::timezone, 1, many>},
};

} // namespace

section<time_format> read_time(lexer &in, const time_format &start) {
    section<time_format> found = read_keyword_section(in, "LC_TIME", time_keywords, start);
    if (found.own) check_months(in, found);
    return found;
}

} // namespace velc

#include "velc/time_section.h"

#include <algorithm>

#include <fmt/format.h>

#include "velc/object_text.h"
#include "velc/time_formats.h"

namespace velc {

namespace {

// The library prints nothing for a format that is not there.
constexpr std::u32string_view default_t_fmt_ampm = U"%I:%M:%S %p";

class time_writer {
public:
    time_writer(const time_format &from, text_encoder &encoder) : from_(from), encoder_(encoder) {}

    std::string write() {
        section_.assign(row_of(from_.calendar).name).append("\n");
        names("abday", week_from_sunday(from_.abday));
        names("day", week_from_sunday(from_.day));
        counted_names("abmon", from_.abmon);
        counted_names("mon", from_.mon);
        format("d_t_fmt", from_.d_t_fmt);
        format("d_fmt", from_.d_fmt);
        format("t_fmt", from_.t_fmt);
        names("am_pm", at_least(from_.am_pm, 2));
        format("t_fmt_ampm", from_.t_fmt_ampm.empty() ? default_t_fmt_ampm : from_.t_fmt_ampm);
        eras();
        era_format("era_d_fmt", from_.era_d_fmt, from_.d_fmt);
        era_format("era_t_fmt", from_.era_t_fmt, from_.t_fmt);
        era_format("era_d_t_fmt", from_.era_d_t_fmt, from_.d_t_fmt);
        counted_names("alt_digits", from_.alt_digits);
        return std::move(section_);
    }

private:
    void text(std::string_view keyword, std::u32string_view value) {
        append_string(section_, encoder_.encode(keyword, value));
    }
    void format(std::string_view keyword, std::u32string_view value) {
        text(keyword, library_time_format(keyword, value));
    }
    // A locale without eras has its plain formats used by the library; with eras these are written.
    void era_format(std::string_view keyword, std::u32string_view value,
                    std::u32string_view plain) {
        format(keyword, value.empty() && !from_.era.empty() ? plain : value);
    }
    void names(std::string_view keyword, const text_list &list) {
        for (const std::u32string &name : list) text(keyword, name);
    }
    void counted_names(std::string_view keyword, const text_list &list) {
        section_ += fmt::format("{}\n", list.size());
        names(keyword, list);
    }

    // The entry as written, but for the letters of its format.
    void eras() {
        section_ += fmt::format("{}\n", from_.era.size());
        for (const era_entry &era : from_.era) {
            const std::u32string_view head =
                std::u32string_view(era.text).substr(0, era.text.size() - era.format.size());
            text("era", std::u32string(head) + library_time_format("era", era.format));
        }
    }

    static text_list at_least(text_list list, std::size_t count) {
        list.resize(std::max(list.size(), count));
        return list;
    }

    // A week that is declared to begin on a Monday (1 December 1997 is one) lists Monday first.
    text_list week_from_sunday(text_list days) const {
        constexpr int a_monday = 19971201;
        days = at_least(std::move(days), 7);
        if (from_.week.first_date == a_monday)
            std::rotate(days.begin(), days.end() - 1, days.end());
        return days;
    }

    const time_format &from_;
    text_encoder &encoder_;
    std::string section_;
};

} // namespace

std::string write_time(const time_format &from, text_encoder &encoder) {
    return time_writer(from, encoder).write();
}

} // namespace velc

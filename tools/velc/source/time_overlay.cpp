#include "velc/source/time_overlay.h"

#include "velc/source/categories.h"

namespace velc {

namespace {

section<time_format> read_overlay(lexer &in, const time_format &base) {
    constexpr std::string_view category = "LC_TIME";
    section<time_format> found;
    while (in.next()) {
        const token head = in.take();
        if (head.kind != token_kind::word || head.text != category || found.present())
            in.fail(head, "one LC_TIME and nothing else");
        in.expect_end();
        found = read_time(in, base);
    }
    if (!found.present()) in.fail_at(0, "found nothing, expected LC_TIME");
    if (found.copy_line != 0)
        in.fail_at(found.copy_line, "found copy, expected keywords of LC_TIME");
    return found;
}

// Drops what belongs to the calendar of the base and is not given anew.
void leave_calendar(const lexer &in, const section<time_format> &found, time_format &time) {
    const auto kept = [&](std::string_view keyword) { return found.lines.contains(keyword); };
    if (!kept("mon"))
        in.fail_at(found.lines.at("calendar"), "found another calendar, expected its names in mon");
    if (!kept("abmon")) time.abmon = time.mon;
    if (!kept("alt_mon")) time.alt_mon.clear();
    if (!kept("ab_alt_mon")) time.ab_alt_mon.clear();
    if (!kept("era")) time.era.clear();
    if (!kept("era_year")) time.era_year.clear();
    if (!kept("era_d_fmt")) time.era_d_fmt.clear();
    if (!kept("era_t_fmt")) time.era_t_fmt.clear();
    if (!kept("era_d_t_fmt")) time.era_d_t_fmt.clear();
}

} // namespace

overlaid_time overlay_time(const time_format &base, const std::string &path,
                           std::string_view text) {
    lexer in(path, text);
    const section<time_format> found = read_overlay(in, base);
    time_format time = *found.own;
    if (time.calendar != base.calendar) leave_calendar(in, found, time);
    return {std::move(time), std::move(in.warnings())};
}

} // namespace velc

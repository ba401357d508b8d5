// vel date and vel parse-date: dates and times written and read by a format.
#include <memory>

#include <fmt/format.h>

#include "vel/dates.h"
#include "vel/display.h"
#include "vel/failure.h"
#include "vel/formatted.h"
#include "vel/invocation.h"
#include "vel/locale_handle.h"
#include "vel/locale_option.h"
#include "vel/values.h"

namespace vel_tool {
namespace {

struct date_options {
    std::string locale;
    std::string format;
    std::vector<std::string> whens;
};

class date_writer {
public:
    date_writer(const code_set &codes, const std::string &format)
        : codes_(codes), name_(format.empty() ? "%c" : format), given_(terminated(format)),
          // What %c stands for, in the code set of the locale, whatever that is.
          format_(format.empty() ? vel_nl_langinfo(codes.locale(), VEL_ITEM_D_T_FMT)
                                 : given_.c_str()) {}
    date_writer(const date_writer &) = delete;
    date_writer &operator=(const date_writer &) = delete;

    std::string text_of(const vel_time_record &record) const {
        return formatted(codes_, name_, [&](char *buffer, int32_t size) {
            return vel_mbsftime(codes_.locale(), buffer, size, format_, &record);
        });
    }

private:
    const code_set &codes_;
    std::string name_;
    std::string given_;
    const char *format_;
};

int write_dates(invocation &run, const date_options &options) {
    locale_handle locale = load_locale(options.locale);
    code_set codes(locale.get());
    date_writer writer(codes, options.format);
    std::vector<std::string> whens = options.whens;
    if (whens.empty()) whens.push_back("now");
    if (whens == std::vector<std::string>{"-"}) whens.clear();
    value_source values(whens, "\n");
    return for_each_value(run, values, [&](const std::string &when) {
        run.out.write(writer.text_of(record_of(when)) + codes.newline());
    });
}

struct parse_options {
    std::string locale;
    std::string format;
    std::vector<std::string> texts;
    std::string today;
    std::string century_rule = "C";
};

class date_reader {
public:
    date_reader(const code_set &codes, const parse_options &options)
        : codes_(codes), options_(options), format_(terminated(options.format)),
          today_(options.today.empty() ? midnight_of(record_of("now")) : record_of(options.today)) {
        vel_set_current_time(static_cast<uint16_t>(today_.day),
                             static_cast<uint16_t>(today_.month + 1),
                             static_cast<uint16_t>(today_.year + 1900));
    }
    ~date_reader() { vel_reset_time(); }

    std::vector<cell> row(const std::string &text) const {
        vel_locale *locale = codes_.locale();
        std::string input = terminated(text);
        vel_time_record record = today_;
        record.weekday = record.yearday = not_read;
        clear_error(locale);
        const char *end =
            vel_mbsptime(locale, input.c_str(), format_.c_str(), &record, options_.century_rule[0]);
        if (!end) {
            throw failure(fmt::format("cannot read '{}' by '{}': {}", printable(codes_, text),
                                      printable(codes_, options_.format), error_text(locale)));
        }
        auto used = std::min(static_cast<size_t>(end - input.c_str()), text.size());
        std::string rest = printable(codes_, std::string_view(text).substr(used));
        return {iso_text(record), number_cell(record.weekday), number_cell(record.yearday),
                rest.empty() ? "-" : "'" + rest + "'"};
    }

private:
    static constexpr int32_t not_read = -1;

    static cell number_cell(int32_t number) {
        return number == not_read ? "-" : std::to_string(number);
    }

    const code_set &codes_;
    const parse_options &options_;
    std::string format_;
    vel_time_record today_;
};

int read_dates(invocation &run, const parse_options &options) {
    locale_handle locale = load_locale(options.locale);
    code_set codes(locale.get());
    date_reader reader(codes, options);
    table list({{"date and time"}, {"weekday", true}, {"day of year", true}, {"not read"}});
    value_source texts(options.texts, codes.newline());
    int status =
        for_each_value(run, texts, [&](const std::string &text) { list.add(reader.row(text)); });
    if (!list.empty()) list.print(run.out, run.look);
    return status;
}

} // namespace

void add_date_command(CLI::App &app, invocation &run) {
    CLI::App *command = app.add_subcommand("date", "write dates and times as the locale has it");
    auto options = std::make_shared<date_options>();
    add_locale_option(command, options->locale);
    command
        ->add_option("-d,--date", options->whens,
                     std::string(when_help) + ";\n- for the lines of standard input; may be given\n"
                                              "several times")
        ->type_name("WHEN")
        ->allow_extra_args(false);
    command->add_option("FORMAT", options->format, "how, such as '%A, %e. %B %Y'; %c without it")
        ->type_name("");
    command->footer(
        "A: weekday, B: month, d or e: day, Y: year, H: hour, M: minute, S: second, F: fraction,\n"
        "x: date, X: time, c: both; E before a letter for eras, O for the locale's own digits. A\n"
        "locale of another calendar gets the date converted.\n\n"
        "    vel date -l de_DE                                  now\n"
        "    vel date -l fr_FR -d 2026-11-21 '%A %e %B %Y'      samedi 21 novembre 2026\n"
        "    vel date -l ja_JP -d 2026-11-21 %Ex                \xE4\xBB\xA4\xE5\x92\x8C"
        "8\xE5\xB9\xB4"
        "11\xE6\x9C\x88"
        "21\xE6\x97\xA5\n"
        "    vel date -l en_US@hebr -d 2026-11-21 '%d %B %Y'    11 Kislev 5787\n\n"
        "Format and result are in the code set of the locale.");
    command->callback(
        [&run, options] { run.action = [&run, options] { return write_dates(run, *options); }; });
}

void add_parse_date_command(CLI::App &app, invocation &run) {
    CLI::App *command = app.add_subcommand("parse-date", "read dates and times of a locale");
    auto options = std::make_shared<parse_options>();
    add_locale_option(command, options->locale);
    command
        ->add_option("--century-rule", options->century_rule,
                     "of a two-digit year: C closest to today, F after\n"
                     "today, P before, R the century of today")
        ->type_name("RULE")
        ->check(CLI::IsMember({"C", "F", "P", "R"}).description(""));
    command
        ->add_option("-d,--today", options->today,
                     "stands for today in the century rule, and for what the\n"
                     "text does not say; written as in vel date")
        ->type_name("WHEN");
    command->add_option("FORMAT", options->format, "as for vel date")->type_name("")->required();
    command->add_option("TEXT", options->texts, std::string("dates") + values_help)->type_name("");
    command->footer(
        "Columns: date and time, weekday (0 is Sunday), day of the year, text that was not read.\n"
        "'-' is what is not known. The day of the year of a full date counts from 1.\n\n"
        "    vel parse-date -l de_DE '%e. %B %Y' '21. November 2026'\n"
        "    vel parse-date -l en_US '%m/%d/%y' --century-rule P 11/21/77\n\n"
        "Format and text are in the code set of the locale.");
    command->callback(
        [&run, options] { run.action = [&run, options] { return read_dates(run, *options); }; });
}

} // namespace vel_tool

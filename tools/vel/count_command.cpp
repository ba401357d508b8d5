// vel count: characters, lines, bytes and invalid sequences of text.
#include <memory>

#include <fmt/format.h>

#include "vel/failure.h"
#include "vel/invalid_report.h"
#include "vel/locale_handle.h"
#include "vel/locale_option.h"
#include "vel/text_stream.h"

namespace vel_tool {
namespace {

struct count_options {
    std::string locale;
    std::vector<std::string> files;
    report_options report;
};

struct counts {
    uint64_t characters = 0;
    uint64_t lines = 0;
    uint64_t bytes = 0;
    uint64_t invalid = 0;

    counts &operator+=(const counts &other) {
        characters += other.characters;
        lines += other.lines;
        bytes += other.bytes;
        invalid += other.invalid;
        return *this;
    }
};

class counter : public text_visitor {
public:
    counter(const code_set &codes, invalid_report &report) : codes_(codes), report_(report) {}

    bool take(text_run run) override {
        if (codes_.has_holes() && codes_.any_hole(run.view())) return false;
        int32_t characters =
            tuk_vel_im_mbfslen(codes_.locale(), run.data, static_cast<int32_t>(run.size));
        if (characters < 0) return false;
        take_valid(run, static_cast<size_t>(characters));
        return true;
    }

    void take_valid(text_run run, size_t characters) override {
        total_.characters += characters;
        total_.lines += codes_.newlines(run.view());
        total_.bytes += run.size;
    }

    void take_invalid(std::string_view text, uint64_t offset) override {
        total_.bytes += text.size();
        ++total_.invalid;
        report_.add(text, offset);
    }

    const counts &total() const { return total_; }

private:
    const code_set &codes_;
    invalid_report &report_;
    counts total_;
};

std::vector<cell> row(const counts &c, const std::string &name) {
    return {std::to_string(c.characters), std::to_string(c.lines), std::to_string(c.bytes),
            std::to_string(c.invalid), name};
}

counts count_file(const invocation &run, const count_options &options, const code_set &codes,
                  const std::string &path) {
    input source(path);
    invalid_report report(run, source.name(), codes.name(), options.report.most());
    counter visitor(codes, report);
    walk_text(codes, source, visitor);
    report.finish();
    return visitor.total();
}

int count_files(invocation &run, const count_options &options) {
    locale_handle locale = load_locale(options.locale);
    code_set codes(locale.get());
    table list(
        {{"characters", true}, {"lines", true}, {"bytes", true}, {"invalid", true}, {"file"}});
    counts total;
    bool all_read = true;
    std::vector<std::string> files = files_or_input(options.files);
    for (const std::string &path : files) {
        try {
            counts one = count_file(run, options, codes, path);
            list.add(row(one, path));
            total += one;
        } catch (const failure &error) { // the other files are counted all the same
            run.warn(error.what());
            all_read = false;
        }
    }
    if (files.size() > 1) list.add(row(total, "total"));
    list.print(run.out, run.look);
    return all_read && total.invalid == 0 ? exit_success : exit_failure;
}

} // namespace

void add_count_command(CLI::App &app, invocation &run) {
    CLI::App *command =
        app.add_subcommand("count", "count characters, lines, bytes and invalid sequences");
    auto options = std::make_shared<count_options>();
    add_locale_option(command, options->locale);
    add_report_options(command, options->report);
    command->add_option("FILE", options->files, "files; standard input without any or for '-'")
        ->type_name("");
    command->footer(
        "Columns: characters, lines, bytes, invalid sequences, file. Invalid sequences are\n"
        "reported on standard error with the number of their first byte, from 0, and make\n"
        "the exit status 1. Text of any size is read in constant memory.");
    command->callback(
        [&run, options] { run.action = [&run, options] { return count_files(run, *options); }; });
}

} // namespace vel_tool

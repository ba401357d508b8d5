// vel case: text in upper or lower case.
#include <memory>
#include <optional>

#include <fmt/format.h>

#include "vel/failure.h"
#include "vel/invalid_report.h"
#include "vel/locale_handle.h"
#include "vel/locale_option.h"
#include "vel/text_stream.h"

namespace vel_tool {
namespace {

struct case_options {
    std::string direction;
    std::string locale;
    std::string target;
    std::vector<std::string> files;
    report_options report;
};

using string_mapping = int32_t (*)(vel_locale *locale, char *out, const char *text);

class case_mapper : public text_visitor {
public:
    case_mapper(const code_set &codes, string_mapping map, output &out, invalid_report &report)
        : codes_(codes), map_(map), out_(out), report_(report) {}

    bool take(text_run run) override {
        if (codes_.has_holes() && codes_.any_hole(run.view())) return false;
        if (!convert(run)) return false;
        out_.write({converted_.data(), used_});
        return true;
    }

    void take_valid(text_run run, size_t) override {
        if (!convert(run)) throw failure("the library refused to convert valid text");
        out_.write({converted_.data(), used_});
    }

    void take_invalid(std::string_view text, uint64_t offset) override {
        out_.write(text);
        report_.add(text, offset);
    }

private:
    // The library takes terminated text, so the run is converted piece by piece between the null
    // characters in it, and those are put back.
    bool convert(text_run run) {
        int32_t room = vel_case_conv_outbuflen(codes_.locale(), static_cast<int32_t>(run.size));
        converted_.resize(std::max(static_cast<size_t>(room), run.size) + text_run::spare_bytes);
        used_ = 0;
        char saved[text_run::spare_bytes];
        memcpy(saved, run.data + run.size, sizeof saved);
        memset(run.data + run.size, 0, sizeof saved);
        bool good = convert_terminated(run);
        memcpy(run.data + run.size, saved, sizeof saved);
        return good;
    }

    bool convert_terminated(text_run run) {
        std::string_view rest = run.view();
        for (;;) {
            int32_t written = map_(codes_.locale(), converted_.data() + used_, rest.data());
            if (written < 0) return false;
            used_ += static_cast<size_t>(written);
            size_t null = codes_.find_null(rest);
            if (null == std::string_view::npos) return true;
            used_ += codes_.shortest(); // the terminator that was written is the null character
            rest.remove_prefix(null + codes_.shortest());
        }
    }

    const code_set &codes_;
    string_mapping map_;
    output &out_;
    invalid_report &report_;
    std::vector<char> converted_;
    size_t used_ = 0;
};

uint64_t convert_files(invocation &run, const case_options &options, const code_set &codes,
                       output &out) {
    string_mapping map = options.direction == "upper" ? vel_tombsupper : vel_tombslower;
    uint64_t invalid = 0;
    for (const std::string &path : files_or_input(options.files)) {
        input source(path);
        invalid_report report(run, source.name(), codes.name(), options.report.most());
        case_mapper visitor(codes, map, out, report);
        walk_text(codes, source, visitor);
        report.finish();
        invalid += report.count();
    }
    return invalid;
}

int change_case(invocation &run, const case_options &options) {
    locale_handle locale = load_locale(options.locale);
    code_set codes(locale.get());
    std::optional<replacement_file> target;
    if (!options.target.empty()) target.emplace(options.target);
    uint64_t invalid = convert_files(run, options, codes, target ? target->stream() : run.out);
    if (target) target->commit();
    return invalid == 0 ? exit_success : exit_failure;
}

} // namespace

void add_case_command(CLI::App &app, invocation &run) {
    CLI::App *command = app.add_subcommand("case", "write text in upper or lower case");
    auto options = std::make_shared<case_options>();
    command->add_option("DIRECTION", options->direction, "upper or lower")
        ->type_name("")
        ->required()
        ->check(CLI::IsMember({"upper", "lower"}).description(""));
    command->add_option("FILE", options->files, "files; standard input without any or for '-'")
        ->type_name("");
    add_locale_option(command, options->locale);
    command
        ->add_option("-o,--output", options->target,
                     "write this file; it is replaced when all is written, so it may\n"
                     "be one of those read")
        ->type_name("OUT");
    add_report_options(command, options->report);
    command->footer(
        "Invalid bytes are passed through as they are, reported on standard error with their\n"
        "place in the file, and make the exit status 1. Text of any size is converted in\n"
        "constant memory.");
    command->callback(
        [&run, options] { run.action = [&run, options] { return change_case(run, *options); }; });
}

} // namespace vel_tool

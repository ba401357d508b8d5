// vel convert: text from one code set to another.
#include <memory>
#include <optional>
#include <unistd.h>

#include <fmt/format.h>

#include "vel/convert_list.h"
#include "vel/convert_stream.h"
#include "vel/failure.h"

namespace vel_tool {
namespace {

struct convert_options {
    std::string from = "UTF-8";
    std::string to = "UTF-8";
    std::string target;
    std::vector<std::string> files;
    bool strict = false;
    bool substitute = false;
    bool skip = false;
    bool quiet = false;
    bool list = false;
    uint64_t report = 0;

    remedy what_to_do() const {
        return skip ? remedy::skip : substitute ? remedy::substitute : remedy::stop;
    }
};

uint64_t convert_file(const invocation &run, const convert_options &options,
                      conversion_chain &chain, const std::string &path, output &out,
                      convert_progress &progress) {
    input source(path);
    problem_log problems(run, chain, source.name(), options.what_to_do(), options.report, progress);
    convert_stream(chain, out, problems).run(source, progress);
    if (!options.quiet) problems.summarize();
    return problems.invalid();
}

uint64_t convert_files(const invocation &run, const convert_options &options, output &out) {
    conversion_chain chain(open_route(options.from, options.to));
    if (chain.is_unchecked() && !options.quiet) {
        run.warn(fmt::format("{} has no charmap to check characters by: bytes are copied as they "
                             "stand",
                             options.from));
    }
    bool is_text_on_terminal = options.target.empty() && isatty(STDOUT_FILENO);
    bool is_progress_seen = !options.quiet && isatty(STDERR_FILENO) && !is_text_on_terminal;
    std::vector<std::string> files = files_or_input(options.files);
    convert_progress progress(files, is_progress_seen);
    uint64_t invalid = 0;
    for (const std::string &path : files) {
        invalid += convert_file(run, options, chain, path, out, progress);
    }
    return invalid;
}

int convert(invocation &run, const convert_options &options) {
    if (options.list) {
        list_conversions(run);
        return exit_success;
    }
    if (!options.target.empty()) {
        replacement_file target(options.target);
        uint64_t invalid = convert_files(run, options, target.stream());
        target.commit();
        return invalid == 0 ? exit_success : exit_failure;
    }
    try {
        return convert_files(run, options, run.out) == 0 ? exit_success : exit_failure;
    } catch (const failure &) {
        run.out.flush(); // what was converted before the failure
        throw;
    }
}

} // namespace

void add_convert_command(CLI::App &app, invocation &run) {
    CLI::App *command = app.add_subcommand("convert", "convert text from one code set to another");
    auto options = std::make_shared<convert_options>();
    command->add_option("-f,--from", options->from, "the code set of the text, by any of its names")
        ->type_name("CODESET")
        ->capture_default_str();
    command->add_option("-t,--to", options->to, "the code set to write")
        ->type_name("CODESET")
        ->capture_default_str();
    command
        ->add_option("-o,--output", options->target,
                     "write this file; it is replaced when all is written, so it may\n"
                     "be one of those read")
        ->type_name("OUT");
    command->add_option("FILE", options->files, "files; standard input without any or for '-'")
        ->type_name("");
    CLI::Option *strict =
        command->add_flag("--strict", options->strict,
                          "stop at the first character that cannot be converted (default)");
    CLI::Option *substitute = command->add_flag("--substitute", options->substitute,
                                                "write the substitute of the target in its place");
    CLI::Option *skip = command->add_flag("-c,--skip", options->skip, "leave it out");
    strict->excludes(substitute)->excludes(skip);
    substitute->excludes(skip);
    command
        ->add_option("--report", options->report,
                     "report the first N that are replaced or left out of a file")
        ->type_name("N")
        ->capture_default_str();
    command->add_flag("-q,--quiet", options->quiet, "no progress, no count of what was replaced");
    command->add_flag("-l,--list", options->list, "list the conversions that are installed");
    command->footer(
        "Where no conversion is installed for the pair, text goes by way of UTF-8. From a code "
        "set\n"
        "to itself it is checked and copied. Each file is a text of its own, with shift states "
        "that\n"
        "begin and end with it. Text of any size is converted in constant memory.\n\n"
        "Exit status: 1 when something could not be converted and --strict held, or when text was\n"
        "invalid; characters that were replaced or left out as was asked for do not count.");
    command->callback(
        [&run, options] { run.action = [&run, options] { return convert(run, *options); }; });
}

} // namespace vel_tool

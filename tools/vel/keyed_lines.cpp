#include "vel/keyed_lines.h"

#include <cstdint>

#include <fmt/format.h>

#include "vel/display.h"
#include "vel/failure.h"
#include "vel/line_reader.h"
#include "vel/locale_option.h"

namespace vel_tool {
namespace {

void report_line(invalid_report &report, const code_set &codes, const line_reader &lines,
                 std::string_view line) {
    size_t at = first_invalid(codes, line);
    std::string_view rest = line.substr(at);
    report.add(rest.substr(0, codes.invalid_bytes(rest)), lines.offset() + at, lines.number());
}

void check_separator(const code_set &codes, const std::string &separator) {
    if (separator.empty()) return;
    if (codes.character(separator) == static_cast<int>(separator.size())) return;
    throw failure(
        fmt::format("'{}' is not one character of {}", printable(codes, separator), codes.name()),
        exit_usage);
}

} // namespace

void add_line_options(CLI::App *command, line_options &options) {
    command->add_option("FILE", options.files, "files; standard input without any or for '-'")
        ->type_name("");
    add_locale_option(command, options.locale);
    command
        ->add_option("-k,--key", options.field.number,
                     "take the key from this field, from 1, in place of the\n"
                     "line; blanks of the locale separate fields")
        ->type_name("FIELD")
        ->check(CLI::Range(uint32_t{1}, UINT32_MAX).description(""));
    command
        ->add_option("-t,--separator", options.field.separator,
                     "each one of this character separates fields")
        ->type_name("CHAR");
    add_report_options(command, options.report);
}

uint64_t for_each_line(const invocation &run, const line_options &options, const code_set &codes,
                       const std::function<void(const keyed_line &)> &take) {
    check_separator(codes, options.field.separator);
    key_maker keys(codes, options.field);
    uint64_t invalid = 0;
    for (const std::string &path : files_or_input(options.files)) {
        input source(path);
        line_reader lines(source, codes.newline_places());
        invalid_report report(run, source.name(), codes.name(), options.report.most());
        std::string_view line;
        while (lines.next(line)) {
            auto key = keys.key_of(line);
            if (!key) report_line(report, codes, lines, line);
            take({key.has_value(), key.value_or(line), line});
        }
        report.finish();
        invalid += report.count();
    }
    return invalid;
}

} // namespace vel_tool

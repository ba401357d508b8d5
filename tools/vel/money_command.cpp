// vel money: amounts of money as the locale has them.
#include <memory>

#include <fmt/format.h>

#include "vel/display.h"
#include "vel/failure.h"
#include "vel/formatted.h"
#include "vel/invocation.h"
#include "vel/locale_handle.h"
#include "vel/locale_option.h"
#include "vel/number_directive.h"
#include "vel/values.h"

namespace vel_tool {
namespace {

struct money_options {
    std::string locale;
    std::string format;
    std::vector<std::string> amounts;
};

// Every directive takes an amount of its own. They all get the same one, as many times as a format
// may have directives.
constexpr size_t most_directives = 4;

void check_directives(const code_set &codes, const std::string &format) {
    size_t count = count_percent_signs(codes, format);
    if (count >= 1 && count <= most_directives) return;
    throw failure(fmt::format("'{}' has {}: give 1 to {} directives such as '%n' or '%i'",
                              printable(codes, format),
                              count == 0 ? "no directive" : fmt::format("{} '%'", count),
                              most_directives),
                  exit_usage);
}

int write_amounts(invocation &run, const money_options &options) {
    locale_handle locale = load_locale(options.locale);
    code_set codes(locale.get());
    check_directives(codes, options.format);
    std::string format = terminated(options.format);
    value_source amounts(options.amounts, "\n");
    return for_each_value(run, amounts, [&](const std::string &value) {
        double amount = double_value(value);
        auto write = [&](char *buffer, int32_t size) {
            return vel_mbsfmon(locale.get(), buffer, size, format.c_str(), amount, amount, amount,
                               amount);
        };
        run.out.write(formatted(codes, options.format, write) + codes.newline());
    });
}

} // namespace

void add_money_command(CLI::App &app, invocation &run) {
    CLI::App *command = app.add_subcommand("money", "write amounts of money as the locale has it");
    auto options = std::make_shared<money_options>();
    add_locale_option(command, options->locale);
    command
        ->add_option("FORMAT", options->format,
                     "text with %n (national) or %i (international form)")
        ->type_name("")
        ->required();
    command->add_option("AMOUNT", options->amounts, std::string("numbers as in C") + values_help)
        ->type_name("");
    command->footer(
        "A directive is %, flags, width, #digits, .digits, and n or i. Flags: =c fills with c, ^\n"
        "no grouping, + signs, ( parentheses around negative amounts, ! no symbol, - to the left.\n"
        "An amount is written by every directive of the format.\n\n"
        "    vel money -l de_DE %n 1234.5                1.234,50 \xE2\x82\xAC\n"
        "    vel money -l de_DE '%n (%i)' 1234.5         1.234,50 \xE2\x82\xAC (1.234,50 EUR)\n"
        "    vel money -l en_US '%=*(#7n' -- -12         ($*******12.00)\n");
    command->callback(
        [&run, options] { run.action = [&run, options] { return write_amounts(run, *options); }; });
}

} // namespace vel_tool

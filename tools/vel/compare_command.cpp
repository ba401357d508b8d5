// vel compare: which of two texts comes first.
#include <memory>

#include <fmt/format.h>

#include "vel/display.h"
#include "vel/failure.h"
#include "vel/formatted.h"
#include "vel/invocation.h"
#include "vel/line_key.h"
#include "vel/locale_handle.h"
#include "vel/locale_option.h"

namespace vel_tool {
namespace {

struct compare_options {
    std::string locale;
    std::string first, second;
};

void require_valid(const code_set &codes, std::string_view text) {
    size_t at = first_invalid(codes, text);
    if (at == text.size()) return;
    std::string_view rest = text.substr(at);
    throw failure(fmt::format("'{}': byte {}: {} is no character of {}", printable(codes, text), at,
                              hex_bytes(rest.substr(0, codes.invalid_bytes(rest))), codes.name()));
}

int32_t order_of(vel_locale *locale, const std::string &a, const std::string &b) {
    clear_error(locale);
    int32_t order = tuk_vel_im_mbfscoll(locale, a.data(), static_cast<int32_t>(a.size()), b.data(),
                                        static_cast<int32_t>(b.size()));
    if (order == 0 && error_of(locale) != 0) {
        throw failure("cannot compare: " + error_text(locale));
    }
    return order;
}

int compare(invocation &run, const compare_options &options) {
    locale_handle locale = load_locale(options.locale);
    code_set codes(locale.get());
    require_valid(codes, options.first);
    require_valid(codes, options.second);
    int32_t order = order_of(locale.get(), options.first, options.second);
    run.out.write(fmt::format("{} {} {}\n", printable(codes, options.first),
                              order < 0   ? '<'
                              : order > 0 ? '>'
                                          : '=',
                              printable(codes, options.second)));
    return exit_success;
}

} // namespace

void add_compare_command(CLI::App &app, invocation &run) {
    CLI::App *command = app.add_subcommand("compare", "show which of two texts comes first");
    auto options = std::make_shared<compare_options>();
    add_locale_option(command, options->locale);
    command->add_option("A", options->first, "a text")->type_name("")->required();
    command->add_option("B", options->second, "another")->type_name("")->required();
    command->footer("Prints both with '<', '=' or '>' between them, by the order that 'vel sort'\n"
                    "has. The texts are in the code set of the locale.\n\n"
                    "    vel compare -l de_DE \xC3\x84pfel Zebra     \xC3\x84pfel < Zebra\n"
                    "    vel compare -l sv_SE \xC3\x84pfel Zebra     \xC3\x84pfel > Zebra");
    command->callback(
        [&run, options] { run.action = [&run, options] { return compare(run, *options); }; });
}

} // namespace vel_tool

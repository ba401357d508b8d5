// vel info: items of a locale by name or number.
#include <memory>

#include <fmt/format.h>

#include "vel/display.h"
#include "vel/information.h"
#include "vel/invocation.h"
#include "vel/locale_handle.h"
#include "vel/locale_option.h"
#include "vel/values.h"

namespace vel_tool {
namespace {

struct info_options {
    std::string locale;
    std::vector<std::string> items;
};

const std::vector<std::string> everything = {"ctype", "numeric", "monetary", "time", "messages"};

int show_information(invocation &run, const info_options &options) {
    locale_handle locale = load_locale(options.locale);
    code_set codes(locale.get());
    value_source words(options.items.empty() ? everything : options.items, "\n");
    return for_each_value(run, words, [&](const std::string &word) {
        for (const info_value &value : information_named(codes, word)) {
            std::string text =
                value.is_text ? fmt::format("\"{}\"", printable(codes, value.text)) : value.text;
            run.out.write(fmt::format("{}={}\n", value.name, text));
        }
    });
}

} // namespace

void add_info_command(CLI::App &app, invocation &run) {
    CLI::App *command = app.add_subcommand("info", "show single items of a locale");
    auto options = std::make_shared<info_options>();
    add_locale_option(command, options->locale);
    command
        ->add_option("ITEM", options->items,
                     "names (d_fmt, day_1, abmon_3), numbers of items (0 to 73),\n"
                     "categories (LC_TIME); everything without any")
        ->type_name("");
    command->footer(
        "Texts stand in quotes as in vel locale. The number 127 is one that the locale does not\n"
        "give; -1 ends a grouping.\n\n"
        "    vel info -l de_DE d_fmt day_1            d_fmt=\"%d.%m.%Y\" and day_1=\"Sonntag\"\n"
        "    vel info -l en_US LC_MONETARY            all about money\n");
    command->callback([&run, options] {
        run.action = [&run, options] { return show_information(run, *options); };
    });
}

} // namespace vel_tool

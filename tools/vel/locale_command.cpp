// vel locale: what a locale holds and where it came from.
#include <memory>

#include <fmt/format.h>

#include "vel/code_set.h"
#include "vel/display.h"
#include "vel/information.h"
#include "vel/installation.h"
#include "vel/invocation.h"
#include "vel/locale_handle.h"
#include "vel/record_view.h"
#include "vel/search_log.h"

namespace vel_tool {
namespace {

std::vector<std::string> opened_files() {
    std::vector<std::string> files;
    for (const attempt &tried : search_log::attempts()) {
        bool known = std::find(files.begin(), files.end(), tried.path) != files.end();
        if (tried.error == 0 && !known) files.push_back(tried.path);
    }
    return files;
}

std::string shown(const code_set &codes, const info_value &value) {
    if (value.is_text) return fmt::format("\"{}\"", printable(codes, value.text));
    return value.text == std::to_string(number_not_given) ? "not given" : value.text;
}

std::string shown(const code_set &codes, const info_group &group) {
    std::string line;
    for (const info_value &value : group.values) {
        line += (line.empty() ? "" : " ") + shown(codes, value);
    }
    return line.empty() ? "none" : line;
}

void show_codeset(listing &list, const code_set &codes) {
    auto number = codeset_number(codes.name());
    std::string text = number ? fmt::format("{} ({}, {:04x})", codes.name(), *number, *number)
                              : codes.name() + " (not in the registry)";
    list.item("codeset", text);
}

int show_locale(invocation &run, const std::string &name) {
    locale_handle locale = load_locale(name);
    std::vector<std::string> files = opened_files();
    code_set codes(locale.get());
    listing list(run.out, run.look);
    list.section("locale");
    list.item("name", name.empty() ? "(from the environment)" : name);
    for (const std::string &file : files) list.item("file", file);
    show_codeset(list, codes);
    for (const record_section &section : record_sections(locale.get())) {
        list.section(section.name);
        list.item("file", section.file);
        list.item("codeset", section.codeset);
        for (const record_item &item : section.items) list.item(item.name, item.value);
        if (section.category == VEL_CTYPE) continue; // its code set stands above
        for (const info_group &group : information_of(codes, section.category)) {
            list.item(group.name, shown(codes, group));
        }
    }
    return 0;
}

} // namespace

void add_locale_command(CLI::App &app, invocation &run) {
    CLI::App *command = app.add_subcommand("locale", "show what a locale holds and its files");
    auto name = std::make_shared<std::string>();
    command
        ->add_option("LOCALE", *name,
                     "as for -l of the other commands: de_DE.UTF-8@euro, ja_JP.SJIS, C;\n"
                     "without it the locale of the environment")
        ->type_name("");
    command->footer(
        "Texts stand in quotes. Characters that cannot be seen are written <U+00A0>, and\n"
        "bytes of a code set other than UTF-8 that are not ASCII \\xNN.");
    command->callback(
        [&run, name] { run.action = [&run, name] { return show_locale(run, *name); }; });
}

} // namespace vel_tool

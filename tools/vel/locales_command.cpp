// vel locales: the locale objects in the data directories.
#include <fmt/format.h>

#include "vel/failure.h"
#include "vel/installation.h"
#include "vel/invocation.h"

namespace vel_tool {
namespace {

int show_locales(invocation &run) {
    table list({{"locale"}, {"code set"}, {"number", true}, {"file"}});
    std::string searched;
    bool all_well = true;
    for (const std::string &directory : locale_directories()) {
        searched += (searched.empty() ? "" : ", ") + directory;
        for (const data_object &object : locales_in(directory)) {
            if (!object.problem.empty()) {
                run.warn(fmt::format("{}: {}", object.path(), object.problem));
                all_well = false;
                continue;
            }
            list.add({object.specification, object.codeset, std::to_string(*object.number),
                      object.path()});
        }
    }
    if (list.empty()) {
        throw failure(fmt::format("no locales: looked in {}; give the installation directory with "
                                  "--data or CORVANEDIR",
                                  searched.empty() ? "no directory" : searched));
    }
    list.print(run.out, run.look);
    return all_well ? exit_success : exit_failure;
}

} // namespace

void add_locales_command(CLI::App &app, invocation &run) {
    CLI::App *command = app.add_subcommand("locales", "list the locales that are installed");
    command->footer("Columns: what -l takes, code set, its number, file.");
    command->callback([&run] { run.action = [&run] { return show_locales(run); }; });
}

} // namespace vel_tool

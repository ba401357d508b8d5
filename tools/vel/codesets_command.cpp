// vel codesets: the registry, and which code sets have data.
#include <map>

#include <fmt/format.h>

#include "vel/failure.h"
#include "vel/installation.h"
#include "vel/invocation.h"
#include "vel/search_log.h"
#include "vels.h"

namespace vel_tool {
namespace {

struct codeset_row {
    std::string names;
    bool has_charmap = false;
    int locales = 0;
};

using rows_by_number = std::map<uint16_t, codeset_row>;

rows_by_number collect() {
    rows_by_number rows;
    for (const codeset_name &entry : installed_registry().names) {
        // Of a name that occurs twice the first one counts.
        if (codeset_number(entry.name) != entry.number) continue;
        std::string &names = rows[entry.number].names;
        names += (names.empty() ? "" : ",") + entry.name;
    }
    for (const std::string &directory : charmap_directories()) {
        for (const data_object &object : charmaps_in(directory)) {
            if (object.number) rows[*object.number].has_charmap = true;
        }
    }
    for (const std::string &directory : locale_directories()) {
        for (const data_object &object : locales_in(directory)) {
            if (object.number) ++rows[*object.number].locales;
        }
    }
    return rows;
}

int show_codesets(invocation &run) {
    if (int32_t error = installed_registry().error) {
        throw failure(
            fmt::format("cannot read the code-set registry: {} (error {}): tried {}; give "
                        "the installation directory with --data or CORVANEDIR",
                        vel_strerror(error), error, search_log::failed_paths()));
    }
    table list({{"number", true}, {"hex"}, {"charmap"}, {"locales", true}, {"names"}});
    for (const auto &[number, row] : collect()) {
        list.add({std::to_string(number), fmt::format("{:04x}", number),
                  row.has_charmap ? "yes" : "-", row.locales ? std::to_string(row.locales) : "-",
                  row.names.empty() ? "-" : row.names});
    }
    list.print(run.out, run.look);
    return exit_success;
}

} // namespace

void add_codesets_command(CLI::App &app, invocation &run) {
    CLI::App *command = app.add_subcommand("codesets", "list the code sets of the registry");
    command->footer("Columns: number, number in hexadecimal, whether there is a charmap, how many\n"
                    "locales use it, names separated by commas.");
    command->callback([&run] { run.action = [&run] { return show_codesets(run); }; });
}

} // namespace vel_tool

#include <csignal>
#include <sstream>

#include <fmt/format.h>

#include "vel/failure.h"
#include "vel/invocation.h"
#include "vel/search_log.h"
#include "vels.h"

namespace {

using namespace vel_tool;

constexpr char description[] = "Look at VELS locales and put them to work on text.";

constexpr char footer[] =
    "Files are looked for in the directories of VEL_PATH or else beneath CORVANEDIR.\n"
    "Exit status: 0 all is well, 1 something failed or text was invalid, 2 wrong usage.\n"
    "'vel COMMAND --help' tells more, 'vel doctor' finds out why a locale does not load.";

std::string version_text() {
    return fmt::format("vel {}\nlocale objects {}, charmap objects {}, conversion objects {}",
                       vel_version(), vel_lc_version(), vel_cm_version(), vel_cv_version());
}

constexpr char command_footer[] =
    "\n\n--data DIR and --color WHEN may be given too: see 'vel --help'.";

// What is wrong with the command line, and whose help explains it.
std::string usage_message(const CLI::App &app, const CLI::ParseError &error) {
    for (const CLI::App *given : app.get_subcommands()) {
        return fmt::format("{}: see 'vel {} --help'", error.what(), given->get_name());
    }
    if (error.get_exit_code() != static_cast<int>(CLI::ExitCodes::RequiredError)) {
        return fmt::format("{}: see 'vel --help'", error.what());
    }
    std::vector<std::string> unknown = app.remaining();
    if (unknown.empty()) return "no command given: see 'vel --help'";
    return fmt::format("there is no command '{}': see 'vel --help'", unknown.front());
}

int parse_and_run(CLI::App &app, invocation &run, int argc, char **argv) {
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        std::ostringstream text, ignored;
        if (app.exit(error, text, ignored) == 0) {
            run.out.write(text.str());
            return exit_success;
        }
        throw failure(usage_message(app, error), exit_usage);
    }
    return run.action();
}

int run_tool(invocation &run, int argc, char **argv) {
    CLI::App app{description, "vel"};
    std::string data;
    std::string colour = "auto";
    app.require_subcommand(1);
    app.set_help_flag("-h,--help", "print this help");
    app.fallthrough();
    app.footer(footer);
    app.set_version_flag("--version", version_text, "print the version and the formats read");
    app.add_option("--data", data,
                   "installation directory for this run, in place of\n"
                   "CORVANEDIR and VEL_PATH")
        ->type_name("DIR");
    app.add_option("--color", colour,
                   "colours: auto (on a terminal, unless NO_COLOR is set),\n"
                   "always, never")
        ->type_name("WHEN")
        ->check(CLI::IsMember({"auto", "always", "never"}));
    app.parse_complete_callback([&] {
        search_log::install(data);
        run.look = style_for(1, colour);
        run.error_look = style_for(2, colour);
    });
    add_date_command(app, run);
    add_parse_date_command(app, run);
    add_number_command(app, run);
    add_parse_number_command(app, run);
    add_money_command(app, run);
    add_count_command(app, run);
    add_case_command(app, run);
    add_classify_command(app, run);
    add_sort_command(app, run);
    add_sort_key_command(app, run);
    add_compare_command(app, run);
    add_convert_command(app, run);
    add_symbols_command(app, run);
    add_charmap_command(app, run);
    add_locale_command(app, run);
    add_info_command(app, run);
    add_locales_command(app, run);
    add_codesets_command(app, run);
    add_doctor_command(app, run);
    for (CLI::App *command : app.get_subcommands({})) {
        command->footer(command->get_footer() + command_footer);
    }
    return parse_and_run(app, run, argc, argv);
}

} // namespace

void vel_tool::invocation::warn(const std::string &message) const {
    complain(fmt::format("{} {}\n", error_look.in(paint::bad, "vel:"), message));
}

int main(int argc, char **argv) {
    signal(SIGPIPE, SIG_IGN); // a closed pipe is an error of write
    invocation run;
    try {
        int status = run_tool(run, argc, argv);
        run.out.flush();
        return status;
    } catch (const reader_gone &) {
        return exit_failure;
    } catch (const failure &error) {
        run.warn(error.what());
        return error.status();
    } catch (const std::exception &error) {
        run.warn(error.what());
        return exit_failure;
    }
}

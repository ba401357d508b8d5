// What every command gets: where to write, how it should look, and the way to say what to run.
#pragma once

#include <functional>

#include <CLI/CLI.hpp>

#include "vel/output.h"
#include "vel/style.h"

namespace vel_tool {

struct invocation {
    output out{1, "standard output"};
    style look;
    style error_look;
    std::function<int()> action; // of the command given, returns the exit status

    void warn(const std::string &message) const;
};

// Each declares one command and its options.
void add_locale_command(CLI::App &app, invocation &run);
void add_locales_command(CLI::App &app, invocation &run);
void add_codesets_command(CLI::App &app, invocation &run);
void add_count_command(CLI::App &app, invocation &run);
void add_case_command(CLI::App &app, invocation &run);
void add_classify_command(CLI::App &app, invocation &run);
void add_sort_command(CLI::App &app, invocation &run);
void add_sort_key_command(CLI::App &app, invocation &run);
void add_compare_command(CLI::App &app, invocation &run);
void add_convert_command(CLI::App &app, invocation &run);
void add_symbols_command(CLI::App &app, invocation &run);
void add_charmap_command(CLI::App &app, invocation &run);
void add_date_command(CLI::App &app, invocation &run);
void add_parse_date_command(CLI::App &app, invocation &run);
void add_number_command(CLI::App &app, invocation &run);
void add_parse_number_command(CLI::App &app, invocation &run);
void add_money_command(CLI::App &app, invocation &run);
void add_info_command(CLI::App &app, invocation &run);
void add_doctor_command(CLI::App &app, invocation &run);

} // namespace vel_tool

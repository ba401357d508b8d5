// The lines of files with their keys, and the options that say which those are.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "vel/invalid_report.h"
#include "vel/line_key.h"

namespace vel_tool {

struct line_options {
    std::string locale;
    std::vector<std::string> files;
    field_choice field;
    report_options report;
};

void add_line_options(CLI::App *command, line_options &options);

struct keyed_line {
    bool is_valid;
    std::string_view key; // of invalid lines their bytes
    std::string_view line;
};

// Gives the lines of all files, which live until the next one, and reports invalid text. Returns
// the number of invalid lines.
uint64_t for_each_line(const invocation &run, const line_options &options, const code_set &codes,
                       const std::function<void(const keyed_line &)> &take);

} // namespace vel_tool

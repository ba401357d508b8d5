// The command line.
#pragma once

#include "table.h"

#include <string>
#include <vector>

namespace bench {

struct options {
    std::string data;
    std::string rows = "";
    std::string rung;
    bool is_quick = false;
    bool is_alone = false;
    bool is_list = false;
    bool is_help = false;
    table_form form = table_form::aligned;
    std::vector<std::string> fresh; // the question to a fresh process
};

extern const char *const usage;

// Throws std::invalid_argument.
options parse(const std::vector<std::string> &words);

} // namespace bench

// Programs run for one answer, this one among them.
#pragma once

#include <string>
#include <vector>

namespace bench {

// Runs a program found by PATH and gives what it prints. Its messages go nowhere, its exit code is
// not looked at. Throws when it cannot be started.
std::string run_program(const std::vector<std::string> &command);

// Runs this program anew as `--fresh ARGUMENTS` and gives the number that it prints. Throws when it
// prints none.
double ask_fresh_process(const std::vector<std::string> &arguments);

} // namespace bench

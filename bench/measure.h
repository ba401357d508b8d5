// Measuring a row: all its libraries in interleaved rounds.
#pragma once

#include "row.h"

#include <map>

namespace bench {

struct effort {
    int rounds;
    double seconds_a_round; // for each library
    int fresh_processes;
};

// Before the first measurement.
void set_effort(const effort &wanted);

// The median of each library: nanoseconds a pass, or what the samples gave.
std::map<std::string, double> measure(const std::vector<contender> &contenders);

} // namespace bench

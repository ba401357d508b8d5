// Numbers and dates of all sizes, the same on every run.
#pragma once

#include <cstdint>
#include <ctime>
#include <string>
#include <vector>

namespace bench {

// Integers of one bit to 31; one in four is negative.
std::vector<std::int32_t> make_integers();
// Numbers with two decimals, and up to ten digits before them; one in four is negative.
std::vector<double> make_doubles();
// Seconds of the years 1971 to 2099.
std::vector<std::time_t> make_times();

// UTF-16, which ICU takes, of UTF-8.
std::u16string utf16_of(const std::string &utf8);

} // namespace bench

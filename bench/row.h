// A line of the report: one piece of work, and the libraries that can do it.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace bench {

enum class unit { gigabytes_per_second, nanoseconds, microseconds, megabytes };

struct aim {
    enum class kind { none, times_host, at_most };
    kind what = kind::none;
    double value = 0; // in the unit of the row for at_most

    static aim times_host(double value) { return {kind::times_host, value}; }
    static aim at_most(double value) { return {kind::at_most, value}; }
};

// One library in a row: either work to be repeated and timed, or a sample that measures itself,
// in nanoseconds or bytes.
struct contender {
    std::string library;
    std::function<std::int64_t()> pass;
    std::function<double()> sample;
};

// A row that is ready to be measured.
struct prepared_row {
    double work; // bytes or characters in a pass
    std::vector<contender> contenders;
};

struct row {
    std::string name;
    unit shown;
    aim wanted;
    // Makes what is needed, and throws when a library does not do the work as it should.
    std::function<prepared_row()> prepare;
};

// From a pass's nanoseconds, or from bytes, to what is shown.
double shown_value(unit shown, double work, double measured);

std::vector<row> text_rows();
std::vector<row> width_rows();
std::vector<row> number_rows();
std::vector<row> collate_rows();
std::vector<row> conversion_rows();
std::vector<row> locale_rows();
std::vector<row> date_rows();

// What a converter takes to open in a process of its own; nothing for other questions.
std::optional<double> nanoseconds_to_open_converter(const std::vector<std::string> &arguments);

// The part of a locale row that runs in a process of its own; prints a number.
int answer_as_fresh_process(const std::vector<std::string> &arguments);

} // namespace bench

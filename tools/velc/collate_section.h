#pragma once

// The COLLATE section: table of collation indexes, weights of every pass, elements, expansions.

#include <string>
#include <vector>

#include "velc/source/charmap.h"
#include "velc/source/model.h"

namespace velc {

// How characters without a place in the order compare.
enum class undefined_order {
    behind_all, // behind everything else, among themselves by value
    as_lowest,  // all like the lowest character that has a place, as the host's C library has it
};

struct collate_options {
    undefined_order undefined = undefined_order::behind_all;
    bool tie = false;  // a last pass by value, so that no two different strings are equal
    bool thai = false; // the algorithm of Thai ordering instead of tables
};

struct collate_section {
    std::string text;                  // everything behind the marker line
    std::vector<std::string> warnings; // what is not as the source has it
};

// A locale without a collation is compared by character value. Throws source_error, and tool_error
// when the order does not fit.
collate_section write_collate(const collation *order, const charmap &codeset,
                              const symbol_table &names, const collate_options &options);

// Equal keys give equal sections, for one code set.
std::string collate_key(const collation *order, const collate_options &options);

} // namespace velc

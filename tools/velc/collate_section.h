#pragma once

// The COLLATE section: table of collation indexes, weights of every pass, elements, expansions.

#include <string>

#include "velc/source/charmap.h"
#include "velc/source/model.h"

namespace velc {

// Everything behind the marker line. A locale without a collation is compared by character value.
std::string write_collate(const collation *order, const charmap &codeset);

} // namespace velc

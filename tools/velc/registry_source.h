#pragma once

#include <string>

#include "velc/codesets.h"
#include "velc/source/source_library.h"

namespace velc {

// The registry file with the names that the charmaps of the sources give themselves. Charmaps of
// the table that the sources do not have add none. Throws source_error.
std::string make_registry(const codeset_table &codesets, source_library &sources);

} // namespace velc

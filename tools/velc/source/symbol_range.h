#pragma once

#include <string>
#include <vector>

#include "velc/source/lexer.h"

namespace velc {

// The names of a hexadecimal range whose first symbol is already taken: <S0009>..<S000B> gives
// S0009, S000A and S000B.
std::vector<std::string> take_symbol_range(lexer &in, const token &first);

} // namespace velc

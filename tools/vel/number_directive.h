// The one directive in a format of `vel number` and `vel parse-number`: it says what type the value
// has, and a value of another type must never reach the library.
#pragma once

#include <string>

#include "vel/code_set.h"

namespace vel_tool {

enum class value_kind { integer, natural, real, text, character };

struct number_directive {
    value_kind kind;
    bool is_short; // a whole number of 16 bits
};

// Gives up unless the format has exactly one directive that a value on a command line can serve.
number_directive only_directive(const code_set &codes, const std::string &format);

// How many characters of a text are '%'.
size_t count_percent_signs(const code_set &codes, const std::string &text);

} // namespace vel_tool

#pragma once

#include <stdexcept>
#include <string>

#include <fmt/format.h>

namespace velc {

// Everything that ends a command with exit code 1 and is not the fault of a source line. what() is
// "place: what is wrong, what was expected".
class tool_error : public std::runtime_error {
public:
    template <typename... Values>
    explicit tool_error(fmt::format_string<Values...> format, Values &&...values)
        : std::runtime_error(fmt::format(format, std::forward<Values>(values)...)) {}
};

} // namespace velc

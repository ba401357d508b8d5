// How a command gives up: one exception that carries what the person at the terminal should read.
#pragma once

#include <stdexcept>
#include <string>

namespace vel_tool {

enum exit_status : int {
    exit_success = 0,
    exit_failure = 1,
    exit_usage = 2,
};

// The text says what is wrong, then what was tried or what to do, without the tool's name.
class failure : public std::runtime_error {
public:
    explicit failure(const std::string &message, exit_status status = exit_failure)
        : std::runtime_error(message), status_(status) {}
    exit_status status() const { return status_; }

private:
    exit_status status_;
};

// The reader of our output has gone. Nobody is left to tell: the tool ends without a word.
class reader_gone {};

} // namespace vel_tool

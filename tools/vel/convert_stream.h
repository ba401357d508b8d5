// Converting text of any size, in constant memory. Characters that are split between two reads are
// kept together.
#pragma once

#include <cstdint>
#include <string_view>

#include "vel/conversion_chain.h"
#include "vel/convert_problems.h"
#include "vel/convert_progress.h"
#include "vel/input.h"

namespace vel_tool {

class convert_stream {
public:
    convert_stream(conversion_chain &chain, output &out, problem_log &problems)
        : chain_(chain), out_(out), problems_(problems) {}

    void run(input &source, convert_progress &progress);

private:
    size_t take_block(std::string_view block, bool at_end);
    size_t take_window(std::string_view rest);
    size_t take_characters(std::string_view rest, bool at_end);
    size_t take_character(std::string_view rest, bool at_end);
    void take_lacking(std::string_view character, std::string_view output,
                      const conversion_chain::state &before);
    void take_bad(problem kind, std::string_view bytes);
    size_t invalid_shifted_bytes(std::string_view text);

    conversion_chain &chain_;
    output &out_;
    problem_log &problems_;
    uint64_t offset_ = 0;
    static constexpr size_t most_window = 64 << 10;
    size_t window_ = most_window;
};

} // namespace vel_tool

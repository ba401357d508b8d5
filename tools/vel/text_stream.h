// Going through text of any size, in constant memory, by runs of valid characters and invalid
// sequences. Characters that are split between two reads are kept together.
#pragma once

#include <cstdint>
#include <string_view>

#include "vel/code_set.h"
#include "vel/input.h"

namespace vel_tool {

// A stretch of a buffer. `spare_bytes` bytes behind it may be overwritten for a moment.
struct text_run {
    static constexpr size_t spare_bytes = 8;

    char *data;
    size_t size;

    std::string_view view() const { return {data, size}; }
};

class text_visitor {
public:
    virtual ~text_visitor() = default;

    // Takes a run that probably holds whole valid characters only. Returns false, and takes
    // nothing, when it does not.
    virtual bool take(text_run run) = 0;
    // Takes a run of whole valid characters.
    virtual void take_valid(text_run run, size_t characters) = 0;
    // `text` begins at byte number `offset` of the stream.
    virtual void take_invalid(std::string_view text, uint64_t offset) = 0;
};

void walk_text(const code_set &codes, input &source, text_visitor &visitor);

} // namespace vel_tool

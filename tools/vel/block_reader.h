// Reading a stream block by block, with what one block leaves over in front of the next.
#pragma once

#include <cstring>
#include <string_view>
#include <vector>

#include "vel/input.h"

namespace vel_tool {

// `take(text, at_end)` returns the bytes that it has done with. What it leaves, less than a block,
// comes again with what follows in the stream.
template <class Take> void for_each_block(input &source, size_t block_bytes, Take take) {
    std::vector<char> buffer(block_bytes);
    size_t kept = 0;
    bool at_end = false;
    while (!at_end) {
        size_t got = source.read(buffer.data() + kept, buffer.size() - kept);
        at_end = got == 0;
        std::string_view text(buffer.data(), kept + got);
        size_t done = take(text, at_end);
        kept = text.size() - done;
        memmove(buffer.data(), buffer.data() + done, kept);
    }
}

} // namespace vel_tool

// Loops that the libraries share: texts that are converted, a call for each. Each library brings a
// way to convert one.
#pragma once

#include "library.h"
#include "scratch.h"

#include <cstring>

namespace bench {

// `convert(text, out, room)` gives the bytes written, or -1.
template <typename Convert> call converting(const conversion_ptr &in, Convert convert) {
    auto *out = scratch_for<char>();
    auto run = [=](const std::string &text) {
        return static_cast<std::int64_t>(convert(text, out, scratch_bytes));
    };
    call made;
    made.pass = [=] {
        std::int64_t bytes = 0;
        for (const std::string &text : in->texts) bytes += run(text);
        return bytes;
    };
    made.result = [=](std::int64_t) {
        std::string all;
        for (const std::string &text : in->texts) {
            std::memset(out, 0xEE, 64);
            std::int64_t bytes = run(text);
            all += bytes < 0 ? "failed" : std::string(out, static_cast<std::size_t>(bytes));
        }
        return all;
    };
    return made;
}

} // namespace bench

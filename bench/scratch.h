// Output memory. All libraries write to the same, so that none profits from the pages it was given.
#pragma once

#include "sample.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace bench {

// Room for the wide form of a text of a megabyte.
inline constexpr std::size_t scratch_bytes = 5 << 20;

enum class place { output, between };

void *scratch(place where);

template <typename T> T *scratch_for(place where = place::output) {
    return static_cast<T *>(scratch(where));
}

// Fills both places with rubbish, so that nobody passes with what another library left behind.
void spoil_scratch();

} // namespace bench

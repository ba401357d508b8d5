// Which of many ranges contain a point, the first one in the order of the file first.
#pragma once

#include <cstddef>
#include <cstdint>

namespace vel {

constexpr uint32_t no_interval = 0xFFFFFFFF;

// The points of one range. Those of different spaces (characters of different lengths, numbers of
// different names) are told apart by the upper half.
struct interval {
    uint64_t first, last;
    uint64_t reach;  // the greatest last point of this interval and all that begin before it
    uint32_t number; // of the range, in the order of the file
};

inline uint64_t point_of(uint32_t space, uint32_t position) {
    return static_cast<uint64_t>(space) << 32 | position;
}

struct interval_index {
    interval *items;
    size_t count;
};

// Puts the intervals into the order in which they are searched.
void order_intervals(interval_index &index);

// The lowest number, `least` or above, of an interval that contains the point.
uint32_t find_interval(const interval_index &index, uint64_t point, uint32_t least);

} // namespace vel

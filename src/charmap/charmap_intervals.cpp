#include "charmap/charmap_intervals.h"

#include <algorithm>

namespace vel {

void order_intervals(interval_index &index) {
    interval *end = index.items + index.count;
    const auto before = [](const interval &a, const interval &b) { return a.first < b.first; };
    if (!std::is_sorted(index.items, end, before)) std::sort(index.items, end, before);
    uint64_t reach = 0;
    for (interval *item = index.items; item != end; ++item) {
        reach = std::max(reach, item->last);
        item->reach = reach;
    }
}

// Ranges of one charmap seldom overlap, so the search ends at the first step back.
uint32_t find_interval(const interval_index &index, uint64_t point, uint32_t least) {
    const interval *item =
        std::upper_bound(index.items, index.items + index.count, point,
                         [](uint64_t p, const interval &i) { return p < i.first; });
    uint32_t lowest = no_interval;
    while (item != index.items && item[-1].reach >= point) {
        --item;
        if (item->last >= point && item->number >= least) lowest = std::min(lowest, item->number);
    }
    return lowest;
}

} // namespace vel

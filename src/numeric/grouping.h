// The sizes of digit groups, from the decimal point leftwards.
#pragma once

#include "record/record.h"

namespace vel {

class group_sizes {
public:
    explicit group_sizes(const vel_grouping &grouping) : grouping_(grouping) {}

    // The size of the next group, 0 when all that is left stays together.
    int32_t next() {
        if (at_ >= grouping_.count) return grouping_.count == 0 || ended_ ? 0 : last_;
        int32_t size = grouping_.sizes[at_++];
        if (size > 0) return last_ = size;
        at_ = grouping_.count;
        ended_ = true;
        return 0;
    }

private:
    const vel_grouping &grouping_;
    int32_t at_ = 0;
    int32_t last_ = 0;
    bool ended_ = false;
};

// The separators that go between `digits` digits. The last size repeats.
inline int32_t count_separators(const vel_grouping &grouping, int32_t digits) {
    int32_t size = 0, count = 0;
    for (; count < grouping.count; ++count, digits -= size) {
        size = grouping.sizes[count];
        if (size <= 0 || digits <= size) return count;
    }
    return size > 0 ? count + (digits - 1) / size : 0;
}

} // namespace vel

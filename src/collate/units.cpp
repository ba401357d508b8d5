#include "collate/units.h"

#include <algorithm>

namespace vel {

element_range elements_from(const collate_category &collate, vel_wchar first) {
    const collating_element *elements = collate.elements;
    const uint32_t *begin = collate.layout.element_order;
    const uint32_t *end = begin + collate.element_count;
    begin = std::partition_point(
        begin, end, [=](uint32_t number) { return elements[number].values[0] < first; });
    end = std::partition_point(
        begin, end, [=](uint32_t number) { return elements[number].values[0] == first; });
    return {begin, end};
}

bool unit_list::grow() {
    if (failed_) return false;
    unit *grown = vel_alloc_array<unit>(capacity_ * 4);
    if (!grown) {
        failed_ = true;
        return false;
    }
    memcpy(grown, data_, size_ * sizeof(unit));
    if (data_ != stack_) vel_free(data_);
    data_ = grown;
    capacity_ *= 4;
    return true;
}

} // namespace vel

// Copying categories by reference.
#include "ext/error.h"
#include "locale/category.h"
#include "locale/complete.h"
#include "record/error_record.h"
#include "vels/locale.h"

namespace vel {
namespace {

struct category_range {
    int32_t first, last;
};

// 0, or the number that forbids copying the category.
int32_t obstacle(const vel_locale *to, const vel_locale *from, int32_t index) {
    if (!is_loaded(from, index)) return VEL_ENOCAT;
    bool empty = !to->codeset_names[index][0] && !to->file_names[index][0];
    return empty ? 0 : VEL_ECATLOADED;
}

bool copy_range(vel_locale *to, const vel_locale *from, category_range range) {
    for (int32_t i = range.first; i <= range.last; ++i) {
        free_category(to, i);
        if (!borrow_category(to, from, i)) return false;
    }
    return complete_locale(to) == 0;
}

} // namespace
} // namespace vel

int32_t vel_copy_cat(vel_locale *destination, vel_locale *source, int32_t category) {
    if (!destination || !source || vel::is_error_record(destination)) return -1;
    int32_t index = vel::find_category(category);
    if (category != VEL_ALL && index < 0) return vel::fail(destination, VEL_EBADLEN);
    vel::category_range range{index, index};
    if (category == VEL_ALL) range = {0, vel::category_count - 1};
    for (int32_t i = range.first; i <= range.last; ++i) {
        int32_t number = vel::obstacle(destination, source, i);
        if (number != 0) return vel::fail(destination, number);
    }
    if (vel::copy_range(destination, source, range)) return 0;
    for (int32_t i = range.first; i <= range.last; ++i) vel::free_category(destination, i);
    return -1;
}

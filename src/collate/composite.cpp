#include "collate/composite.h"

#include "collate/faces.h"
#include "vels/collate.h"

namespace vel {

bool begins_with(const collating_element &element, wide_text string) {
    size_t count = static_cast<size_t>(string.end - string.at);
    if (count > static_cast<size_t>(element.count)) return false;
    return memcmp(element.values, string.at, count * sizeof(vel_wchar)) == 0;
}

composite composite_of(const collate_category &collate, wide_text string) {
    if (string.done() || !collate.layout.element_order) return not_composite;
    ptrdiff_t length = string.end - string.at;
    element_range range = elements_from(collate, *string.at);
    for (; range.begin < range.end; ++range.begin) {
        const collating_element &element = collate.elements[*range.begin];
        if (!begins_with(element, string)) continue;
        if (length < element.count) return composite_prefix;
        if (length > 1) return whole_composite;
    }
    return not_composite;
}

} // namespace vel

using namespace vel;

int32_t vel_iscompchar(vel_locale *locale, const char *string) {
    if (!locale) return -1;
    if (!string) return fail(locale, VEL_EFAULT);
    if (locale->collate.kind == collation_thai) return vel_iscompchar_thai(locale, string);
    decoded_text text(locale, string, -1);
    return text ? composite_of(locale->collate, text.text()) : -1;
}

int32_t vel_iscompchar_thai(vel_locale *locale, const char *string) {
    if (!locale) return -1;
    if (!string) return fail(locale, VEL_EFAULT);
    return thai_composite(reinterpret_cast<const unsigned char *>(string));
}

// How long formatted times can become.
#include "time/measure.h"
#include "vels/info.h"

namespace vel {
namespace {

constexpr int32_t largest = 1; // the only mode

template <typename Unit>
int32_t measure(vel_locale *locale, int32_t mode, const Unit *format,
                int32_t format_extent::*length) {
    if (mode != largest) return -1;
    format_extent extent = {};
    return measure_time_format(locale, format, extent) == 0 ? extent.*length : -1;
}

} // namespace
} // namespace vel

using namespace vel;

int32_t vel_mbsfmtexpand(vel_locale *locale, int32_t mode, const char *format) {
    return measure(locale, mode, format, &format_extent::bytes);
}

int32_t vel_wcsfmtexpand(vel_locale *locale, int32_t mode, const vel_wchar *format) {
    return measure(locale, mode, format, &format_extent::characters);
}

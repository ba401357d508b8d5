// Reading dates and times: the functions of the interface.
#include "ext/error.h"
#include "time/resolve.h"
#include "time/scan.h"
#include "vels/time.h"

namespace vel {
namespace {

constexpr vel_date no_date = {};

template <typename Unit>
Unit *parse(vel_locale *locale, const Unit *input, const Unit *format, vel_time_record *time,
            const vel_date *reference, int32_t flags) {
    if (!format) return fail_null(locale, VEL_EFORMAT);
    if (!input || !time) return fail_null(locale, VEL_EFAULT);
    time_parsed parsed{};
    const Unit *behind = vel_ptime_scan(locale, input, format, parsed);
    if (!behind) return nullptr;
    century_rule rule = {reference ? *reference : no_date, flags};
    if (vel_ptime_resolve(locale, parsed, rule, *time) != 0) return nullptr;
    return const_cast<Unit *>(behind);
}

} // namespace
} // namespace vel

char *vel_mbsptime(vel_locale *locale, const char *input, const char *format, vel_time_record *time,
                   int32_t flags) {
    return vel::parse(locale, input, format, time, &vel::no_date, flags);
}

char *vel_mbsptime_internal(vel_locale *locale, const char *input, const char *format,
                            vel_time_record *time, const vel_date *reference, int32_t flags) {
    return vel::parse(locale, input, format, time, reference, flags);
}

vel_wchar *vel_wcsptime(vel_locale *locale, const vel_wchar *input, const vel_wchar *format,
                        vel_time_record *time, int32_t flags) {
    return vel::parse(locale, input, format, time, &vel::no_date, flags);
}

vel_wchar *vel_wcsptime_internal(vel_locale *locale, const vel_wchar *input,
                                 const vel_wchar *format, vel_time_record *time,
                                 const vel_date *reference, int32_t flags) {
    return vel::parse(locale, input, format, time, reference, flags);
}

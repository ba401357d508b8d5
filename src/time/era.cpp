#include "time/era.h"

#include "vels/time.h"

namespace vel {

const era_entry *vel_find_era(const vel_locale *locale, int32_t year, int32_t month, int32_t day) {
    const time_derived &derived = locale->time_derived;
    era_date asked = {year, month, day};
    for (int32_t i = 0; i < derived.era_count; ++i) {
        const era_entry &era = derived.eras[i];
        if (holds(era, asked)) return &era;
    }
    return nullptr;
}

int64_t year_in_era(const era_entry &era, int32_t year) {
    return era.offset + (int64_t{year} - era.start_year) * era.direction;
}

} // namespace vel

int32_t vel_get_era_count(const vel_locale *locale) {
    return locale ? locale->time.eras.count : -1;
}

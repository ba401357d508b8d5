// Making a time of the fields that were read.
#pragma once

#include "time/parsed.h"

namespace vel {

// How the century of a two-digit year is chosen.
struct century_rule {
    vel_date reference;
    int32_t letter;
};

// Puts the fields into `record`, whose members stand for what was not read. 0, or -1 with the error
// number stored and the record untouched.
int32_t vel_ptime_resolve(vel_locale *locale, const time_parsed &parsed, const century_rule &rule,
                          vel_time_record &record);

} // namespace vel

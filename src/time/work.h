// The copy of a caller's time that formatting and parsing work on.
#pragma once

#include "vels/types.h"

namespace vel {

// The name of a month begins as its number.
inline vel_time_work work_of(const vel_time_record &from) {
    return {from.subsecond, from.second,  from.minute,   from.hour,
            from.day,       from.month,   from.month,    from.year,
            from.weekday,   from.yearday, from.daylight, {from.reserved[0], from.reserved[1]}};
}

inline vel_time_record record_of(const vel_time_work &from) {
    return {from.subsecond,
            from.second,
            from.minute,
            from.hour,
            from.day,
            from.month,
            from.year,
            from.weekday,
            from.yearday,
            from.daylight,
            {from.reserved[0], from.reserved[1]}};
}

} // namespace vel

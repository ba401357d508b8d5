// How much of a name a directive shows.
#pragma once

#include "ctype/columns.h"

namespace vel {

struct fitted_name {
    int32_t count;   // characters
    int32_t columns; // of these
};

// The longest beginning of a name within so many columns; all of it when that is below 1.
inline fitted_name fit_name(const vel_locale *locale, const vel_wchar *name, int32_t most) {
    fitted_name fit = {0, 0};
    for (; name[fit.count]; ++fit.count) {
        int32_t own = columns_of(locale, name[fit.count]);
        int32_t columns = fit.columns + (own < 0 ? 1 : own);
        if (most > 0 && columns > most) break;
        fit.columns = columns;
    }
    return fit;
}

} // namespace vel

#pragma once

#include <string>
#include <string_view>

#include "velc/source/model.h"

namespace velc {

struct overlaid_time {
    time_format time;
    warning_list warnings; // of the overlay
};

// The LC_TIME of a locale with the keywords of an overlay in the place of its own. An overlay is a
// locale source with nothing but an LC_TIME, whose keywords are all optional. One that changes the
// calendar gives the month names of that calendar; without abmon the full names are the short ones
// too. What belongs to the calendar that went away (eras, month names in the nominative) goes with
// it. The path is for messages only. Throws source_error.
overlaid_time overlay_time(const time_format &base, const std::string &path, std::string_view text);

} // namespace velc

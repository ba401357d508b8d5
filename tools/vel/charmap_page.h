// A chart of a code set as one HTML page that needs nothing else.
#pragma once

#include <string>
#include <vector>

#include "vel/charmap_chart.h"
#include "vel/output.h"

namespace vel_tool {

// The page shows the grids of `leads`, the first one first.
void write_chart_page(output &out, code_chart &chart, const std::vector<std::string> &leads);

} // namespace vel_tool

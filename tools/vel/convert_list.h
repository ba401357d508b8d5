// The conversions that are installed.
#pragma once

#include "vel/invocation.h"

namespace vel_tool {

void list_conversions(invocation &run);

} // namespace vel_tool

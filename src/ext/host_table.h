// What the rest of the library may ask about the host table.
#pragma once

#include <initializer_list>

#include "vels/host.h"

namespace vel {

// True while every one of the slots holds its default. Readers use it to fetch blocks from a
// stream instead of asking for one byte at a time.
bool hooks_are_default(std::initializer_list<int32_t> slots);

} // namespace vel

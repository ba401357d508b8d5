// Whether a string is a collating element.
#pragma once

#include "collate/thai.h"

namespace vel {

composite composite_of(const collate_category &collate, wide_text string);

// Whether the values of an element begin with a string that is not longer.
bool begins_with(const collating_element &element, wide_text string);

} // namespace vel

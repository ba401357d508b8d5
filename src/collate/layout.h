// What is derived from a COLLATE category that has been read.
#pragma once

#include "record/record.h"

namespace vel {

// Lays the weights of the category out for weighing text. False when memory cannot be had.
bool lay_out(collate_category &collate);

} // namespace vel

// The blocks by which a sealed table looks characters up by their wide value.
#pragma once

#include "objfile/sealed.h"

namespace vel {

// Fills `blocks` for the rows in `cells`, appends cells where a row is no block already, and sets
// the head's stretches and where its rows begin. Values that have no block are left to be looked up
// by walking. False when memory cannot be had.
bool add_blocks(sealed_table &head, host_array<uint32_t> &cells, host_array<uint16_t> &blocks);

} // namespace vel

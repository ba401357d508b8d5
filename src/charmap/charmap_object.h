// Reading a charmap object.
#pragma once

#include "charmap/charmap_record.h"

namespace vel {

// Fills a zeroed record from a host stream. 0, or the error number: VEL_EBADFILE, VEL_EVERSION,
// VEL_ENOMEM. Whatever the result, release_charmap frees what the record holds.
int32_t read_charmap(void *stream, vel_charmap &charmap);

void release_charmap(vel_charmap &charmap);

} // namespace vel

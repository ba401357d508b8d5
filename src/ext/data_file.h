// Finding and opening data files beneath the installation directory.
#pragma once

#include "vels/types.h"

namespace vel {

// Finds a data file and opens it for reading, with the fopen hook. `kind` is the directory word
// ("cm", "lc", "cv") and `version` the format version.
//
// A file name that holds a byte 0xFF carries its own directory and is opened as it stands, and so
// is an absolute one. Otherwise each directory of VEL_PATH is tried or, when VEL_PATH is not set,
// the versioned and the plain directory of the kind beneath CORVANEDIR or the default directory.
//
// Returns a host stream, or null with VEL_ENOFILE (nothing opened; CORVANEDIR too long) or
// VEL_ENOMEM. A null context stores no number.
void *vel_find_data_file(void *context, const char *file, const char *kind, const char *version);

// The same search, opening with the C library's fopen.
void *vel_find_data_file_direct(void *context, const char *file, const char *kind,
                                const char *version);

// Opens one path with the fopen hook and records the attempt. Null with VEL_ENOFILE or VEL_ENOMEM.
void *vel_open_logged(void *context, const char *path);

// The same for a file of a directory.
void *vel_open_in(void *context, const char *directory, const char *file);

} // namespace vel

#include "ext/block_read.h"

#include <cstdio>

#include "ext/host_table.h"

namespace vel {

bool streams_are_default() {
    return hooks_are_default({VEL_HOOK_FGETC, VEL_HOOK_GETC, VEL_HOOK_UNGETC, VEL_HOOK_FGETS});
}

size_t read_block(void *stream, void *buffer, size_t size) {
    return fread(buffer, 1, size, static_cast<FILE *>(stream));
}

} // namespace vel

// Converting long runs of plain characters at once.
//
// A run kernel converts whole characters whose entries say nothing but "plain" (neither terminator,
// substitute nor shift) and leaves everything else to the stepping loop: it stops before a
// character that is not plain, has no target bytes, is cut off, or does not fit. So kernels know no
// error and no state, and whatever they do is what stepping would have done. Kernels exist in the
// rungs of charmap/kernels.h; all of them stop at the same character.
#pragma once

#include <cstddef>

#include "conv/entry_table.h"

namespace vel {

struct run_progress {
    size_t read;
    size_t written;
};

// Reads nothing outside the n bytes and writes nothing outside the room; a converter keeps its
// kernel and what that has worked out about its table, `facts`.
using run_kernel = run_progress(const entry_table &table, const void *facts,
                                const unsigned char *in, size_t n, unsigned char *out, size_t room);

// What a converter has: a null kernel means that every character is stepped over.
struct run_choice {
    run_kernel *kernel;
    const void *facts; // one block of the host's, or null; released with vel_free
    int32_t least;     // bytes of text that are worth a call, at least 8
};

// Chooses by the shapes of the two code sets and by the processor. With a `unit` all characters are
// of that many bytes, 1, 2 or 4, and stand in memory last byte first; with 1, longer ones that the
// table holds are passed over, and targets have to be bytes. Running out of memory for facts is no
// failure: the kernel is null then.
run_choice choose_run(const entry_table &table, int32_t unit = 0);

} // namespace vel

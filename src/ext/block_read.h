// Reading more than one byte at a time from a default stream.
#pragma once

#include <cstddef>

namespace vel {

// True while the stream hooks hold their defaults, so that a stream is one of the C library's and
// may be read in blocks with the same result as byte by byte.
bool streams_are_default();

// Up to `size` bytes from such a stream; 0 at its end or on an error.
size_t read_block(void *stream, void *buffer, size_t size);

} // namespace vel

// The header lines of an object file: its type, its version, and "NAME=count" with the number of
// header lines, these three included; further ones are for people.
#pragma once

#include "objfile/text_reader.h"

namespace vel {

// Reads the next line; true when it is `expected`.
bool next_line_is(text_reader &stream, const char *expected);

// Reads the line that gives the number of header lines, and those that are left of them. False when
// the line gives no number of at least 3, or the file ends too early.
bool skip_header_lines(text_reader &stream);

} // namespace vel

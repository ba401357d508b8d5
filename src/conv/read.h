// Reading a conversion object into a record.
#pragma once

#include "conv/record.h"
#include "objfile/text_reader.h"

namespace vel {

// Loads an open file, which is closed, into a record fresh from make_conversion. 0, or -1 with the
// number in the record; a null file is VEL_ENOFILE unless the record has a number already.
int32_t vel_cv_read(void *file, vel_cv *cv);

// The three fixed lines of the header and those that follow them. -1 when they are not those of a
// conversion object of this version.
int32_t vel_cv_check_header(text_reader &file);
// A byte sequence: its length in one hexadecimal digit, then its bytes in two each. -1 for a length
// above 4.
int32_t vel_cv_read_bytes(text_reader &file, shift_sequence *sequence);
// The value of a translation table: flag byte, then as many bytes as its low three bits say, of a
// width of `width`.
void vel_cv_read_entry(text_reader &file, unsigned char *entry, int32_t width);
// Hexadecimal digits, either case.
int32_t vel_cv_hex_value(const char *text);
// The bytes that every target character has, in the order of the host, for conversions that write
// units; 0 for all others.
int32_t target_unit(const vel_cv *cv);
// Picks the routine by the lengths of characters and the byte order of the host. -1 with
// VEL_ENOMEM.
int32_t vel_cv_choose_translate(vel_cv *cv);

} // namespace vel

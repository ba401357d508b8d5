// The code-set registry: its built-in table and the readers of its file.
#pragma once

#include "objfile/text_reader.h"
#include "vels/registry.h"

namespace vel {

constexpr int32_t max_codeset_name = 21;
using codeset_name = char[max_codeset_name + 1];

struct builtin_codeset {
    const char *name; // null ends the table
    uint16_t number;
};

// What look-ups fall back on after the registry could not be cached.
extern const builtin_codeset vel_builtin_codesets[];

// Skips blank space and comments, then reads a name, lower-cased; the character that ends it is
// left to be read. 0 at the end of the file and for a name that is too long, else 1. The name is
// empty when the next character can be in no name.
int32_t vel_read_registry_name(text_reader &file, codeset_name &name);
// Reads to the next line break and over it; 0 when the file ended first.
int32_t vel_skip_registry_line(text_reader &file);
// Skips blank space and reads a number modulo 65536. VEL_CS_INVALID with VEL_EBADFILE when there is
// none, when no character follows it, and when it is VEL_CS_INVALID itself.
uint16_t vel_read_registry_number(void *context, text_reader &file);
// True for decimal digits only, at least one.
bool vel_is_decimal_string(const char *text);
// Frees a list of entries.
void vel_free_registry_list(vel_registry_entry *head);

} // namespace vel

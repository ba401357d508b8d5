// A charmap object is
//
//   FILE_TYPE=charmap_object
//   COMPILER_VERSION=3
//   HEADER_LENGTH=<header lines, these three included>
//   ... further header lines, of which CODESET= and SOURCE_VERSION= are used
//   ### CHARMAP
//
// and a line for each name (charmap_line.h).
//
// Contract. A charmap that was read has a table in which no character begins with another, ranges
// whose characters keep their length and whose numbers fit into 31 bits, and names of 1 to 127
// bytes. A line that says anything else makes the whole object bad: the host process must not die
// of a damaged file, nor go on with half of its names. Time and memory are linear in the length of
// the file (but for sorting what is not in order), whatever numbers it holds.
#include "charmap/charmap_object.h"

#include <cstring>

#include "charmap/charmap_characters.h"
#include "charmap/charmap_line.h"
#include "ext/version.h"
#include "objfile/object_header.h"
#include "vels/errors.h"

namespace vel {
namespace {

constexpr int32_t fixed_header_lines = 3;
constexpr char file_type[] = "FILE_TYPE=charmap_object";
constexpr char compiler_version[] = "COMPILER_VERSION=" VEL_CM_VERSION;

using header_line = char[128];

bool next_line(text_reader &stream, header_line &line) {
    if (!stream.gets(line, sizeof line)) return false;
    line[strcspn(line, "\n")] = '\0';
    return true;
}

// What follows the key, or null when the line has another.
const char *value_of(const char *line, const char *key) {
    size_t length = strlen(key);
    return strncmp(line, key, length) == 0 ? line + length : nullptr;
}

bool number_of(const char *line, const char *key, int32_t &number) {
    const char *value = value_of(line, key);
    return value && scan_number(value, number);
}

void take_further_line(const char *line, vel_charmap &charmap) {
    if (const char *name = value_of(line, "CODESET=")) {
        size_t length = strlen(name) < max_codeset_name ? strlen(name) : max_codeset_name;
        memcpy(charmap.name, name, length);
        charmap.name[length] = '\0';
    }
    int32_t version;
    if (number_of(line, "SOURCE_VERSION=", version)) charmap.source_version = version;
}

int32_t read_header(text_reader &stream, vel_charmap &charmap) {
    if (!next_line_is(stream, file_type)) return VEL_EBADFILE;
    if (!next_line_is(stream, compiler_version)) return VEL_EVERSION;
    number_of(compiler_version, "COMPILER_VERSION=", charmap.compiler_version);
    header_line line;
    int32_t lines;
    if (!next_line(stream, line) || !number_of(line, "HEADER_LENGTH=", lines)) return VEL_EBADFILE;
    if (lines < fixed_header_lines) return VEL_EBADFILE;
    for (int32_t i = fixed_header_lines; i < lines; ++i) {
        if (!next_line(stream, line)) return VEL_EBADFILE;
        take_further_line(line, charmap);
    }
    next_line(stream, line); // says what follows
    return 0;
}

int32_t read_body(text_reader &stream, vel_charmap &charmap) {
    names_builder names;
    characters_builder characters;
    char text[256];
    while (stream.gets(text, sizeof text)) {
        charmap_line line;
        bool cut = strlen(text) == sizeof text - 1 && text[sizeof text - 2] != '\n';
        if (cut || !scan_line(text, line)) return VEL_EBADFILE;
        characters.add(line.first, line.count);
        if (line.is_range) {
            names.add_range(line.name, line.name_length,
                            {line.first, line.first_index, line.count, 0});
        } else {
            names.add_symbol(line.name, line.name_length, line.first);
        }
    }
    int32_t error = characters.finish(charmap.characters);
    if (error != 0) return error;
    return names.finish(charmap.names) ? 0 : VEL_ENOMEM;
}

} // namespace

int32_t read_charmap(void *file, vel_charmap &charmap) {
    text_reader stream(file);
    int32_t error = read_header(stream, charmap);
    return error == 0 ? read_body(stream, charmap) : error;
}

void release_charmap(vel_charmap &charmap) {
    release_table(charmap.characters);
    release_names(charmap.names);
}

} // namespace vel

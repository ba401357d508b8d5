// A conversion object is
//
//   FILE_TYPE=codeset_conversion_object
//   COMPILER_VERSION=9
//   <name>=<header lines, these three included>
//   ... further header lines, for people
//   <source shifted> <target shifted>
//   <four byte sequences, without separators>
//   <least and most bytes of a target character> <two numbers> <least and most bytes of a source
//   character> <byte map given>
//   <expansion>
//   <translation table> <a second one when the source is shifted>
//
// Contract. A record that was filled here is safe to convert with whatever the file holds:
//   - byte sequences and the targets of entries have at most four bytes, those of entries at most
//     the stated most;
//   - the expansion is a finite number, not negative;
//   - tables keep the promises of the table reader, and the second one is there when it is needed;
//   - the lengths of source characters are believed for the choice of the routine only: a character
//     ends where the table says, and every byte is known to be there before it is looked at.
// Anything else is refused with VEL_EBADFILE. Work and memory are linear in the length of the file.
#include "conv/read.h"

#include <cfloat>
#include <cstring>

#include "ext/diag.h"
#include "ext/error.h"
#include "ext/host_stream.h"
#include "ext/version.h"
#include "objfile/object_header.h"

namespace vel {
namespace {

constexpr char file_type[] = "FILE_TYPE=codeset_conversion_object";
constexpr char compiler_version[] = "COMPILER_VERSION=" VEL_CV_VERSION;

int32_t log_and_fail(const char *message) {
    vel_diag(message);
    return -1;
}

int32_t read_sequences(text_reader &file, vel_cv *cv) {
    vel_skip_space(file);
    for (shift_sequence &sequence : cv->sequences) {
        if (vel_cv_read_bytes(file, &sequence) != 0) return -1;
    }
    return 0;
}

void read_lengths(text_reader &file, vel_cv *cv) {
    for (int32_t *number :
         {&cv->target_min_length, &cv->target_max_length, &cv->further[0], &cv->further[1],
          &cv->source_min_length, &cv->source_max_length, &cv->byte_map_given}) {
        *number = vel_read_int(file);
    }
}

bool begins_number(int32_t c) {
    return is_digit(c) || c == '.' || c == '+' || c == '-';
}

int32_t read_expansion(text_reader &file, vel_cv *cv) {
    vel_skip_space(file);
    int32_t c = file.get();
    file.unget(c);
    if (!begins_number(c)) return -1;
    double expansion = vel_read_float(file);
    if (!(expansion >= 0 && expansion <= FLT_MAX)) return -1;
    cv->expansion = static_cast<float>(expansion);
    return 0;
}

int32_t read_parameters(text_reader &file, vel_cv *cv) {
    cv->source_shifted = vel_read_int(file);
    cv->target_shifted = vel_read_int(file);
    if (read_sequences(file, cv) != 0) return fail(cv, VEL_EBADFILE);
    read_lengths(file, cv);
    if (read_expansion(file, cv) != 0 || file.truncated()) return fail(cv, VEL_EBADFILE);
    return 0;
}

int32_t read_table(text_reader &file, vel_cv *cv, const entry_table *&table) {
    if (cv->target_max_length < 1 || cv->target_max_length > max_character_bytes) {
        return log_and_fail("cv->target_max_len should be in range 1..4");
    }
    trie_owner owner{vel_trie_create(cv->target_max_length + 1, 0, nullptr)};
    if (!owner.trie) return fail(cv, VEL_ENOMEM);
    if (vel_trie_read(file, owner.trie, max_character_bytes, vel_cv_read_entry) != 0) {
        return fail(cv, vel_trie_error(owner.trie));
    }
    table = seal_entries(owner.trie, target_unit(cv));
    return table ? 0 : fail(cv, VEL_ENOMEM);
}

} // namespace

int32_t vel_cv_hex_value(const char *text) {
    uint32_t value = 0;
    for (; *text; ++text) {
        char c = *text >= 'A' && *text <= 'Z' ? static_cast<char>(*text + 32) : *text;
        value = value * 16 + static_cast<uint32_t>(is_digit(c) ? c - '0' : c - 87);
    }
    return static_cast<int32_t>(value);
}

int32_t vel_cv_read_bytes(text_reader &file, shift_sequence *sequence) {
    const char digit[] = {static_cast<char>(file.get()), '\0'};
    int32_t length = vel_cv_hex_value(digit);
    if (length < 0 || length > max_character_bytes) return -1;
    sequence->length = length;
    for (int32_t i = 0; i < length; ++i) {
        sequence->bytes[i] = static_cast<unsigned char>(vel_read_hex_byte(file));
    }
    return 0;
}

void vel_cv_read_entry(text_reader &file, unsigned char *entry, int32_t width) {
    memset(entry, 0, static_cast<size_t>(width));
    entry[0] = static_cast<unsigned char>(vel_read_hex_byte(file));
    int32_t length = entry[0] & entry_length_mask;
    if (length >= width) return file.set_truncated(); // more than the widest target character
    for (int32_t i = 1; i <= length; ++i) {
        entry[i] = static_cast<unsigned char>(vel_read_hex_byte(file));
    }
}

int32_t vel_cv_check_header(text_reader &file) {
    if (!next_line_is(file, file_type)) {
        return log_and_fail("Invalid CVO file. Wrong FILE_TYPE.");
    }
    if (!next_line_is(file, compiler_version)) {
        return log_and_fail("Invalid CVO file. Wrong Version.");
    }
    return skip_header_lines(file) ? 0 : -1;
}

int32_t vel_cv_read(void *file, vel_cv *cv) {
    cv->table = cv->shift_table = nullptr;
    if (!file) return get_error(cv) == 0 ? fail(cv, VEL_ENOFILE) : -1;
    {
        host_stream closed_behind(file);
        text_reader stream(file);
        if (vel_cv_check_header(stream) != 0) return fail(cv, VEL_ENOFILE);
        if (read_parameters(stream, cv) != 0) return -1;
        if (read_table(stream, cv, cv->table) != 0) return -1;
        if (cv->source_shifted && read_table(stream, cv, cv->shift_table) != 0) return -1;
    }
    if (vel_cv_choose_translate(cv) != 0) return -1;
    vel_diag("CVO file loaded successfully.");
    return 0;
}

} // namespace vel

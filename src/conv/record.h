// The record of an open conversion.
#pragma once

#include "conv/entry_table.h"
#include "conv/runs.h"
#include "vels/convert.h"

namespace vel {

struct conversion;
using translate_routine = int32_t(vel_cv *cv, vel_cv_state *state, conversion &text);

// One way of stepping through text, in the two forms that write and that only measure.
struct translation {
    translate_routine *write;
    translate_routine *measure;
};

// A few bytes that switch the state of a shifted code set.
struct shift_sequence {
    int32_t length; // 0 to 4
    unsigned char bytes[max_character_bytes];
};

constexpr int32_t shift_sequences = 4;
enum : int32_t { shift_out, shift_in }; // to the shifted state and back; the others have no use

} // namespace vel

struct vel_cv {
    int32_t error;
    unsigned char *byte_map; // of single-byte conversions whose object has none; else null
    int32_t source_shifted;
    int32_t target_shifted;
    vel::shift_sequence sequences[vel::shift_sequences];
    int32_t target_min_length;
    int32_t target_max_length; // 1 to 4
    int32_t further[2];        // kept; of no use to conversions
    int32_t source_min_length;
    int32_t source_max_length;
    int32_t byte_map_given;
    float expansion; // finite and not negative
    const vel::entry_table *table;
    const vel::entry_table *shift_table; // of the shifted state of the source, if it has one
    const vel::translation *translation; // null unless the object was loaded
    int32_t most_asked; // room asked for before a character is written, however long it is
    vel::run_choice runs;

    bool is_shifted() const { return source_shifted || target_shifted; }
};

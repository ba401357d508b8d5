// The routines that convert.
#pragma once

#include "conv/record.h"

namespace vel {

// The text of one call, as far as it has been converted.
struct conversion {
    const unsigned char *in;
    int32_t left;
    unsigned char *out; // null when the output is only measured
    int32_t room;
    bool terminated; // stops behind the character that ends the text
    bool substituted;
};

// A routine converts as far as it gets and gives 0, or -1 with the number stored and everything up
// to the character that failed converted. The state serves the stateful one, which needs it.
extern const translation general_translation;
extern const translation wide2_source_translation;
extern const translation wide4_source_translation;
extern const translation single_byte_translation;
extern const translation stateful_translation;

} // namespace vel

// What the run kernels of a converter work out about its table, once, when it is opened.
#pragma once

#include "conv/runs.h"

namespace vel {

// What the first bytes of the source are like; decides which kernel a converter gets.
enum class run_source : uint8_t {
    bytes_to_bytes, // every character is a byte, and so is every target
    bytes,          // every character is a byte
    pairs,          // bytes and pairs of bytes, perhaps longer characters
    utf8,           // characters of up to three bytes are built like those of UTF-8
    utf8_to_bytes,  // and every target is a byte
    units2,         // units of two bytes, last byte first
    units4,         // units of four bytes
};
constexpr int run_sources = 7;

constexpr uint32_t most_odd_bytes = 4;
constexpr uint32_t all_odd = most_odd_bytes + 1;

struct run_facts {
    run_source source;

    // Of bytes that are converted to themselves.
    unsigned char same[256];      // 1 for those; none is from 80 up
    unsigned char other[128];     // 80 for those below 80 that are not
    unsigned char other_low[16];  // the same by the lower nibble, a bit for each upper one
    uint64_t odd[most_odd_bytes]; // the same as words of eight equal bytes
    uint32_t odd_count;           // all_odd when they are more than that

    // Of sources of single bytes, by the byte.
    uint16_t map[256];        // the only byte of the target; 0x100 where there is no such target
    unsigned char bytes[256]; // the same; `none` where there is no such target
    unsigned char none;       // a byte that is no target, if there is one
    bool all_plain;           // there is none, as every byte is a target
    bool spread_fits;         // every target is in the following, and byte 0 has none
    bool has_thirds;
    unsigned char spread[3][256]; // the first to third byte of the target, 0 behind its last

    // Of pairs and units of two bytes, by the first byte.
    unsigned char leads[256]; // 80 for those that do not stand alone
    uint32_t rows[256];       // where the row of second bytes begins; 0 where there is none
    uint32_t row_low, row_width;

    // Of UTF-8. Cells for the lowest six bits of a code point, by the ten above; 0 for none, and
    // for the first, which has the cells of the bytes.
    uint32_t stretches[1024];
    unsigned char narrow[32][64]; // targets of two-byte characters; 0 for none, or another length
};

// The number of target bytes, or 0 for a cell that is no plain character.
inline uint32_t plain_length(uint64_t cell) {
    constexpr uint32_t plain = static_cast<uint32_t>(entry_end >> 32) | entry_plain;
    uint32_t length = static_cast<uint32_t>(cell >> 32) - plain;
    return length <= 4 ? length : 0;
}

// Null when memory cannot be had.
run_facts *learn_run_facts(const entry_table &table, int32_t unit);

// --- The rungs -----------------------------------------------------------------------------------

// By run_source.
struct run_kernels {
    run_kernel *of[run_sources];
};

extern const run_kernels scalar_runs;
// Null where the compiler's target has no such instructions.
extern const run_kernels *const sse_runs;
extern const run_kernels *const avx2_runs;
extern const run_kernels *const avx512_runs;

} // namespace vel

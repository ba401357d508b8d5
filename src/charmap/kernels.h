// The whole-string kernels: loops over spans of text, without locale, terminator or error number.
//
// A kernel works through a span as far as it can and says how far that was. It stops early only
// at a character that is invalid, incomplete or does not fit, so that the caller looks at one
// character to learn why. Kernels exist in rungs, for the processors that differ; every rung gives
// the same results, writes nothing behind them and reads nothing outside its span.
#pragma once

#include "objfile/sealed.h"

namespace vel {

struct span_progress {
    size_t read;    // bytes or values consumed
    size_t written; // values, characters or bytes produced
};

// What a byte from 80 up is in a code set of one and two bytes.
enum : unsigned char { byte_stands_alone = 1, byte_leads_pair = 2 };

// The trailing bytes that go with each lead from 80 up, as the longest two runs of them.
struct alignas(64) pair_rows {
    unsigned char kind[128]; // 0: neither of the above
    unsigned char first[2][128];
    unsigned char length[2][128]; // less one
};

// What the spans of one call share: the table, and what a kernel has worked out about it.
struct span_state {
    const sealed_table &table;
    bool has_rows = false;
    pair_rows rows;

    explicit span_state(const sealed_table &t) : table(t) {}
};

// Decodes whole characters out of n bytes into room for `room` values.
using decode_span = span_progress(span_state &state, const unsigned char *in, size_t n,
                                  vel_wchar *out, size_t room);
// Counts the whole characters in n bytes: `written` is their number.
using count_span = span_progress(span_state &state, const unsigned char *in, size_t n);
// Encodes n values as whole characters into `room` bytes.
using encode_span = span_progress(span_state &state, const vel_wchar *in, size_t n,
                                  unsigned char *out, size_t room);

// The kernels that depend on how the characters of a code set are built.
struct code_set_kernels {
    decode_span *decode;
    count_span *count;
    encode_span *encode;
};

struct text_kernels {
    code_set_kernels by_shape[4];
    // Every byte a value.
    void (*widen)(const unsigned char *in, size_t n, vel_wchar *out);
    // Values up to 255 as bytes; stops at the first that is greater and gives their number.
    size_t (*narrow)(const vel_wchar *in, size_t n, unsigned char *out);
    // The values before the first 0, at most n. May read beyond them, but not beyond a page that
    // holds one of them.
    size_t (*wide_run)(const vel_wchar *in, size_t n);
    // Copies the bytes below 0x80 that the span begins with, with the case bit of the 26 letters
    // from `first` on turned over; gives their number. `out` may be `in`.
    size_t (*flip_ascii)(const unsigned char *in, size_t n, unsigned char *out,
                         unsigned char first);
    // The same for values.
    size_t (*flip_wide)(const vel_wchar *in, size_t n, vel_wchar *out, unsigned char first);

    const code_set_kernels &of(const sealed_table &table) const {
        return by_shape[static_cast<int>(table.shape)];
    }
};

enum class kernel_rung : uint8_t { scalar, sse, avx2, avx512 };

// The kernels of the best rung that the processor has, chosen on first use.
const text_kernels &kernels();

// The kernels of one rung, null when the processor or this build lacks it.
const text_kernels *kernels_of(kernel_rung rung);

// For tests: makes kernels() give this rung. False when it is not there.
bool use_kernels(kernel_rung rung);

// What the build has; null where the compiler's target has no such instructions.
extern const text_kernels scalar_kernels;
extern const text_kernels *const sse_kernels;
extern const text_kernels *const avx2_kernels;
extern const text_kernels *const avx512_kernels;

} // namespace vel

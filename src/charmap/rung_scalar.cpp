// The kernels that every processor can run. They are the reference for all others.
#include <cstring>

#include "charmap/spans.h"

namespace vel {
namespace {

// Eight bytes in a register.
struct blocks {
    static constexpr size_t size = 8;

    static uint64_t load(const unsigned char *in) {
        uint64_t block;
        memcpy(&block, in, sizeof block);
        return block;
    }
    static bool is_ascii(const unsigned char *in) { return (load(in) & 0x8080808080808080) == 0; }
    static void widen(const unsigned char *in, vel_wchar *out) {
#pragma GCC unroll 8
        for (size_t i = 0; i < size; ++i) out[i] = in[i];
    }
    static bool narrow(const vel_wchar *in, unsigned char *out, vel_wchar limit) {
        vel_wchar bits = 0;
#pragma GCC unroll 8
        for (size_t i = 0; i < size; ++i) bits |= in[i];
        if (bits > limit) return false;
#pragma GCC unroll 8
        for (size_t i = 0; i < size; ++i) out[i] = static_cast<unsigned char>(in[i]);
        return true;
    }
    static bool flip(const unsigned char *in, unsigned char *out, unsigned char first) {
        if (!is_ascii(in)) return false;
#pragma GCC unroll 8
        for (size_t i = 0; i < size; ++i) out[i] = flip_letter(in[i], first);
        return true;
    }
    static bool flip(const vel_wchar *in, vel_wchar *out, unsigned char first) {
        vel_wchar bits = 0;
#pragma GCC unroll 8
        for (size_t i = 0; i < size; ++i) bits |= in[i];
        if (bits > 0x7F) return false;
#pragma GCC unroll 8
        for (size_t i = 0; i < size; ++i) out[i] = flip_letter(in[i], first);
        return true;
    }
};

#include "charmap/generic/loops.inc.h"

size_t wide_run(const vel_wchar *in, size_t n) {
    size_t i = 0;
    while (i < n && in[i] != 0) ++i;
    return i;
}

} // namespace

const text_kernels scalar_kernels = {
    {loops_of<table_set<false>>, loops_of<table_set<false>>, loops_of<utf8_set>,
     loops_of<table_set<true>>},
    widen_bytes,
    narrow_bytes,
    wide_run,
    flip_run<unsigned char>,
    flip_run<vel_wchar>,
};

} // namespace vel

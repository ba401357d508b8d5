// What the files of the vector rungs include: everything that must be compiled for the baseline
// processor comes first, and what stands between VEL_TARGET_BEGIN and VEL_TARGET_END is compiled
// for the instructions named.
#pragma once

#include <cstdint>
#include <cstring>
#include <type_traits>

#include "charmap/spans.h"

#if (defined(__x86_64__) || defined(__i386__)) && defined(__GNUC__)
#define VEL_HAS_X86_RUNGS 1
#include <immintrin.h>
#else
#define VEL_HAS_X86_RUNGS 0
#endif

// Registers of 32 bytes and more: 64-bit Windows does not align the stack for them.
#if VEL_HAS_X86_RUNGS && !defined(_WIN64)
#define VEL_HAS_WIDE_RUNGS 1
#else
#define VEL_HAS_WIDE_RUNGS 0
#endif

// On functions that read aligned blocks of which only a part belongs to a string: the sanitizers
// would object to the rest.
#define VEL_READS_AROUND __attribute__((no_sanitize("address"), no_sanitize("thread")))

#define VEL_PRAGMA(text) _Pragma(#text)
#if defined(__clang__)
#define VEL_TARGET_BEGIN(names)                                                                    \
    VEL_PRAGMA(clang attribute push(__attribute__((target(names))), apply_to = function))
#define VEL_TARGET_END VEL_PRAGMA(clang attribute pop)
#else
#define VEL_TARGET_BEGIN(names) VEL_PRAGMA(GCC push_options) VEL_PRAGMA(GCC target(names))
#define VEL_TARGET_END VEL_PRAGMA(GCC pop_options)
#endif

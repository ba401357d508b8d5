#include "charmap/kernels.h"

#include <atomic>

namespace vel {
namespace {

#if defined(__x86_64__) || defined(__i386__)

bool has_sse() {
    return __builtin_cpu_supports("sse4.1") && __builtin_cpu_supports("ssse3") &&
           __builtin_cpu_supports("popcnt");
}

bool has_avx2() {
    return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi") &&
           __builtin_cpu_supports("bmi2");
}

bool has_avx512() {
    return has_avx2() && __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512cd") &&
           __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("avx512vbmi") &&
           __builtin_cpu_supports("avx512vbmi2");
}

void look_at_processor() {
    __builtin_cpu_init();
}

#else

bool has_sse() {
    return false;
}
bool has_avx2() {
    return false;
}
bool has_avx512() {
    return false;
}
void look_at_processor() {}

#endif

// Written once with the same value by whoever comes first.
std::atomic<const text_kernels *> chosen{nullptr};

[[gnu::cold, gnu::noinline]] const text_kernels &choose() {
    const text_kernels *best = &scalar_kernels;
    for (kernel_rung rung : {kernel_rung::sse, kernel_rung::avx2, kernel_rung::avx512}) {
        if (const text_kernels *present = kernels_of(rung)) best = present;
    }
    chosen.store(best, std::memory_order_relaxed);
    return *best;
}

} // namespace

const text_kernels *kernels_of(kernel_rung rung) {
    look_at_processor();
    switch (rung) {
    case kernel_rung::sse:
        return has_sse() ? sse_kernels : nullptr;
    case kernel_rung::avx2:
        return has_avx2() ? avx2_kernels : nullptr;
    case kernel_rung::avx512:
        return has_avx512() ? avx512_kernels : nullptr;
    default:
        return &scalar_kernels;
    }
}

const text_kernels &kernels() {
    const text_kernels *present = chosen.load(std::memory_order_relaxed);
    return present ? *present : choose();
}

bool use_kernels(kernel_rung rung) {
    const text_kernels *present = kernels_of(rung);
    if (!present) return false;
    chosen.store(present, std::memory_order_relaxed);
    return true;
}

} // namespace vel

// The run kernels that every processor can run. They are the reference for all others.
#include <bit>
#include <cstring>

#include "charmap/spans.h"
#include "conv/runs_facts.h"

namespace vel {
namespace {

// Eight bytes in a register.
struct blocks {
    static constexpr size_t size = 8;

    // Marks the upper bit of the first byte that is not copied, and perhaps of others behind it.
    static uint64_t mark_others(const run_facts &facts, uint64_t block) {
        constexpr uint64_t ones = 0x0101010101010101;
        uint64_t others = block;
        for (uint32_t i = 0; i < facts.odd_count; ++i) {
            uint64_t difference = block ^ facts.odd[i];
            others |= (difference - ones) & ~difference;
        }
        return others & (ones << 7);
    }

    static size_t copy_same(const run_facts &facts, const unsigned char *in, unsigned char *out) {
        if (std::endian::native == std::endian::little && facts.odd_count <= most_odd_bytes) {
            uint64_t block;
            memcpy(&block, in, sizeof block);
            memcpy(out, &block, sizeof block);
            uint64_t others = mark_others(facts, block);
            return others ? static_cast<size_t>(__builtin_ctzll(others)) / 8 : size;
        }
        size_t i = 0;
        for (; i < size && facts.same[in[i]]; ++i) out[i] = in[i];
        return i;
    }
};

#include "conv/runs_loops.inc.h"

} // namespace

const run_kernels scalar_runs = runs_by_loops;

} // namespace vel

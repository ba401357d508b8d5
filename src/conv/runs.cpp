#include "conv/runs.h"

#include "charmap/kernels.h"
#include "conv/runs_facts.h"

namespace vel {
namespace {

// Of the rung that the whole-string kernels are of.
const run_kernels &kernels_of_rung() {
    const text_kernels *chosen = &kernels();
    if (chosen == avx512_kernels) return *avx512_runs;
    if (chosen == avx2_kernels) return *avx2_runs;
    if (chosen == sse_kernels) return *sse_runs;
    return scalar_runs;
}

// Looking up longer characters side by side takes longer to get going.
int32_t least_run(run_source source) {
    bool in_registers = source == run_source::bytes_to_bytes || source == run_source::bytes ||
                        source == run_source::utf8_to_bytes;
    return in_registers ? 8 : 24;
}

} // namespace

run_choice choose_run(const entry_table &table, int32_t unit) {
    if (table.longest == 0) return {};
    const run_facts *facts = learn_run_facts(table, unit);
    if (!facts) return {};
    return {kernels_of_rung().of[static_cast<int>(facts->source)], facts, least_run(facts->source)};
}

} // namespace vel

// The choice of the routine that a conversion steps with.
#include <bit>

#include "conv/read.h"
#include "conv/translate.h"
#include "ext/error.h"

namespace vel {
namespace {

enum class routine { wide_source, wide_target, single_byte, general };

bool is_unit(int32_t least, int32_t most) {
    return least == most && (least == 2 || least == 4);
}

// Units are read and written in the order of a little-endian host; any other converts them as the
// bytes of its tables.
routine choose(const vel_cv *cv) {
    constexpr bool little = std::endian::native == std::endian::little;
    if (little && !cv->source_shifted && is_unit(cv->source_min_length, cv->source_max_length)) {
        return routine::wide_source;
    }
    if (little && !cv->target_shifted && is_unit(cv->target_min_length, cv->target_max_length)) {
        return routine::wide_target;
    }
    bool bytes = cv->source_max_length == 1 && cv->target_max_length == 1;
    return bytes && !cv->is_shifted() ? routine::single_byte : routine::general;
}

// The bytes of every source character, where it has the same number of them; 0 for all others.
int32_t source_unit(const vel_cv *cv) {
    if (cv->is_shifted()) return 0;
    routine chosen = choose(cv);
    bool units = chosen == routine::wide_source || chosen == routine::single_byte;
    return units ? cv->source_max_length : 0;
}

const translation *translation_of(const vel_cv *cv) {
    if (cv->is_shifted()) return &stateful_translation;
    switch (choose(cv)) {
    case routine::wide_source:
        return cv->source_max_length == 4 ? &wide4_source_translation : &wide2_source_translation;
    case routine::single_byte:
        return &single_byte_translation;
    case routine::wide_target:
    case routine::general:
        break;
    }
    return &general_translation;
}

// What a byte that has no target is mapped to, and all behind it, is of no use and left 0.
int32_t make_byte_map(vel_cv *cv) {
    constexpr int32_t size = 256;
    cv->byte_map = vel_alloc_array<unsigned char>(size);
    if (!cv->byte_map) return fail(cv, VEL_ENOMEM);
    memset(cv->byte_map, 0, size);
    unsigned char bytes[size];
    for (int32_t b = 0; b < size; ++b) bytes[b] = static_cast<unsigned char>(b);
    conversion text{bytes, size, cv->byte_map, size, false, false};
    cv->translation->write(cv, nullptr, text);
    set_error(cv, 0);
    return 0;
}

} // namespace

int32_t target_unit(const vel_cv *cv) {
    if (cv->is_shifted()) return 0;
    switch (choose(cv)) {
    case routine::wide_target:
        return cv->target_max_length;
    case routine::single_byte:
        return 1;
    case routine::wide_source:
    case routine::general:
        break;
    }
    return 0;
}

int32_t vel_cv_choose_translate(vel_cv *cv) {
    cv->translation = translation_of(cv);
    bool wide_target = !cv->is_shifted() && choose(cv) == routine::wide_target;
    // Units of four bytes are written as soon as there is room for two.
    cv->most_asked = wide_target ? 2 : INT32_MAX;
    cv->runs = choose_run(*cv->table, source_unit(cv));
    bool single_byte = cv->translation == &single_byte_translation;
    return single_byte && !cv->byte_map_given ? make_byte_map(cv) : 0;
}

} // namespace vel

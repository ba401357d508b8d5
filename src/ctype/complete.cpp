#include "ctype/complete.h"

#include "ctype/lookup.h"
#include "ext/memory.h"
#include "record/portable.h"
#include "vels/ctype.h"
#include "vels/multibyte.h"

namespace vel {
namespace {

constexpr size_t byte_count = 256;

template <typename T> void drop(T *&table) {
    vel_free(table);
    table = nullptr;
}

void drop_flat_tables(vel_locale *locale) {
    drop(locale->byte_upper);
    drop(locale->byte_lower);
    drop(locale->byte_classes);
}

// The byte that a byte maps to: itself unless the table says otherwise.
template <letter_case to> unsigned char map_byte(const vel_locale *locale, vel_wchar byte) {
    uint32_t cell = cases_of(locale).cells()[byte];
    vel_wchar mapped = is_end(cell) ? case_of<to>(locale, cell_value(cell)) : 0;
    return static_cast<unsigned char>(mapped ? mapped : byte);
}

int32_t make_flat_tables(vel_locale *locale) {
    auto upper = make_host_array<unsigned char>(byte_count);
    auto lower = make_host_array<unsigned char>(byte_count);
    auto classes = make_host_array<uint16_t>(byte_count);
    if (!upper || !lower || !classes) return fail(locale, VEL_ENOMEM);
    for (vel_wchar byte = 0; byte < byte_count; ++byte) {
        upper[byte] = map_byte<letter_case::upper>(locale, byte);
        lower[byte] = map_byte<letter_case::lower>(locale, byte);
        classes[byte] = cell_value(characters_of(locale).cells()[byte]);
    }
    locale->byte_upper = upper.release();
    locale->byte_lower = lower.release();
    locale->byte_classes = classes.release();
    return 0;
}

// The digits tell: no code set has digits in both places.
bool is_ebcdic(const vel_locale *locale) {
    const uint32_t *row = characters_of(locale).cells();
    for (int i = 0; i < 10; ++i) {
        if (!is_end(row[0xF0 + i]) || !class_bits(row[0xF0 + i], VEL_CLASS_DIGIT)) return false;
        if (class_bits(row['0' + i], VEL_CLASS_DIGIT)) return false;
    }
    return true;
}

} // namespace

int32_t complete_ctype(vel_locale *locale) {
    drop_flat_tables(locale);
    locale->single_byte = vel_mb_loc_max(locale) == 1;
    locale->decode = locale->single_byte ? vel_is_mbstowcs : vel_im_mbstowcs;
    locale->decode_counted = locale->single_byte ? tuk_vel_is_mbfstowcfs : tuk_vel_im_mbfstowcfs;
    locale->portable = is_ebcdic(locale) ? &ebcdic_codes : &ascii_codes;
    return locale->single_byte ? make_flat_tables(locale) : 0;
}

} // namespace vel

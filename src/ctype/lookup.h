// What the tables of a locale say about the classes and the case of a character.
#pragma once

#include "charmap/character.h"

namespace vel {

enum class letter_case : bool { upper, lower };

template <letter_case to> vel_wchar case_in(const case_pair &pair) {
    return to == letter_case::upper ? pair.upper : pair.lower;
}

// The value of a case index in one case, 0 when it maps to itself.
template <letter_case to> vel_wchar case_of(const vel_locale *locale, uint16_t index) {
    return case_in<to>(locale->ctype.pairs[index]); // pair 0 is two zeroes
}

inline const sealed_table &cases_of(const vel_locale *locale) {
    return *locale->ctype.cases;
}

inline int32_t class_bits(uint32_t cell, int32_t mask) {
    return cell_value(cell) & mask;
}

// The mask of a class that the locale defines.
inline uint32_t own_class_mask(const locale_class &own) {
    constexpr uint32_t first_mask = 2048;
    return first_mask << (static_cast<uint32_t>(own.number) % 32);
}

// A mapped character that was written: its bytes, or what the encoding gives for a failure.
int32_t put_mapped(vel_locale *locale, vel_wchar value, unsigned char *out);

} // namespace vel

// Character classes.
#include <cstring>

#include "ctype/lookup.h"
#include "vels/ctype.h"

namespace vel {
namespace {

struct class_name {
    const char *name;
    int32_t mask;
};

constexpr class_name class_names[] = {
    {"upper", VEL_CLASS_UPPER},   {"lower", VEL_CLASS_LOWER}, {"alpha", VEL_CLASS_ALPHA},
    {"digit", VEL_CLASS_DIGIT},   {"space", VEL_CLASS_SPACE}, {"cntrl", VEL_CLASS_CNTRL},
    {"punct", VEL_CLASS_PUNCT},   {"graph", VEL_CLASS_GRAPH}, {"print", VEL_CLASS_PRINT},
    {"xdigit", VEL_CLASS_XDIGIT}, {"blank", VEL_CLASS_BLANK}, {"alnum", VEL_CLASS_ALNUM},
};

[[gnu::cold, gnu::noinline]] int32_t no_character(vel_locale *locale, int32_t number) {
    return fail_zero(locale, number);
}

// The rare rest: characters of four bytes, unusual code sets, and no character at all. Out of line,
// so that the common case needs no stack frame.
[[gnu::noinline]] int32_t test_slowly(vel_locale *locale, vel_wchar value, int32_t mask) {
    uint32_t cell = characters_of(locale).find_by_walking(value);
    return is_end(cell) ? class_bits(cell, mask) : no_character(locale, VEL_EILSEQ);
}

inline int32_t test_value(vel_locale *locale, vel_wchar value, int32_t mask) {
    uint32_t cell = characters_of(locale).find_quickly(value);
    if (!is_end(cell)) [[unlikely]]
        return test_slowly(locale, value, mask);
    return class_bits(cell, mask);
}

inline int32_t test_bytes(vel_locale *locale, const char *character, int32_t mask) {
    walk_end end = characters_of(locale).walk(as_bytes(character));
    if (!is_end(end.cell)) [[unlikely]]
        return no_character(locale, VEL_EILSEQ);
    return class_bits(end.cell, mask);
}

} // namespace
} // namespace vel

using namespace vel;

int32_t vel_ctype(vel_locale *locale, const char *name) {
    for (const class_name &built_in : class_names) {
        if (strcmp(built_in.name, name) == 0) return built_in.mask;
    }
    for (int32_t i = 0; i < locale->ctype.class_count; ++i) {
        const locale_class &own = locale->ctype.classes[i];
        if (strcmp(own.name, name) == 0) return static_cast<int32_t>(own_class_mask(own));
    }
    return 0;
}

int32_t vel_im_iswctype(vel_locale *locale, vel_wchar value, int32_t mask) {
    return test_value(locale, value, mask);
}

int32_t im_iswctype(vel_locale *locale, vel_wchar value, int32_t mask) {
    return test_value(locale, value, mask);
}

int32_t vel_im_ismctype(vel_locale *locale, const char *character, int32_t mask) {
    return test_bytes(locale, character, mask);
}

int32_t im_ismctype(vel_locale *locale, const char *character, int32_t mask) {
    return test_bytes(locale, character, mask);
}

int32_t tuk_vel_im_ismctype(vel_locale *locale, const char *character, int32_t nbytes,
                            int32_t mask) {
    found character_found = vel_trie_find_n(locale, characters_of(locale), character, nbytes);
    return character_found ? character_found.value & mask : 0;
}

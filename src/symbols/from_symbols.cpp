// Symbolic names to text, multibyte and wide.
#include "charmap/character.h"
#include "ext/error.h"
#include "symbols/item.h"
#include "vels/symbols.h"

namespace vel {
namespace {

// The units of a character or of the terminator: bytes, of which there are as many as it has, or
// one wide value.
int32_t units_of(const char *, uint32_t bytes) {
    return static_cast<int32_t>(bytes);
}
int32_t units_of(const vel_wchar *, uint32_t) {
    return 1;
}

void put(char *output, coded_character character) {
    put_packed(as_bytes(output), character.value, character.length);
}
void put(vel_wchar *output, coded_character character) {
    *output = character.value;
}

template <typename Unit>
int32_t convert(vel_charmap *charmap, Unit *output, int32_t size, const char *&input) {
    const coded_character null = {0, static_cast<uint32_t>(charmap->characters->shortest)};
    int32_t space = size - units_of(output, null.length); // that of the terminator is kept
    if (space < 0) return fail(charmap, VEL_EBADLEN);
    int32_t used = 0;
    bool fits = true, known = true;
    while (*input) {
        coded_character character;
        int32_t taken = read_item(charmap->names, input, character);
        known = taken >= 0;
        fits = !known || units_of(output, character.length) <= space - used;
        if (!known || !fits) break;
        put(output + used, character);
        used += units_of(output, character.length);
        input += taken;
    }
    put(output + used, null);
    if (!fits) return fail(charmap, VEL_EBADLEN);
    return known ? used + units_of(output, null.length) : -1;
}

} // namespace
} // namespace vel

int32_t vel_symstombs(vel_charmap *charmap, char *output, int32_t size, const char **input) {
    return vel::convert(charmap, output, size, *input);
}

int32_t vel_symstowcs(vel_charmap *charmap, vel_wchar *output, int32_t size, const char **input) {
    return vel::convert(charmap, output, size, *input);
}

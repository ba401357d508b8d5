// All names of a character.
#include "ext/error.h"
#include "symbols/item.h"
#include "vels/symbols.h"

int32_t vel_mbtosymlist(vel_charmap *charmap, char (*slots)[VEL_SYMBOL_SLOT], int32_t count,
                        const char *bytes, int32_t length) {
    if (count > 0 && !slots) return vel::fail(charmap, VEL_EBADLEN);
    if (length < 1) return vel::fail(charmap, VEL_EINVAL);
    vel::coded_character character;
    int32_t error = vel::read_coded(*charmap, bytes, length, character);
    if (error != 0) return vel::fail(charmap, error);
    const vel::charmap_names &names = charmap->names;
    int32_t found = 0;
    const vel::charmap_symbol *symbol = nullptr;
    while ((symbol = vel::next_symbol(names, character, symbol)) != nullptr) {
        if (found < count) vel::write_item(slots[found], VEL_SYMBOL_SLOT, names, *symbol);
        ++found;
    }
    const vel::charmap_range *range = nullptr;
    while ((range = vel::next_range(names, character, range)) != nullptr) {
        if (found < count) vel::write_item(slots[found], VEL_SYMBOL_SLOT, names, *range, character);
        ++found;
    }
    return found;
}

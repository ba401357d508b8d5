// The place of a byte in its character.
#include "string/walk.h"
#include "vels/string.h"

using namespace vel;

int32_t vel_full_charoffset(vel_locale *locale, const char *start, const char *position,
                            int32_t *character_bytes) {
    if (!start || !position) return fail(locale, VEL_EFAULT);
    if (position < start) return fail(locale, VEL_EINVAL);
    byte_range before = range_of(start, static_cast<int32_t>(position - start));
    // The last character before the position may well go beyond it.
    walked<unsigned char> found = walk(locale, before, whole_text);
    walk_end character = characters_of(locale).walk(found.end);
    if (!is_end(character.cell)) return fail(locale, VEL_EILSEQ);
    *character_bytes = character.used;
    return static_cast<int32_t>(as_bytes(position) - found.end);
}

// Comparing a wide string with a multibyte one.
#include "charmap/character.h"
#include "vels/multibyte.h"

int32_t vel_compare_wc_to_mb(vel_locale *locale, const vel_wchar *wide, const char *multibyte) {
    int32_t matched = 0;
    if (locale->single_byte) {
        const unsigned char *at = vel::as_bytes(multibyte);
        for (; *at; ++at, ++matched) {
            if (wide[matched] != *at) return -1;
        }
        return matched;
    }
    for (;; ++matched) {
        vel_wchar value;
        int32_t used = vel_full_mbtowc(locale, &value, multibyte, vel::max_character_bytes);
        if (used == 0) return matched;
        if (used < 0 || wide[matched] != value) return -1;
        multibyte += used;
    }
}

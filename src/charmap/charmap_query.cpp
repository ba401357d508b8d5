// What a loaded charmap says.
#include "charmap/charmap_record.h"
#include "objfile/lookup.h"
#include "vels/charmap.h"

int32_t vel_cm_mblen(vel_charmap *charmap, const char *s, int32_t n) {
    if (!s) return 0;
    vel::found character = vel::vel_trie_find_n(charmap, *charmap->characters, s, n);
    return character ? character.used : -1;
}

int32_t vel_mb_cm_max(const vel_charmap *charmap) {
    return charmap->characters->longest;
}

int32_t vel_mb_cm_min(const vel_charmap *charmap) {
    return charmap->characters->shortest;
}

const char *vel_cm_csname(const vel_charmap *charmap) {
    return charmap->name;
}

int32_t vel_cm_srcver(const vel_charmap *charmap) {
    return charmap->source_version;
}

int32_t vel_cm_cmpver(const vel_charmap *charmap) {
    return charmap->compiler_version;
}

// How single names are spread over their buckets.
#pragma once

#include "charmap/charmap_names.h"

namespace vel {

inline uint32_t hash_of_name(const char *name, uint32_t length) {
    uint32_t hash = 2166136261u;
    for (uint32_t i = 0; i < length; ++i) {
        hash = (hash ^ static_cast<unsigned char>(name[i])) * 16777619u;
    }
    return hash ^ hash >> 16;
}

inline uint32_t hash_of_character(coded_character character) {
    uint32_t hash = (character.value + character.length) * 0x9E3779B1u;
    return hash >> 16 ^ hash;
}

} // namespace vel

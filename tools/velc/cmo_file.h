#pragma once

// Charmap and conversion objects as read back from their files.

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "velc/object_input.h"
#include "velc/source/charmap.h"

namespace velc {

struct cmo_row {
    std::uint32_t code = 0; // of the (first) character
    std::string name;
    std::uint32_t first_index = 0, count = 1; // of a range; a single character has count 1
    bool range = false;
    byte_sequence bytes;
};

struct cmo_file {
    object_head head;
    std::vector<cmo_row> rows; // in file order
    trie_pointer characters;   // made of the rows
};

// Throws tool_error.
cmo_file read_cmo(const std::filesystem::path &path);

// One entry of a conversion table: a flag byte, then that many bytes as its low three bits say.
struct cvo_file {
    object_head head;
    int source_shifted = 0, target_shifted = 0;
    std::array<std::string, 4> sequences; // shift out, shift in, and two that nothing uses
    int target_min = 0, target_max = 0;
    int spare[2] = {0, 0};
    int source_min = 0, source_max = 0;
    int byte_map_given = 0;
    double expansion = 0;
    trie_pointer table, shift_table; // values of target_max + 1 bytes; the second may be null
};

cvo_file read_cvo(const std::filesystem::path &path);

} // namespace velc

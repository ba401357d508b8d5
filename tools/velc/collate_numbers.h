#pragma once

// The weights of one pass.

#include <cstdint>
#include <vector>

#include "velc/collate_items.h"

namespace velc {

// What the bits of a weight word mean.
inline constexpr std::uint16_t ignored_weight = 1;
inline constexpr std::uint16_t first_weight = 2;
inline constexpr std::uint16_t largest_weight = 0x3FFF;
inline constexpr std::uint16_t expansion_bit = 0x4000;
inline constexpr std::uint16_t positional_bit = 0x8000;

// The least wide value that can be told apart by position. An element reports value 1, and keys
// hold values less 2.
inline constexpr std::uint32_t least_positional_value = 2;

struct pass_numbers {
    std::vector<std::uint16_t> words;    // by place; 0 for places that no item weighs
    std::uint32_t last = ignored_weight; // the highest weight
};

// Places that exactly one character weighs need no weight of their own: a run of them whose
// characters have rising values shares one, and the values decide. Every other place gets its own.
pass_numbers number_pass(const collate_items &items, std::size_t pass);

// The same for more weights than there are: the ideographs beyond the basic plane, and the few that
// came late to it, become one run behind the others.
pass_numbers number_simplified(collate_items &items, std::size_t pass);

} // namespace velc

#pragma once

// Weights of several symbols. An object can only say "weigh these characters instead", so that each
// symbol needs a character that weighs it and nothing else. Such characters are made up: no text
// holds them, they are in the collation table alone.

#include <array>
#include <cstdint>
#include <map>
#include <unordered_map>
#include <vector>

#include "velc/collate_numbers.h"

namespace velc {

// A made-up character and its weight in each pass; 0 where it may weigh anything.
struct pseudo_character {
    byte_sequence bytes;
    std::array<std::uint16_t, most_passes> words{};
};

// Symbols of the first pass get characters apart from those of the later passes, which are ignored
// in the first: what has a part of an expansion as its first weight is an expansion itself. The
// later passes share characters.
//
// A single-byte code set has no room for more characters. There a real character with the same
// weight serves in the first pass; for the later ones, bytes without a character are taken and
// then control characters, which weigh differently for that from where texts hold them.
class collate_expansions {
public:
    // Throws tool_error when there is no room for the characters.
    collate_expansions(const collate_items &items, const std::vector<pass_numbers> &numbers,
                       const std::vector<bool> &backward, const charmap &codeset);

    // What the table of a pass holds for an item.
    std::uint16_t word(std::size_t item, std::size_t pass);

    const std::vector<pseudo_character> &pseudo_characters() const { return pseudo_; }
    // Complete when every item was asked for.
    const std::vector<std::vector<std::uint32_t>> &all() const { return expansions_; }

private:
    using place_list = std::vector<std::uint32_t>;
    place_list parts_of(std::size_t pass) const;
    void use_real_characters(place_list &parts);
    void make_up(const place_list &first, const std::vector<place_list> &later,
                 const charmap &codeset);
    std::uint16_t expansion(std::vector<std::uint32_t> values);

    const collate_items &items_;
    const std::vector<pass_numbers> &numbers_;
    const std::vector<bool> &backward_;
    std::vector<pseudo_character> pseudo_;
    // For each pass the value of the character that weighs a place.
    std::vector<std::unordered_map<std::uint32_t, std::uint32_t>> values_;
    std::vector<std::vector<std::uint32_t>> expansions_;
    std::map<std::vector<std::uint32_t>, std::uint16_t> known_;
};

} // namespace velc

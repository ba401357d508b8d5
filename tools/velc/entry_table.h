#pragma once

// A conversion table as it is made: source characters with a flag byte and target bytes each.

#include <cstdint>
#include <string>

#include "velc/byte_table.h"

namespace velc {

enum : std::uint8_t {
    entry_ends_text = 0x08,   // the source character ends a string
    entry_ordinary = 0x10,    // without any flag an entry would be an illegal character
    entry_substitute = 0x20,  // the target set has no such character
    entry_in_shifted = 0x40,  // the target character belongs to the shifted state
    entry_switches = 0x80,    // the source goes on in the other table
    entry_length_bits = 0x07, // how many target bytes there are
};

struct conversion_entry {
    std::uint8_t flags = 0; // without the length
    byte_sequence bytes;
    bool operator==(const conversion_entry &) const = default;
};

class entry_table {
public:
    // What source characters convert to that have no entry of their own.
    explicit entry_table(const conversion_entry &default_entry);

    void put(const byte_sequence &source, const conversion_entry &entry);
    // Characters without an entry of their own: `first` and those behind it that have the same
    // bytes but the last one, `count` in all.
    void accept(const byte_sequence &first, unsigned count);

    int longest() const { return table_->longest; }
    int shortest() const { return table_->shortest; }
    // Writes the table behind what is there already. Nothing may be put afterwards.
    void append_to(std::string &text);

private:
    void insert(const byte_sequence &source, const void *value);

    trie_pointer table_;
    conversion_entry default_;
};

} // namespace velc

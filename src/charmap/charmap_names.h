// The symbolic names of a charmap and how they are looked up.
//
// A name stands for one character, or with its last digits counted on for a range of them. Which of
// several entries counts is told by the order of the file: of single names the last line comes
// first, of ranges the first.
#pragma once

#include "charmap/charmap_intervals.h"
#include "ext/memory.h"
#include "objfile/key.h"

namespace vel {

constexpr uint32_t max_symbol_name = 127;
constexpr uint32_t no_symbol = 0xFFFFFFFF; // the end of a bucket

// A character by its bytes, packed and counted.
struct coded_character {
    uint32_t value;
    uint32_t length;

    bool operator==(const coded_character &other) const {
        return value == other.value && length == other.length;
    }
};

struct charmap_symbol {
    coded_character character;
    uint32_t name; // where it begins in the texts
    uint32_t name_length;
    uint32_t next_by_name; // in its bucket
    uint32_t next_by_bytes;
};

struct charmap_range {
    coded_character first;
    uint32_t first_index; // the number in the name of the first character
    uint32_t count;
    uint32_t family;
};

// The ranges whose names differ in their last digits alone.
struct range_family {
    uint32_t name; // in the texts, its last digits all zero
    uint32_t prefix_length;
    uint32_t digits;
};

struct symbol_buckets {
    uint32_t *heads;
    uint32_t mask;
};

struct charmap_names {
    char *texts; // terminated names, one after the other
    charmap_symbol *symbols;
    uint32_t symbol_count;
    charmap_range *ranges;
    range_family *families; // by their names
    uint32_t family_count;
    symbol_buckets by_name;
    symbol_buckets by_bytes;
    interval_index by_character;
    interval_index by_number;
};

// A name split where its last digits begin.
struct split_name {
    uint32_t prefix_length;
    uint32_t digits;
    uint64_t number; // beyond 32 bits all are the same
};
split_name split_digits(const char *name, uint32_t length);

// The next single name of a character after `symbol`, the first one after null; null behind the
// last.
const charmap_symbol *next_symbol(const charmap_names &names, coded_character character,
                                  const charmap_symbol *symbol);
// The next range that a character is in, likewise.
const charmap_range *next_range(const charmap_names &names, coded_character character,
                                const charmap_range *range);

// The character of a name, single or of a range; of length 0 when the name is unknown.
coded_character find_named(const charmap_names &names, const char *name, uint32_t length);

// Collects the names of a charmap. Failed allocations show at the end.
class names_builder {
public:
    void add_symbol(const char *name, uint32_t length, coded_character character);
    void add_range(const char *name, uint32_t length, const charmap_range &range);

    // What was added, in the order of the file.
    const host_array<charmap_symbol> &symbols() const { return symbols_; }
    const host_array<charmap_range> &ranges() const { return ranges_; }

    // Makes the look-ups. False when memory cannot be had; the names are then to be released, too.
    bool finish(charmap_names &names);

private:
    uint32_t add_text(const char *text, uint32_t length);
    bool make_families(charmap_names &names, uint32_t count);

    host_array<char> texts_;
    host_array<charmap_symbol> symbols_;
    host_array<charmap_range> ranges_; // `family` is the place of the name until the end
    uint32_t last_range_name_ = 0;
};

void release_names(charmap_names &names);

} // namespace vel

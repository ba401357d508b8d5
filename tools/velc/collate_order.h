#pragma once

// The one list that the statements of a collation come to: who stands where, and what each weighs.

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "velc/source/collate_model.h"

namespace velc {

inline constexpr std::uint32_t no_place = 0xFFFFFFFF;
inline constexpr std::size_t most_passes = 8;

// A character, symbol or element in its place, with the statement that gives its weights.
struct order_entry {
    symbol_id subject = no_symbol;
    const collate_source *source = nullptr;
    const collate_statement *statement = nullptr;

    // The symbols that it weighs in a pass; none when it is ignored there.
    std::span<const symbol_id> weight(std::size_t pass) const;
};

struct collating_sequence {
    symbol_id subject = no_symbol;
    std::u32string from;
};

class collate_order {
public:
    // A place is an index into entries(): the order number of what stands there.
    const std::vector<order_entry> &entries() const { return entries_; }
    std::uint32_t place(symbol_id symbol) const;
    const std::vector<bool> &backward() const { return backward_; } // of each pass
    std::size_t passes() const { return backward_.size(); }
    // Everything declared a collating element, whether it has a place or not.
    const std::vector<collating_sequence> &sequences() const { return sequences_; }

private:
    friend class order_builder;
    std::vector<order_entry> entries_;
    std::vector<std::uint32_t> places_; // by symbol
    std::vector<bool> backward_;
    std::vector<collating_sequence> sequences_;
};

// The order refers to the sources of the collation. Throws source_error.
collate_order resolve_order(const collation &from, const symbol_table &names);

} // namespace velc

#pragma once

// What a code set has of an order: its characters and elements with the places that they weigh.

#include <cstdint>
#include <span>
#include <vector>

#include "velc/collate_order.h"
#include "velc/source/charmap.h"

namespace velc {

class collate_items {
public:
    struct item {
        std::uint32_t place = no_place;
        byte_sequence bytes;               // of a character; the length is 0 for an element
        char32_t code = 0;                 // of a character
        std::vector<std::uint32_t> values; // of an element: wide values
        bool stands_for_others = false;    // characters without a place weigh the same
        bool is_element() const { return bytes.length == 0; }
    };

    collate_items(const collate_order &order, const charmap &codeset);

    // Characters in their order, those of several byte forms several times; then elements, longest
    // first, because the first one that matches a text is taken.
    const std::vector<item> &all() const { return items_; }
    std::size_t passes() const { return passes_; }
    // The places of the order that all()[number] weighs in a pass; none when it is ignored there.
    std::span<const std::uint32_t> weight(std::size_t number, std::size_t pass) const {
        const place_list &list = lists_[number * passes_ + pass];
        return std::span(pool_).subspan(list.first, list.count);
    }
    // Lets the character of the lowest code point stand for those without a place, and gives its
    // number.
    std::size_t choose_lowest();
    // Lets each of some characters weigh its own place alone, for want of weights.
    template <typename Test> void weigh_own_places(std::size_t pass, const Test &is_one) {
        for (std::size_t i = 0; i < items_.size(); ++i) {
            if (items_[i].is_element() || !is_one(items_[i].code)) continue;
            lists_[i * passes_ + pass] = {static_cast<std::uint32_t>(pool_.size()), 1};
            pool_.push_back(items_[i].place);
        }
    }
    std::uint32_t place_count() const { return static_cast<std::uint32_t>(subjects_.size()); }
    // The character that stands at a place; values from first_named upward for anything else.
    symbol_id subject(std::uint32_t place) const { return subjects_[place]; }
    // Symbols of weights that have no place: they count for nothing.
    const std::vector<symbol_id> &unplaced() const { return unplaced_; }

private:
    struct place_list {
        std::uint32_t first = 0, count = 0;
    };
    void add_characters(const collate_order &order, const charmap &codeset);
    void add_elements(const collate_order &order, const charmap &codeset);
    void add_weights(const collate_order &order, const order_entry &entry);

    std::size_t passes_;
    std::vector<item> items_;
    std::vector<place_list> lists_;
    std::vector<std::uint32_t> pool_;
    std::vector<symbol_id> subjects_;
    std::vector<symbol_id> unplaced_;
};

} // namespace velc

#include "velc/collate_items.h"

#include <algorithm>

namespace velc {

namespace {

struct placed_character {
    std::uint32_t place;
    byte_sequence bytes;
    char32_t code;
};

// The element in wide values; nothing when the code set lacks one of its characters.
std::vector<std::uint32_t> wide_values(const std::u32string &text, const charmap &codeset) {
    std::vector<std::uint32_t> values;
    for (char32_t code : text) {
        const auto bytes = codeset.encode(code);
        if (!bytes) return {};
        values.push_back(bytes->value);
    }
    return values;
}

} // namespace

collate_items::collate_items(const collate_order &order, const charmap &codeset)
    : passes_(order.passes()) {
    for (const order_entry &entry : order.entries()) subjects_.push_back(entry.subject);
    add_characters(order, codeset);
    add_elements(order, codeset);
    std::ranges::sort(unplaced_);
    const auto repeated = std::ranges::unique(unplaced_);
    unplaced_.erase(repeated.begin(), repeated.end());
}

void collate_items::add_characters(const collate_order &order, const charmap &codeset) {
    std::vector<placed_character> found;
    const auto add = [&](const byte_sequence &bytes, char32_t code) {
        if (const std::uint32_t place = order.place(code); place != no_place)
            found.push_back({place, bytes, code});
    };
    if (codeset.every_scalar_value()) {
        for (const symbol_id subject : subjects_)
            if (is_character(subject)) add(utf8_bytes(subject), subject);
    } else {
        for (const charmap_entry &entry : codeset.by_bytes()) add(entry.bytes, entry.code);
        for (const charmap_sequence &one : codeset.sequences()) add(one.bytes, one.codes.front());
        std::ranges::stable_sort(found, {}, &placed_character::place);
    }
    for (const placed_character &one : found) {
        items_.push_back({one.place, one.bytes, one.code, {}});
        add_weights(order, order.entries()[one.place]);
    }
}

void collate_items::add_elements(const collate_order &order, const charmap &codeset) {
    struct element {
        std::uint32_t place;
        std::vector<std::uint32_t> values;
    };
    std::vector<element> found;
    for (const collating_sequence &one : order.sequences()) {
        const std::uint32_t place = order.place(one.subject);
        if (place == no_place) continue;
        if (auto values = wide_values(one.from, codeset); !values.empty())
            found.push_back({place, std::move(values)});
    }
    std::ranges::stable_sort(found, [](const element &a, const element &b) {
        if (a.values.size() != b.values.size()) return a.values.size() > b.values.size();
        return a.values < b.values;
    });
    const auto repeated = std::ranges::unique(found, {}, &element::values);
    found.erase(repeated.begin(), repeated.end());
    for (element &one : found) {
        items_.push_back({one.place, {}, 0, std::move(one.values)});
        add_weights(order, order.entries()[one.place]);
    }
}

std::size_t collate_items::choose_lowest() {
    std::size_t lowest = 0;
    for (std::size_t i = 0; i < items_.size(); ++i)
        if (!items_[i].is_element() && items_[i].code < items_[lowest].code) lowest = i;
    if (lowest < items_.size()) items_[lowest].stands_for_others = true;
    return lowest;
}

void collate_items::add_weights(const collate_order &order, const order_entry &entry) {
    for (std::size_t pass = 0; pass < passes_; ++pass) {
        place_list list{static_cast<std::uint32_t>(pool_.size()), 0};
        for (const symbol_id symbol : entry.weight(pass)) {
            const std::uint32_t place = order.place(symbol);
            if (place == no_place)
                unplaced_.push_back(symbol);
            else
                pool_.push_back(place);
        }
        list.count = static_cast<std::uint32_t>(pool_.size()) - list.first;
        lists_.push_back(list);
    }
}

} // namespace velc

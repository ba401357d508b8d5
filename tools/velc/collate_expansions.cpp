#include "velc/collate_expansions.h"

#include <algorithm>

#include "velc/collate_spares.h"
#include "velc/tool_error.h"

namespace velc {

namespace {

constexpr std::size_t expansion_limit = largest_weight + 1;

} // namespace

collate_expansions::collate_expansions(const collate_items &items,
                                       const std::vector<pass_numbers> &numbers,
                                       const std::vector<bool> &backward, const charmap &codeset)
    : items_(items), numbers_(numbers), backward_(backward), values_(items.passes()) {
    place_list first = parts_of(0);
    std::vector<place_list> later;
    for (std::size_t pass = 1; pass < items.passes(); ++pass) later.push_back(parts_of(pass));
    if (codeset.max_length() == 1) use_real_characters(first);
    make_up(first, later, codeset);
}

// The symbols that weights of several consist of, in their order.
collate_expansions::place_list collate_expansions::parts_of(std::size_t pass) const {
    place_list parts;
    for (std::size_t i = 0; i < items_.all().size(); ++i)
        if (const auto places = items_.weight(i, pass); places.size() > 1)
            parts.insert(parts.end(), places.begin(), places.end());
    std::ranges::sort(parts);
    const auto repeated = std::ranges::unique(parts);
    parts.erase(repeated.begin(), repeated.end());
    return parts;
}

// Leaves the parts that no character weighs.
void collate_expansions::use_real_characters(place_list &parts) {
    for (std::size_t i = 0; i < items_.all().size(); ++i) {
        const collate_items::item &item = items_.all()[i];
        const auto places = items_.weight(i, 0);
        if (item.is_element() || may_be_borrowed(item.code) || places.size() != 1) continue;
        if (std::ranges::binary_search(parts, places[0]))
            values_[0].emplace(places[0], item.bytes.value);
    }
    std::erase_if(parts, [&](std::uint32_t place) { return values_[0].contains(place); });
}

void collate_expansions::make_up(const place_list &first, const std::vector<place_list> &later,
                                 const charmap &codeset) {
    std::size_t most = 0;
    for (const place_list &parts : later) most = std::max(most, parts.size());
    const std::vector<byte_sequence> spare = spare_bytes(codeset, first.size() + most);
    for (const byte_sequence &bytes : spare) pseudo_.push_back({bytes});
    const auto stand_for = [&](pseudo_character &one, std::size_t pass, std::uint32_t place) {
        one.words[pass] = numbers_[pass].words[place];
        values_[pass].emplace(place, one.bytes.value);
    };
    for (std::size_t i = 0; i < first.size(); ++i) stand_for(pseudo_[i], 0, first[i]);
    for (std::size_t i = first.size(); i < pseudo_.size(); ++i)
        pseudo_[i].words[0] = ignored_weight;
    for (std::size_t pass = 1; pass <= later.size(); ++pass)
        for (std::size_t i = 0; i < later[pass - 1].size(); ++i)
            stand_for(pseudo_[first.size() + i], pass, later[pass - 1][i]);
}

std::uint16_t collate_expansions::word(std::size_t item, std::size_t pass) {
    const auto places = items_.weight(item, pass);
    if (places.empty()) return ignored_weight;
    if (places.size() == 1) return numbers_[pass].words[places[0]];
    std::vector<std::uint32_t> values;
    for (const std::uint32_t place : places) values.push_back(values_[pass].at(place));
    // A backward pass takes the last value first, but only characters are to be turned round and
    // not the symbols of one of them.
    if (backward_[pass]) std::ranges::reverse(values);
    return expansion(std::move(values));
}

std::uint16_t collate_expansions::expansion(std::vector<std::uint32_t> values) {
    const auto [entry, is_new] =
        known_.emplace(std::move(values), static_cast<std::uint16_t>(expansions_.size()));
    if (is_new) expansions_.push_back(entry->first);
    if (expansions_.size() > expansion_limit)
        throw tool_error("LC_COLLATE: found more than {} different weights of several symbols, "
                         "expected at most that",
                         expansion_limit);
    return entry->second | expansion_bit;
}

} // namespace velc

#include "velc/collate_numbers.h"

#include <algorithm>

namespace velc {

namespace {

constexpr bool is_far_ideograph(char32_t code) {
    return code >= 0x20000 && code < 0x40000;
}
// Of the basic plane, but added after the block that holds nearly all of it.
constexpr bool is_late_ideograph(char32_t code) {
    return (code >= 0x9FA6 && code < 0xA000) || (code >= 0xF900 && code < 0xFB00);
}
constexpr bool is_common_ideograph(char32_t code) {
    return code >= 0x3400 && code < 0x9FA6;
}

// Who weighs a place.
struct place_use {
    enum { nobody, one_character, several } who = nobody;
    std::uint32_t value = 0; // of the one character
};

std::vector<place_use> uses_of(const collate_items &items, std::size_t pass) {
    std::vector<place_use> uses(items.place_count());
    for (std::size_t i = 0; i < items.all().size(); ++i) {
        const auto &item = items.all()[i];
        const auto places = items.weight(i, pass);
        const bool alone = places.size() == 1 && !item.is_element() && !item.stands_for_others;
        for (const std::uint32_t place : places) {
            place_use &use = uses[place];
            use.who = alone && use.who == place_use::nobody ? place_use::one_character
                                                            : place_use::several;
            use.value = item.bytes.value;
        }
    }
    return uses;
}

using place_sequence = std::vector<std::uint32_t>;

place_sequence used_places(const std::vector<place_use> &uses) {
    place_sequence places;
    for (std::uint32_t place = 0; place < uses.size(); ++place)
        if (uses[place].who != place_use::nobody) places.push_back(place);
    return places;
}

pass_numbers number(const place_sequence &places, const std::vector<place_use> &uses) {
    pass_numbers numbers;
    numbers.words.assign(uses.size(), 0);
    const auto can_share = [&](std::uint32_t place) {
        return uses[place].who == place_use::one_character &&
               uses[place].value >= least_positional_value;
    };
    for (std::size_t i = 0; i < places.size();) {
        std::size_t end = i + 1;
        while (end < places.size() && can_share(places[end - 1]) && can_share(places[end]) &&
               uses[places[end]].value > uses[places[end - 1]].value)
            ++end;
        ++numbers.last;
        const unsigned word = end - i > 1 ? numbers.last | positional_bit : numbers.last;
        for (; i < end; ++i) numbers.words[places[i]] = static_cast<std::uint16_t>(word);
    }
    return numbers;
}

place_sequence with_rare_ideographs_last(const place_sequence &places, const collate_items &items,
                                         const std::vector<place_use> &uses) {
    place_sequence others, rare;
    std::size_t behind_last = 0;
    for (const std::uint32_t place : places) {
        const symbol_id code = items.subject(place);
        const bool is_rare = is_far_ideograph(code) || is_late_ideograph(code);
        (is_rare ? rare : others).push_back(place);
        if (is_common_ideograph(code)) behind_last = others.size();
    }
    std::ranges::sort(rare, {}, [&](std::uint32_t place) { return uses[place].value; });
    others.insert(others.begin() + static_cast<std::ptrdiff_t>(behind_last), rare.begin(),
                  rare.end());
    return others;
}

} // namespace

pass_numbers number_pass(const collate_items &items, std::size_t pass) {
    const std::vector<place_use> uses = uses_of(items, pass);
    return number(used_places(uses), uses);
}

pass_numbers number_simplified(collate_items &items, std::size_t pass) {
    items.weigh_own_places(pass, is_far_ideograph);
    const std::vector<place_use> uses = uses_of(items, pass);
    return number(with_rare_ideographs_last(used_places(uses), items, uses), uses);
}

} // namespace velc

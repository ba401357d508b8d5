// Collecting the names of a charmap and making their look-ups.
#include <algorithm>
#include <cstring>

#include "charmap/charmap_buckets.h"

namespace vel {
namespace {

constexpr uint32_t fewest_buckets = 64;

// As many buckets as there are symbols, or nearly twice as many.
bool make_buckets(symbol_buckets &buckets, size_t symbols) {
    uint32_t count = fewest_buckets;
    while (count < symbols) count *= 2;
    buckets.heads = vel_alloc_array<uint32_t>(count);
    if (!buckets.heads) return false;
    buckets.mask = count - 1;
    memset(buckets.heads, 0xFF, count * sizeof(uint32_t));
    return true;
}

// At the front of its bucket, so that the last line of the file comes first.
void put_in_front(symbol_buckets &buckets, uint32_t hash, uint32_t number, uint32_t &next) {
    uint32_t &head = buckets.heads[hash & buckets.mask];
    next = head;
    head = number;
}

bool fill_buckets(charmap_names &names) {
    if (!make_buckets(names.by_name, names.symbol_count)) return false;
    if (!make_buckets(names.by_bytes, names.symbol_count)) return false;
    for (uint32_t i = 0; i < names.symbol_count; ++i) {
        charmap_symbol &symbol = names.symbols[i];
        uint32_t name_hash = hash_of_name(names.texts + symbol.name, symbol.name_length);
        put_in_front(names.by_name, name_hash, i, symbol.next_by_name);
        put_in_front(names.by_bytes, hash_of_character(symbol.character), i, symbol.next_by_bytes);
    }
    return true;
}

template <typename FirstOf>
bool make_index(interval_index &index, const charmap_range *ranges, size_t count, FirstOf first) {
    index.items = vel_alloc_array<interval>(count);
    if (!index.items) return false;
    index.count = count;
    for (uint32_t i = 0; i < count; ++i) {
        uint64_t point = first(ranges[i]);
        index.items[i] = {point, point + ranges[i].count - 1, 0, i};
    }
    order_intervals(index);
    return true;
}

} // namespace

uint32_t names_builder::add_text(const char *text, uint32_t length) {
    char *copy = texts_.extend(length + 1);
    if (!copy) return 0;
    memcpy(copy, text, length);
    copy[length] = '\0';
    return static_cast<uint32_t>(copy - texts_.data());
}

void names_builder::add_symbol(const char *name, uint32_t length, coded_character character) {
    symbols_.push({character, add_text(name, length), length, no_symbol, no_symbol});
}

// All ranges of UTF-8 have one name, which is stored once.
void names_builder::add_range(const char *name, uint32_t length, const charmap_range &range) {
    split_name split = split_digits(name, length);
    char zeroed[max_symbol_name + 1];
    memcpy(zeroed, name, split.prefix_length);
    memset(zeroed + split.prefix_length, '0', split.digits);
    zeroed[length] = '\0';
    if (texts_.failed()) return;
    bool again = ranges_.size() > 0 && strcmp(texts_.data() + last_range_name_, zeroed) == 0;
    if (!again) last_range_name_ = add_text(zeroed, length);
    if (ranges_.push(range)) ranges_[ranges_.size() - 1].family = last_range_name_;
}

// Gives every range the number of its family in place of its name.
bool names_builder::make_families(charmap_names &names, uint32_t count) {
    host_array<uint32_t> order;
    uint32_t *numbers = order.extend(count);
    if (!numbers) return false;
    for (uint32_t i = 0; i < count; ++i) numbers[i] = i;
    const auto before = [&](uint32_t a, uint32_t b) {
        uint32_t one = names.ranges[a].family, other = names.ranges[b].family;
        return one != other && strcmp(names.texts + one, names.texts + other) < 0;
    };
    if (!std::is_sorted(numbers, numbers + count, before)) {
        std::sort(numbers, numbers + count, before);
    }
    host_array<range_family> families;
    for (uint32_t i = 0; i < count; ++i) {
        uint32_t &place = names.ranges[numbers[i]].family;
        const char *name = names.texts + place;
        const range_family *last = families.size() > 0 ? families.end() - 1 : nullptr;
        if (!last || strcmp(names.texts + last->name, name) != 0) {
            split_name split = split_digits(name, static_cast<uint32_t>(strlen(name)));
            if (!families.push({place, split.prefix_length, split.digits})) return false;
        }
        place = static_cast<uint32_t>(families.size()) - 1;
    }
    names.family_count = static_cast<uint32_t>(families.size());
    names.families = families.release();
    return true;
}

bool names_builder::finish(charmap_names &names) {
    if (texts_.failed() || symbols_.failed() || ranges_.failed()) return false;
    names.symbol_count = static_cast<uint32_t>(symbols_.size());
    uint32_t ranges = static_cast<uint32_t>(ranges_.size());
    names.texts = texts_.release();
    names.symbols = symbols_.release();
    names.ranges = ranges_.release();
    if (!fill_buckets(names)) return false;
    if (ranges == 0) return true;
    if (!make_families(names, ranges)) return false;
    const auto by_character = [](const charmap_range &range) {
        return point_of(range.first.length, range.first.value);
    };
    const auto by_number = [](const charmap_range &range) {
        return point_of(range.family, range.first_index);
    };
    return make_index(names.by_character, names.ranges, ranges, by_character) &&
           make_index(names.by_number, names.ranges, ranges, by_number);
}

void release_names(charmap_names &names) {
    vel_free(names.texts);
    vel_free(names.symbols);
    vel_free(names.ranges);
    vel_free(names.families);
    vel_free(names.by_name.heads);
    vel_free(names.by_bytes.heads);
    vel_free(names.by_character.items);
    vel_free(names.by_number.items);
}

} // namespace vel

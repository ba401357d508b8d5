// Looking names up.
#include "charmap/charmap_names.h"

#include <algorithm>
#include <cstring>

#include "charmap/charmap_buckets.h"
#include "objfile/text_reader.h"

namespace vel {
namespace {

constexpr uint64_t largest_number = 0xFFFFFFFF;

const charmap_symbol *find_single(const charmap_names &names, const char *name, uint32_t length) {
    uint32_t number = names.by_name.heads[hash_of_name(name, length) & names.by_name.mask];
    while (number != no_symbol) {
        const charmap_symbol &symbol = names.symbols[number];
        if (symbol.name_length == length && memcmp(names.texts + symbol.name, name, length) == 0) {
            return &symbol;
        }
        number = symbol.next_by_name;
    }
    return nullptr;
}

// The number of a family, or that of all of them when there is none of the name.
uint32_t find_family(const charmap_names &names, const char *name) {
    const range_family *begin = names.families;
    const range_family *end = begin + names.family_count;
    const range_family *family =
        std::lower_bound(begin, end, name, [&](const range_family &item, const char *wanted) {
            return strcmp(names.texts + item.name, wanted) < 0;
        });
    if (family == end || strcmp(names.texts + family->name, name) != 0) return names.family_count;
    return static_cast<uint32_t>(family - begin);
}

coded_character find_member(const charmap_names &names, const char *name, uint32_t length) {
    constexpr coded_character unknown = {0, 0};
    if (length > max_symbol_name) return unknown;
    split_name split = split_digits(name, length);
    if (split.number > largest_number) return unknown;
    char zeroed[max_symbol_name + 1];
    memcpy(zeroed, name, split.prefix_length);
    memset(zeroed + split.prefix_length, '0', split.digits);
    zeroed[length] = '\0';
    uint32_t family = find_family(names, zeroed);
    if (family == names.family_count) return unknown;
    uint32_t index = static_cast<uint32_t>(split.number);
    uint32_t number = find_interval(names.by_number, point_of(family, index), 0);
    if (number == no_interval) return unknown;
    const charmap_range &range = names.ranges[number];
    return {range.first.value + (index - range.first_index), range.first.length};
}

} // namespace

split_name split_digits(const char *name, uint32_t length) {
    uint32_t prefix = length;
    while (prefix > 0 && is_digit(name[prefix - 1])) --prefix;
    uint64_t number = 0;
    for (uint32_t i = prefix; i < length && number <= largest_number; ++i) {
        number = number * 10 + static_cast<uint64_t>(name[i] - '0');
    }
    return {prefix, length - prefix, number};
}

const charmap_symbol *next_symbol(const charmap_names &names, coded_character character,
                                  const charmap_symbol *symbol) {
    uint32_t number =
        symbol ? symbol->next_by_bytes
               : names.by_bytes.heads[hash_of_character(character) & names.by_bytes.mask];
    while (number != no_symbol) {
        const charmap_symbol &next = names.symbols[number];
        if (next.character == character) return &next;
        number = next.next_by_bytes;
    }
    return nullptr;
}

const charmap_range *next_range(const charmap_names &names, coded_character character,
                                const charmap_range *range) {
    uint32_t least = range ? static_cast<uint32_t>(range - names.ranges) + 1 : 0;
    uint64_t point = point_of(character.length, character.value);
    uint32_t number = find_interval(names.by_character, point, least);
    return number == no_interval ? nullptr : &names.ranges[number];
}

coded_character find_named(const charmap_names &names, const char *name, uint32_t length) {
    const charmap_symbol *single = find_single(names, name, length);
    return single ? single->character : find_member(names, name, length);
}

} // namespace vel

#include "symbols/item.h"

#include <cstring>

#include "charmap/character.h"

namespace vel {
namespace {

constexpr int32_t brackets_and_terminator = 3;
constexpr uint32_t most_digits = 10; // of a number of 32 bits

bool is_escaped(char c) {
    return c == '<' || c == '\\';
}

// A number in decimal, in at least `width` digits; of no width, 0 has no digit.
uint32_t write_number(char *out, uint32_t number, uint32_t width) {
    char reversed[most_digits];
    uint32_t digits = 0;
    for (; number > 0; number /= 10) reversed[digits++] = static_cast<char>('0' + number % 10);
    uint32_t zeros = width > digits ? width - digits : 0;
    memset(out, '0', zeros);
    for (uint32_t i = 0; i < digits; ++i) out[zeros + i] = reversed[digits - 1 - i];
    return zeros + digits;
}

} // namespace

int32_t write_item(char *output, int32_t space, const char *name, uint32_t length) {
    int32_t size = static_cast<int32_t>(length) + brackets_and_terminator;
    for (uint32_t i = 0; i < length; ++i) size += is_escaped(name[i]);
    if (size > space) return size;
    *output++ = '<';
    for (uint32_t i = 0; i < length; ++i) {
        if (is_escaped(name[i])) *output++ = '\\';
        *output++ = name[i];
    }
    *output++ = '>';
    *output = '\0';
    return size;
}

int32_t write_item(char *output, int32_t space, const charmap_names &names,
                   const charmap_symbol &symbol) {
    return write_item(output, space, names.texts + symbol.name, symbol.name_length);
}

int32_t write_item(char *output, int32_t space, const charmap_names &names,
                   const charmap_range &range, coded_character character) {
    const range_family &family = names.families[range.family];
    char name[max_symbol_name + most_digits];
    memcpy(name, names.texts + family.name, family.prefix_length);
    uint32_t number = range.first_index + (character.value - range.first.value);
    uint32_t digits = write_number(name + family.prefix_length, number, family.digits);
    return write_item(output, space, name, family.prefix_length + digits);
}

int32_t write_item(char *output, int32_t space, const charmap_names &names,
                   coded_character character) {
    if (const charmap_symbol *symbol = next_symbol(names, character, nullptr)) {
        return write_item(output, space, names, *symbol);
    }
    const charmap_range *range = next_range(names, character, nullptr);
    return range ? write_item(output, space, names, *range, character) : 0;
}

int32_t read_item(const charmap_names &names, const char *text, coded_character &character) {
    if (*text != '<') return -1;
    char name[max_symbol_name];
    uint32_t length = 0;
    const char *cursor = text + 1;
    for (; *cursor != '>'; ++cursor) {
        if (*cursor == '\\') ++cursor;
        if (!*cursor || length == max_symbol_name) return -1;
        name[length++] = *cursor;
    }
    character = find_named(names, name, length);
    return character.length > 0 ? static_cast<int32_t>(cursor + 1 - text) : -1;
}

int32_t read_coded(const vel_charmap &charmap, const char *bytes, int32_t n,
                   coded_character &character) {
    valued_walk end = walk_value(*charmap.characters, as_bytes(bytes), static_cast<size_t>(n));
    if (!is_end(end.cell)) return is_more(end.cell) ? VEL_EINVAL : VEL_EILSEQ;
    character = {end.value, static_cast<uint32_t>(end.used)};
    return 0;
}

} // namespace vel

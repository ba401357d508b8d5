#include "charmap/charmap_line.h"

#include "objfile/hex.h"
#include "objfile/text_reader.h"

namespace vel {
namespace {

void skip_space(const char *&cursor) {
    while (is_space(*cursor)) ++cursor;
}

// Or not_hex.
uint32_t hex_digit(char c) {
    return hex.value[static_cast<unsigned char>(c)];
}

bool scan_number_within(const char *&cursor, int32_t least, int32_t most, uint32_t &number) {
    int32_t scanned;
    if (!scan_number(cursor, scanned) || scanned < least || scanned > most) return false;
    number = static_cast<uint32_t>(scanned);
    return true;
}

bool scan_name(const char *&cursor, charmap_line &line) {
    skip_space(cursor);
    line.name = cursor;
    while (*cursor && !is_space(*cursor)) ++cursor;
    size_t length = static_cast<size_t>(cursor - line.name);
    line.name_length = static_cast<uint32_t>(length);
    return length > 0 && length <= max_symbol_name;
}

// One or two digits. A single one that the file ends behind is half of a byte.
bool scan_byte(const char *&cursor, uint32_t &byte) {
    skip_space(cursor);
    uint32_t high = hex_digit(*cursor);
    if (high == not_hex) return false;
    uint32_t low = hex_digit(*++cursor);
    byte = low == not_hex ? high : high << 4 | low;
    if (low == not_hex) return *cursor != '\0';
    ++cursor;
    return true;
}

bool scan_character(const char *&cursor, coded_character &character) {
    if (!scan_number_within(cursor, 1, max_character_bytes, character.length)) return false;
    character.value = 0;
    for (uint32_t i = 0; i < character.length; ++i) {
        uint32_t byte;
        if (!scan_byte(cursor, byte)) return false;
        character.value = character.value << 8 | byte;
    }
    return true;
}

// The last character of a range still has its length, and its number is one that a name can have.
bool fits(const charmap_line &line) {
    uint64_t beyond = uint64_t{1} << 8 * line.first.length;
    return uint64_t{line.first.value} + line.count <= beyond &&
           uint64_t{line.first_index} + line.count <= uint64_t{INT32_MAX} + 1;
}

} // namespace

bool scan_number(const char *&cursor, int32_t &number) {
    skip_space(cursor);
    bool negative = *cursor == '-';
    if (*cursor == '-' || *cursor == '+') ++cursor;
    if (!is_digit(*cursor)) return false;
    int64_t value = 0;
    for (; is_digit(*cursor); ++cursor) {
        if (value <= INT32_MAX) value = value * 10 + (*cursor - '0');
    }
    if (negative) value = -value;
    number = static_cast<int32_t>(value);
    return value == number;
}

bool scan_line(const char *text, charmap_line &line) {
    if (*text != 's' && *text != 'r') return false;
    line.is_range = *text == 'r';
    line.first_index = 0;
    line.count = 1;
    const char *cursor = text + 1;
    int32_t code; // of the character in Unicode, for people
    if (!scan_number(cursor, code) || !scan_name(cursor, line)) return false;
    if (line.is_range && (!scan_number_within(cursor, 0, INT32_MAX, line.first_index) ||
                          !scan_number_within(cursor, 1, INT32_MAX, line.count))) {
        return false;
    }
    return scan_character(cursor, line.first) && fits(line);
}

} // namespace vel

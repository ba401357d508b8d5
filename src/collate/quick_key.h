// Keys of plain text in one walk that writes all passes side by side. What it is quick at are
// characters that have a weight of their own in every pass and their value in the last.
#pragma once

#include "collate/key_writer.h"
#include "record/record.h"

namespace vel {

// The digits of a weight in two bytes, of which the first is the lower.
constexpr uint16_t digits_of_weight(uint32_t number) {
    uint32_t upper = (number - 2) / key_base;
    return static_cast<uint16_t>((number - key_base * upper) << 8 | (upper + key_zero));
}

constexpr size_t quick_key_records = 0x800;

// Makes the records of a collation that has quick keys; all else of its layout is there.
void put_quick_keys(const collate_category &collate, quick_key_record *records);

struct utf8_text;

// Writes the key of a text that has been found to be plain. False when there is more to be done
// for this text or in this locale; nothing is written then.
bool put_quick_key(key_writer &key, const collate_category &collate, utf8_text text);

} // namespace vel

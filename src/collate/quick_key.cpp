#include "collate/quick_key.h"

#include <bit>

#include "collate/text.h"
#include "ext/memory.h"

namespace vel {
namespace {

constexpr size_t weight_bytes = 2, value_bytes = 5;
constexpr size_t most_bytes = weight_bytes + value_bytes; // of a character or a part in a pass
constexpr size_t step_bytes = 64;                         // what moving a pass may store too much
constexpr size_t short_text = 128; // bytes of one whose key is written on the stack

// Every character of a text may take its most bytes in a pass, and expansions as much again.
constexpr size_t expansion_room(size_t text_bytes) {
    return most_bytes * text_bytes;
}
constexpr size_t pass_room(size_t text_bytes) {
    return 2 * expansion_room(text_bytes) + step_bytes;
}

template <typename Number> void store_little(unsigned char *out, Number number) {
    if constexpr (std::endian::native == std::endian::big) {
        number = sizeof number == 2 ? __builtin_bswap16(number) : __builtin_bswap64(number);
    }
    memcpy(out, &number, sizeof number);
}

// The five digits of the value of a character of one to three bytes, the first in the lowest byte.
// The upper two are 0.
[[gnu::always_inline]] inline uint64_t digits_of_value(vel_wchar value) {
    constexpr uint64_t zeros = 0x0202020202;
    if (value < 0x80) return (zeros & 0xFFFFFFFF) | uint64_t{value} << 32;
    uint32_t number = value - 2, upper = number / key_base;
    uint64_t lowest = uint64_t{number - key_base * upper} << 32;
    if (value < 0x10000) return zeros + (uint64_t{upper} << 24) + lowest;
    uint32_t top = upper / key_base;
    return zeros + (top << 16) + (uint64_t{upper - key_base * top} << 24) + lowest;
}

// The record of the first character of a text.
template <int32_t passes>
[[gnu::always_inline]] inline quick_key_record record_of(const collate_category &collate,
                                                         utf8_text text) {
    taken_character first = text.take(*collate.characters);
    uint32_t index = cell_value(first.cell);
    const uint16_t *digits = collate.layout.key_digits + index * passes;
    quick_key_record made{};
    for (int32_t pass = 0; pass + 1 < passes; ++pass) made.digits[pass] = digits[pass];
    made.traits = collate.layout.traits[index];
    made.last = digits[passes - 1] | digits_of_value(first.value) << 16;
    return made;
}

template <int32_t passes>
void put_records(const collate_category &collate, quick_key_record *records) {
    for (uint32_t code = 0; code < quick_key_records; ++code) {
        unsigned char bytes[2] = {static_cast<unsigned char>(code < 0x80 ? code : 0xC0 | code >> 6),
                                  static_cast<unsigned char>(0x80 | (code & 0x3F))};
        records[code] = record_of<passes>(collate, {bytes, bytes + 2});
    }
}

// Writes a key whose passes lie apart until it is finished, each in its room. Stores go beyond what
// counts.
template <int32_t passes> class side_by_side {
public:
    side_by_side(const collate_category &collate, unsigned char *memory, size_t text_bytes)
        : collate_(collate), layout_(collate.layout), memory_(memory),
          pass_room_(pass_room(text_bytes)), expansion_room_(expansion_room(text_bytes)) {
        for (int32_t pass = 0; pass < passes; ++pass) ends_[pass] = begin_of(pass);
    }

    // False when there is more to be done.
    bool write(utf8_text text) {
        const quick_key_record *records = layout_.quick_keys;
        while (!text.done()) {
            unsigned char *at = ends_[0], *last = ends_[passes - 1];
            size_t apart[passes];
            for (int32_t pass = 0; pass < passes; ++pass) {
                apart[pass] = static_cast<size_t>(ends_[pass] - at);
            }
            bool odd = false;
            do { // of usual characters all passes but the last grow in step
                uint32_t lead = text.at[0], length = 1;
                const quick_key_record *here = &records[lead];
                quick_key_record longer;
                if (lead >= 0xE0) {
                    here = &(longer = record_of<passes>(collate_, utf8_text(text)));
                    length = 3;
                } else if (lead >= 0x80) {
                    here = &records[(lead & 0x1F) << 6 | (text.at[1] & 0x3F)];
                    length = 2;
                }
                odd = here->traits & has_odd_key;
                if (odd) break;
                for (int32_t pass = 0; pass + 1 < passes; ++pass) {
                    store_little(at + apart[pass], here->digits[pass]);
                }
                at += weight_bytes;
                store_little(last, here->last);
                last += weight_bytes + (here->traits & ends_in_value ? value_bytes : 0);
                text.at += length;
            } while (!text.done());
            for (int32_t pass = 0; pass + 1 < passes; ++pass) ends_[pass] = at + apart[pass];
            ends_[passes - 1] = last;
            if (odd && !put_odd(text.take(*collate_.characters))) return false;
        }
        return true;
    }

    // Moves the passes together.
    void finish(key_writer &key) {
        unsigned char *end = ends_[0];
        for (int32_t pass = 1; pass < passes; ++pass) {
            *end++ = pass_separator;
            const unsigned char *from = begin_of(pass);
            size_t count = static_cast<size_t>(ends_[pass] - from);
            for (size_t i = 0; i < count; i += step_bytes) {
                unsigned char bytes[step_bytes];
                memcpy(bytes, from + i, step_bytes);
                memcpy(end + i, bytes, step_bytes);
            }
            end += count;
        }
        key.put_all(memory_, static_cast<size_t>(end - memory_));
    }

private:
    unsigned char *begin_of(int32_t pass) {
        return memory_ + static_cast<size_t>(pass) * pass_room_;
    }

    [[gnu::noinline]] bool put_odd(const taken_character &odd) {
        uint32_t index = cell_value(odd.cell);
        uint32_t traits = layout_.traits[index];
        if (traits & is_whole_element) return false;
        if (traits & follows_element && layout_.may_follow(odd.value)) return false;
        const uint16_t *weights = layout_.weights + index * passes;
        uint64_t value = digits_of_value(odd.value);
        for (int32_t pass = 0; pass < passes; ++pass) {
            if (!(weights[pass] & weight_expansion)) {
                put_weight(pass, index, value);
            } else if (!put_parts(pass, weights[pass] & weight_mask, value)) {
                return false;
            }
        }
        return true;
    }

    void put_weight(int32_t pass, uint32_t index, uint64_t value) {
        size_t place = index * passes + static_cast<size_t>(pass);
        uint32_t weight = layout_.weights[place];
        if (weight == weight_ignore) return;
        store_little(ends_[pass], layout_.key_digits[place] | value << 16);
        ends_[pass] += weight & weight_positional ? most_bytes : weight_bytes;
    }

    bool put_parts(int32_t pass, uint32_t number, uint64_t value) {
        const collating_expansion &expansion = collate_.expansions[number];
        size_t count = static_cast<size_t>(expansion.count);
        size_t used = static_cast<size_t>(ends_[pass] - begin_of(pass));
        if (used > expansion_room_ || count > (expansion_room_ - used) / most_bytes) return false;
        const uint32_t *parts =
            layout_.expansion_parts + (expansion.values - collate_.expansions[0].values);
        for (size_t i = 0; i < count; ++i) {
            if (parts[i] == no_index) return false;
            put_weight(pass, parts[i], value);
        }
        return true;
    }

    const collate_category &collate_;
    const collation_layout &layout_;
    unsigned char *ends_[passes];
    unsigned char *memory_;
    size_t pass_room_, expansion_room_;
};

template <int32_t passes>
bool put_passes(key_writer &key, const collate_category &collate, utf8_text text,
                unsigned char *memory, size_t text_bytes) {
    side_by_side<passes> made(collate, memory, text_bytes);
    if (!made.write(text)) return false;
    made.finish(key);
    return true;
}

template <int32_t passes>
[[gnu::noinline]] bool put_passes(key_writer &key, const collate_category &collate,
                                  utf8_text text) {
    size_t text_bytes = static_cast<size_t>(text.end - text.at);
    if (text_bytes <= short_text) {
        unsigned char memory[passes * pass_room(short_text)];
        return put_passes<passes>(key, collate, text, memory, short_text);
    }
    auto memory = make_host_array<unsigned char>(passes * pass_room(text_bytes));
    return memory && put_passes<passes>(key, collate, text, memory.get(), text_bytes);
}

} // namespace

void put_quick_keys(const collate_category &collate, quick_key_record *records) {
    collate.layout.quick_key_passes == 1 ? put_records<1>(collate, records)
                                         : put_records<4>(collate, records);
}

bool put_quick_key(key_writer &key, const collate_category &collate, utf8_text text) {
    switch (collate.layout.quick_key_passes) {
    case 1:
        return put_passes<1>(key, collate, text);
    case 4:
        return put_passes<4>(key, collate, text);
    default:
        return false;
    }
}

} // namespace vel

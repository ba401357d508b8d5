#pragma once

// A table from characters to 16-bit values as the objects hold it: built by insertion, written once
// in the shared form. Knows the bytes of characters, nothing else.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "objfile/trie.h"
#include "velc/source/charmap.h"

namespace velc {

struct trie_release {
    void operator()(vel::vel_trie *table) const { vel::vel_trie_free(table); }
};
using trie_pointer = std::unique_ptr<vel::vel_trie, trie_release>;

vel::vel_mbkey key_of(const byte_sequence &bytes);

// What a failed insertion comes to: std::bad_alloc, or tool_error for a character that begins with
// another.
[[noreturn]] void throw_insert_error(const vel::vel_trie &table, const byte_sequence &bytes);
// Writes a table in the shared form behind what is there already.
void write_table(vel::vel_trie &table, std::string &text, vel::trie_value_writer write_value);

class byte_table {
public:
    // Characters without a value of their own have the default.
    explicit byte_table(std::uint16_t default_value);

    void insert(const byte_sequence &bytes, std::uint16_t value);
    // Writes the table behind what is there already. Nothing may be inserted afterwards.
    void append_to(std::string &text);

private:
    trie_pointer table_;
    std::uint16_t default_value_;
};

// Every character of the code set with the value that f(entry) gives. For UTF-8 that is every
// scalar value, whether it is listed or not.
template <typename F> void insert_all(byte_table &table, const charmap &codeset, F &&value_of) {
    if (!codeset.every_scalar_value()) {
        for (const charmap_entry &entry : codeset.by_bytes())
            table.insert(entry.bytes, value_of(entry));
        for (const charmap_sequence &sequence : codeset.sequences())
            table.insert(sequence.bytes, value_of({sequence.codes.front(), sequence.bytes, false}));
        return;
    }
    for (char32_t code = 0; code <= last_code_point; ++code) {
        if (!is_scalar_value(code)) continue;
        const charmap_entry entry{code, utf8_bytes(code), true};
        table.insert(entry.bytes, value_of(entry));
    }
}

} // namespace velc

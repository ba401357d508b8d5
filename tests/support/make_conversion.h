// Small conversion objects, written by the library's own table writer.
#pragma once

#include <cstring>
#include <map>
#include <string>

#include "objfile/trie.h"
#include "support/make_object.h"

namespace vel_test {

// What a source character becomes: the flag byte without the length, and the target.
struct target {
    uint8_t flags;
    std::string bytes;
};
using targets = std::map<std::string, target>; // by the bytes of the source character

constexpr uint8_t plain = 0x10, terminator = 0x18, substitute = 0x30, shifted = 0x50, toggle = 0x90;

inline std::string value_of(const target &one, size_t width) {
    std::string value(1, static_cast<char>(one.flags | one.bytes.size()));
    value += one.bytes;
    value.resize(width);
    return value;
}

inline std::string entries_text(const targets &entries, size_t width,
                                const target &others = {0, ""}) {
    const std::string rest = value_of(others, width);
    vel::vel_trie *trie = vel::vel_trie_create(static_cast<int32_t>(width), 0, rest.data());
    for (const auto &[source, one] : entries) {
        const vel::vel_mbkey key = key_of(source);
        vel::vel_trie_insert(trie, &key, value_of(one, width).data());
    }
    vel::vel_trie_share(trie);
    string_sink sink;
    vel::vel_trie_write(sink, trie, [](vel::text_sink &out, const unsigned char *value, int32_t) {
        for (int i = 0; i <= (value[0] & 7); ++i) {
            char digits[3];
            snprintf(digits, sizeof digits, "%02x", value[i]);
            out.put(&out, digits, 2);
        }
    });
    vel::vel_trie_free(trie);
    return sink.text;
}

// A conversion object by its parts. Empty ones are made from the entries.
struct conversion_parts {
    std::string type = "FILE_TYPE=codeset_conversion_object\n";
    std::string version = "COMPILER_VERSION=9\n";
    std::string length = "HEADER_LENGTH=4\nSOURCE=test\n";
    std::string shifts = "0 0\n", sequences = "0000\n";
    int source_min = 1, source_max = 1, target_min = 1, target_max = 1, byte_map_given = 0;
    std::string expansion = "1.5\n";
    targets entries, shifted_entries;
    target others{0, ""}; // of accepted bytes without an entry

    std::string text() const {
        const size_t width = static_cast<size_t>(target_max) + 1;
        std::string lengths;
        for (int n : {target_min, target_max, 7, 9, source_min, source_max, byte_map_given}) {
            lengths += std::to_string(n) + " ";
        }
        return type + version + length + shifts + sequences + lengths + "\n" + expansion +
               entries_text(entries, width, others) +
               (shifts[0] != '0' ? entries_text(shifted_entries, width) : "");
    }
};

} // namespace vel_test

// Small object files, written by the library's own table writer.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "objfile/trie.h"

namespace vel_test {

struct string_sink : vel::text_sink {
    string_sink() {
        put = [](text_sink *self, const char *bytes, size_t length) {
            static_cast<string_sink *>(self)->text.append(bytes, length);
        };
    }
    std::string text;
};

// Characters, as their bytes, and their values.
using characters = std::map<std::string, uint16_t>;

inline vel::vel_mbkey key_of(const std::string &bytes) {
    vel::vel_mbkey key{static_cast<uint32_t>(bytes.size()), {}};
    memcpy(key.bytes, bytes.data(), bytes.size());
    return key;
}

// A table with these characters; the caller frees it.
inline vel::vel_trie *build_table(const characters &entries, uint16_t default_value, bool shared) {
    vel::vel_trie *trie = vel::vel_trie_create(2, 0, &default_value);
    for (const auto &[bytes, value] : entries) {
        vel::vel_mbkey key = key_of(bytes);
        vel::vel_trie_insert(trie, &key, value == default_value ? nullptr : &value);
    }
    if (shared) vel::vel_trie_share(trie);
    return trie;
}

inline std::string table_text(const characters &entries, uint16_t default_value = 0,
                              bool shared = true) {
    vel::vel_trie *trie = build_table(entries, default_value, shared);
    string_sink sink;
    vel::vel_trie_write(sink, trie, vel::write_trie_value16);
    vel::vel_trie_free(trie);
    return sink.text;
}

// A string as sections hold it.
inline std::string hex_text(const std::string &bytes) {
    std::string text = std::to_string(bytes.size());
    for (size_t i = 0; i < bytes.size(); ++i) {
        char digits[4];
        snprintf(digits, sizeof digits, i ? "%02X" : " %02X", static_cast<unsigned char>(bytes[i]));
        text += digits;
    }
    return text + "\n";
}

inline std::string hex_texts(const std::vector<std::string> &list) {
    std::string text;
    for (const std::string &one : list) text += hex_text(one);
    return text;
}

// A list with its count.
inline std::string counted(const std::vector<std::string> &list) {
    return std::to_string(list.size()) + "\n" + hex_texts(list);
}

// A locale object by its parts. As made it is a small locale of a single-byte code set: letters,
// digits and a space, every byte a character.
struct object_parts {
    std::string type = "FILE_TYPE=locale_object\n";
    std::string version = "COMPILER_VERSION=11\n";
    std::string length = "HEADER_LENGTH=4\nSOURCE=test\n";
    std::string codeset = "819\n";
    std::string class_table, classes, case_table, pairs, growth = "1.5\n";
    std::string collate = "as_specified\n";
    std::string numeric, monetary, calendar = "gregorian\n", time, messages;

    object_parts() {
        characters masks, cases;
        for (int b = 0; b < 256; ++b) masks[std::string(1, static_cast<char>(b))] = 0;
        for (char c = 'A'; c <= 'Z'; ++c) {
            masks[std::string(1, c)] = 1 | 4;
            masks[std::string(1, static_cast<char>(c + 32))] = 2 | 4;
        }
        for (char c = '0'; c <= '9'; ++c) masks[std::string(1, c)] = 8 | 512;
        masks[" "] = 16 | 1024;
        cases = {{"A", 1}, {"a", 1}, {"B", 2}, {"b", 2}};
        class_table = table_text(masks);
        classes = "2\n0 full_width\n1 vowel\n";
        case_table = table_text(cases);
        pairs = "2\n0000004100000061 0000004200000062\n";
        collate += table_text({{"A", 1}, {"B", 2}, {"C", 3}, {"a", 1}, {"b", 4}}) +
                   "2 5 9 1 1 0\n1\n0001 8002 4000 0004 0005\n2\n0001 0002 0003 0009 0001\n"
                   "2 00000061 00000062 0004\n2 00000041 00000043\n";
        numeric = hex_texts({",", "."}) + "2 3 -1\n" + hex_texts({"+", "-"});
        monetary = hex_texts({"EUR ", "E", ",", "."}) + "1 3\n" + hex_texts({"", "-"}) +
                   "2 2 0 1 0 1 127 -4\n";
        time = hex_texts({"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"}) +
               hex_texts(
                   {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"}) +
               counted({"Jan", "Feb"}) + counted({"January", "February"}) +
               hex_texts({"%c", "%x", "%X", "AM", "PM", "%r"}) + counted({"era one"}) +
               hex_texts({"%Ex", "%EX", "%Ec"}) + counted({"o", "i"});
        messages = hex_texts({"^y", "^n", "yes", ""});
    }

    std::string text() const {
        return type + version + length + codeset + "### LC_CTYPE\n" + class_table + classes +
               case_table + pairs + growth + "### LC_COLLATE\n" + collate + "### LC_NUMERIC\n" +
               numeric + "### LC_MONETARY\n" + monetary + "### LC_TIME\n" + calendar + time +
               "### LC_MESSAGES\n" + messages;
    }
};

// The same locale in a code set of one to three bytes: ASCII, a few letters of two bytes and one
// of three.
inline object_parts multibyte_parts() {
    object_parts parts;
    characters masks, cases;
    for (char c = 0; c >= 0 && c < 0x7F; ++c) masks[std::string(1, c)] = 256;
    masks["\xC3\x84"] = masks["\xC3\x96"] = masks["\xC4\xB0"] = 1 | 4;
    masks["\xC3\xA4"] = masks["\xC3\xB6"] = 2 | 4;
    masks["\xE2\x82\xAC"] = 64;
    for (const auto &[bytes, mask] : masks) cases[bytes] = 0;
    cases["\xC3\x84"] = cases["\xC3\xA4"] = 1;
    cases["\xC3\x96"] = cases["\xC3\xB6"] = 2;
    cases["i"] = 3; // grows to two bytes
    parts.codeset = "57372\n";
    parts.class_table = table_text(masks);
    parts.case_table = table_text(cases);
    parts.pairs = "3\n0000C3840000C3A4 0000C3960000C3B6\n0000C4B000000069";
    parts.growth = " 2.0\n"; // on the line of the last pair
    parts.monetary = hex_texts({"EUR ", "\xE2\x82\xAC", ",", "."}) + "1 3\n" +
                     hex_texts({"", "-"}) + "2 2 0 1 0 1 127 1\n";
    return parts;
}

} // namespace vel_test

#pragma once

// Reading objects strictly: what a loader might tolerate or not notice is an error here.

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "objfile/text_reader.h"
#include "objfile/trie.h"
#include "velc/byte_table.h"

namespace velc {

enum class object_kind { locale, charmap, conversion, registry };

// The lines before the body.
struct object_head {
    object_kind kind = object_kind::locale;
    int version = 0;
    std::vector<std::string> lines; // behind the three that every object has
    // The value of the line NAME=value; nothing when there is none.
    std::optional<std::string> value(std::string_view name) const;
};

// Whose first line says that it is an object, else registry. Throws tool_error when the file cannot
// be read.
object_kind kind_of_file(const std::filesystem::path &path);

class object_input {
public:
    explicit object_input(const std::filesystem::path &path);

    // What is being read, for messages: "LC_TIME: d_fmt".
    void set_place(std::string place) { place_ = std::move(place); }
    // Throws tool_error: "file: place: found ..., expected ...".
    [[noreturn]] void fail(std::string_view found, std::string_view expected) const;

    object_head read_head();

    std::string line(); // without its line break
    bool at_end();      // nothing but white space is left
    int integer();      // between white space
    int integer(int least, int most);
    double real();
    std::string word();
    std::uint32_t hex(int digits); // behind white space, exactly so many
    std::uint32_t hex_here(int digits);
    std::string text(); // length and bytes
    trie_pointer table(int value_size, vel::trie_value_reader read_value);
    trie_pointer table16() { return table(2, vel::read_trie_value16); }

private:
    struct close_file {
        void operator()(std::FILE *file) const { std::fclose(file); }
    };
    [[noreturn]] void fail_end() const { fail("the end of the file", "more"); }

    std::string name_, place_;
    std::unique_ptr<std::FILE, close_file> file_;
    std::unique_ptr<vel::text_reader> in_;
};

// The bytes of a file.
std::string read_file(const std::filesystem::path &path);

// Calls f(bytes, value) for every character of a table, rising by bytes.
template <typename F>
void for_each_character(const vel::vel_trie &table, const vel::vel_trie_node *node,
                        byte_sequence prefix, F &f) {
    if (!node->state) return;
    for (std::uint32_t b = 0; b < 256; ++b) {
        const byte_sequence bytes{prefix.value << 8 | b,
                                  static_cast<std::uint8_t>(prefix.length + 1)};
        if (node->state[b] == vel::byte_more)
            for_each_character(table, node->children[node->index[b]], bytes, f);
        if (node->state[b] == vel::byte_terminal)
            f(bytes, node->page ? node->page + (b << table.slot_shift) : table.default_value);
    }
}
template <typename F> void for_each_character(const vel::vel_trie &table, F f) {
    for_each_character(table, table.root, byte_sequence{}, f);
}

// A value of two bytes, as for_each_character hands it out.
inline std::uint16_t value16(const unsigned char *value) {
    std::uint16_t number;
    std::char_traits<char>::copy(reinterpret_cast<char *>(&number),
                                 reinterpret_cast<const char *>(value), sizeof number);
    return number;
}

} // namespace velc

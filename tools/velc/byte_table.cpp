#include "velc/byte_table.h"

#include "velc/tool_error.h"

namespace velc {

namespace {

struct string_sink : vel::text_sink {
    std::string &text;
    explicit string_sink(std::string &to) : vel::text_sink{append}, text(to) {}
    static void append(vel::text_sink *self, const char *bytes, std::size_t length) {
        static_cast<string_sink *>(self)->text.append(bytes, length);
    }
};

} // namespace

vel::vel_mbkey key_of(const byte_sequence &bytes) {
    vel::vel_mbkey key{bytes.length, {}};
    for (int i = 0; i < bytes.length; ++i) key.bytes[i] = bytes[i];
    return key;
}

void throw_insert_error(const vel::vel_trie &table, const byte_sequence &bytes) {
    if (vel::vel_trie_error(&table) != 0) throw std::bad_alloc();
    throw tool_error("found a character whose first bytes are another character ({:X}), expected a "
                     "code set without such",
                     bytes.value);
}

void write_table(vel::vel_trie &table, std::string &text, vel::trie_value_writer write_value) {
    if (vel::vel_trie_share(&table) != 0) throw std::bad_alloc();
    string_sink sink(text);
    vel::vel_trie_write(sink, &table, write_value);
}

byte_table::byte_table(std::uint16_t default_value)
    : table_(vel::vel_trie_create(sizeof default_value, 0, &default_value)),
      default_value_(default_value) {
    if (!table_) throw std::bad_alloc();
}

void byte_table::insert(const byte_sequence &bytes, std::uint16_t value) {
    const vel::vel_mbkey key = key_of(bytes);
    const void *stored = value == default_value_ ? nullptr : &value;
    if (vel::vel_trie_insert(table_.get(), &key, stored) == 0) return;
    throw_insert_error(*table_, bytes);
}

void byte_table::append_to(std::string &text) {
    write_table(*table_, text, vel::write_trie_value16);
}

} // namespace velc

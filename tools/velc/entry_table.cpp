#include "velc/entry_table.h"

#include <array>
#include <cstring>

#include "velc/tool_error.h"

namespace velc {

namespace {

using stored_entry = std::array<unsigned char, 5>;

stored_entry stored(const conversion_entry &entry) {
    stored_entry value{};
    value[0] = static_cast<unsigned char>(entry.flags | entry.bytes.length);
    for (int i = 0; i < entry.bytes.length; ++i)
        value[static_cast<std::size_t>(i) + 1] = entry.bytes[i];
    return value;
}

void write_entry(vel::text_sink &out, const unsigned char *value, std::int32_t) {
    constexpr char digits[] = "0123456789abcdef";
    char text[2 * std::tuple_size_v<stored_entry>];
    std::size_t length = 0;
    for (int i = 0; i <= (value[0] & entry_length_bits); ++i) {
        text[length++] = digits[value[i] >> 4];
        text[length++] = digits[value[i] & 15];
    }
    out.put(&out, text, length);
}

} // namespace

entry_table::entry_table(const conversion_entry &default_entry) : default_(default_entry) {
    const stored_entry value = stored(default_entry);
    table_.reset(vel::vel_trie_create(value.size(), 0, value.data()));
    if (!table_) throw std::bad_alloc();
}

void entry_table::insert(const byte_sequence &source, const void *value) {
    const vel::vel_mbkey key = key_of(source);
    if (vel::vel_trie_insert(table_.get(), &key, value) == 0) return;
    throw_insert_error(*table_, source);
}

void entry_table::put(const byte_sequence &source, const conversion_entry &entry) {
    const stored_entry value = stored(entry);
    insert(source, entry == default_ ? nullptr : value.data());
}

void entry_table::accept(const byte_sequence &first, unsigned count) {
    insert(first, nullptr);
    const vel::vel_trie_node *node = table_->root;
    for (int i = 0; i + 1 < first.length; ++i) node = node->children[node->index[first[i]]];
    std::memset(node->state + first[first.length - 1], vel::byte_terminal, count);
}

void entry_table::append_to(std::string &text) {
    write_table(*table_, text, write_entry);
}

} // namespace velc

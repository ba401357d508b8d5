// Building tables.
#include "objfile/trie.h"

#include <cstring>

#include "vels/errors.h"

namespace vel {
namespace {

int32_t out_of_memory(vel_trie *table) {
    table->error = VEL_ENOMEM;
    return -1;
}

bool make_table(vel_trie *table, unsigned char *&bytes) {
    if (!bytes) bytes = table->blocks.take_array<unsigned char>(256);
    return bytes != nullptr;
}

bool make_page(vel_trie *table, vel_trie_node *node) {
    if (node->page) return true;
    unsigned char *page =
        table->blocks.take_array<unsigned char>(static_cast<size_t>(table->page_bytes()));
    if (!page) return false;
    size_t value_size = static_cast<size_t>(table->value_size);
    for (int b = 0; b < 256; ++b) {
        memcpy(page + (b << table->slot_shift), table->default_value, value_size);
    }
    node->page = page;
    ++table->page_count;
    return true;
}

bool make_state(vel_trie *table, vel_trie_node *node) {
    if (!node->state) ++table->state_count;
    return make_table(table, node->state);
}

int32_t insert_last(vel_trie *table, vel_trie_node *node, unsigned char b, const void *value) {
    if (!make_state(table, node)) return out_of_memory(table);
    if (node->state[b] == byte_more) return -1;
    node->state[b] = byte_terminal;
    if (!value) return 0;
    if (!make_page(table, node)) return out_of_memory(table);
    memcpy(node->page + (b << table->slot_shift), value, static_cast<size_t>(table->value_size));
    return 0;
}

int32_t insert_at(vel_trie *table, vel_trie_node *node, uint32_t depth, const vel_mbkey *key,
                  const void *value) {
    unsigned char b = key->bytes[depth];
    if (depth + 1 == key->length) return insert_last(table, node, b, value);
    if (node->state && node->state[b] == byte_terminal) return -1;
    if (!make_state(table, node)) return out_of_memory(table);
    if (!node->index) {
        if (!make_table(table, node->index)) return out_of_memory(table);
        ++table->index_count;
    }
    if (!node->children) node->children = table->blocks.take_array<vel_trie_node *>(256);
    if (!node->children) return out_of_memory(table);
    if (node->state[b] == byte_more) {
        return insert_at(table, node->children[node->index[b]], depth + 1, key, value);
    }
    auto *child = table->blocks.take_array<vel_trie_node>(1);
    if (!child) return out_of_memory(table);
    child->state_index = child->page_index = -1;
    if (insert_at(table, child, depth + 1, key, value) != 0) return -1;
    int32_t number = node->child_count++;
    node->state[b] = byte_more;
    node->index[b] = static_cast<unsigned char>(number);
    node->children[number] = child;
    return 0;
}

} // namespace

vel_trie *vel_trie_create(int32_t value_size, int32_t flags, const void *default_value) {
    void *block = vel_alloc(sizeof(vel_trie));
    if (!block) return nullptr;
    vel_trie *table = new (block) vel_trie{};
    table->value_size = value_size;
    table->shortest = max_character_bytes;
    table->flags = flags | trie_terminal_marks;
    while ((1 << table->slot_shift) < value_size) ++table->slot_shift;
    table->root = table->blocks.take_array<vel_trie_node>(1);
    table->default_value = table->blocks.take_array<unsigned char>(static_cast<size_t>(value_size));
    if (!table->root || !table->default_value || !make_state(table, table->root)) {
        vel_trie_free(table);
        return nullptr;
    }
    table->root->state_index = table->root->page_index = -1;
    if (default_value) {
        memcpy(table->default_value, default_value, static_cast<size_t>(value_size));
    }
    return table;
}

int32_t vel_trie_insert(vel_trie *table, const vel_mbkey *key, const void *value) {
    if (key->length < 1 || key->length > max_character_bytes) return -1;
    if (insert_at(table, table->root, 0, key, value) != 0) return -1;
    int32_t length = static_cast<int32_t>(key->length);
    if (length > table->longest) table->longest = length;
    if (length < table->shortest) table->shortest = length;
    return 0;
}

void vel_trie_free(vel_trie *table) {
    if (!table) return;
    table->~vel_trie();
    vel_free(table);
}

const unsigned char *vel_trie_built_value(const vel_trie *table, const vel_mbkey *key) {
    const vel_trie_node *node = table->root;
    for (uint32_t depth = 0; node->state; ++depth) {
        unsigned char b = key->bytes[depth];
        bool last = depth + 1 == key->length;
        if (last && node->state[b] == byte_terminal) {
            return node->page ? node->page + (b << table->slot_shift) : table->default_value;
        }
        if (last || node->state[b] != byte_more) return nullptr;
        node = node->children[node->index[b]];
    }
    return nullptr;
}

void trie_accept_every_byte(vel_trie *table) {
    if (table->longest >= 2 || table->shortest != 1 || !table->root->state) return;
    memset(table->root->state, byte_terminal, 256);
}

} // namespace vel

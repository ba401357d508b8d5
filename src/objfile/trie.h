// The byte trie: the model of every per-character table, as it is built, read, shared and written.
// Looking characters up happens on the sealed form (sealed.h) that is made from it once.
#pragma once

#include "ext/arena.h"
#include "objfile/key.h"
#include "objfile/text_reader.h"

namespace vel {

// What a byte means at a node.
enum : unsigned char {
    byte_invalid = 0,
    byte_more = 1,     // the child `children[index[byte]]` goes on
    byte_terminal = 4, // ends a character; its value is slot `byte` of the page, or the default
};

enum : int32_t {
    trie_terminal_marks = 1, // always set: a last byte is terminal even without a value
    trie_shared = 2,         // equal state tables and value pages are stored once
};

struct vel_trie_node {
    uint32_t reserved; // always 0
    int32_t child_count;
    int32_t state_index; // in the shared arrays, -1 for none
    int32_t page_index;
    unsigned char *state; // 256 entries, null until needed
    unsigned char *index; // 256 child numbers, null until needed
    unsigned char *page;  // 256 slots, null while every slot holds the default value
    vel_trie_node **children;
};

struct vel_trie {
    int32_t value_size;
    int32_t longest;  // 0 while empty
    int32_t shortest; // 4 while empty
    int32_t flags;
    int32_t page_count;
    int32_t state_count;
    int32_t index_count;
    int32_t error; // 0, VEL_ENOMEM, VEL_ELONGKEY or VEL_EBADFILE
    vel_trie_node *root;
    unsigned char *default_value;
    int32_t slot_shift; // a slot is 1 << slot_shift bytes
    unsigned char **shared_states;
    unsigned char **shared_pages;
    int32_t *child_counts; // of each shared state table
    arena blocks;          // everything above lives here

    int32_t page_bytes() const { return 256 << slot_shift; }
};

// Reads one value of `size` bytes into `value`.
using trie_value_reader = void (*)(text_reader &stream, unsigned char *value, int32_t size);

// Receives the written form of a table: the first member of whatever the receiver really is.
struct text_sink {
    void (*put)(text_sink *self, const char *text, size_t length);
};
// Writes one value of `size` bytes.
using trie_value_writer = void (*)(text_sink &out, const unsigned char *value, int32_t size);

// A new empty table, or null when memory cannot be had. `default_value` is copied; null means
// zeroes.
vel_trie *vel_trie_create(int32_t value_size, int32_t flags, const void *default_value);

// Inserts a key. A null value only marks it terminal. -1 when memory cannot be had, when the key's
// length is not 1 to 4, and when the key is a prefix of a present key or the reverse.
int32_t vel_trie_insert(vel_trie *table, const vel_mbkey *key, const void *value);

// Reads a table that vel_trie_create has just made. -1 with the table's error set: VEL_ELONGKEY for
// keys longer than max_key, VEL_ENOMEM, VEL_EBADFILE for anything that is not a table.
int32_t vel_trie_read(text_reader &stream, vel_trie *table, int32_t max_key,
                      trie_value_reader read_value);

void vel_trie_write(text_sink &out, vel_trie *table, trie_value_writer write_value);

// Turns a built table into the shared form. -1 when memory cannot be had.
int32_t vel_trie_share(vel_trie *table);

// Frees a table and all it holds; null is accepted.
void vel_trie_free(vel_trie *table);

struct trie_owner {
    ~trie_owner() { vel_trie_free(trie); }
    vel_trie *trie;
};

inline int32_t vel_trie_error(const vel_trie *table) {
    return table->error;
}

// The value of a key that ends exactly, or null. For builders; loaded tables are looked up sealed.
const unsigned char *vel_trie_built_value(const vel_trie *table, const vel_mbkey *key);

// A code set whose characters are all single bytes accepts every byte.
void trie_accept_every_byte(vel_trie *table);

// Values of two bytes, written as four hexadecimal digits: those of all locale tables.
void read_trie_value16(text_reader &stream, unsigned char *value, int32_t size);
void write_trie_value16(text_sink &out, const unsigned char *value, int32_t size);

} // namespace vel

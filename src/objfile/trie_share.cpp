// The shared form: equal state tables and value pages stored once.
#include <cstring>

#include "objfile/trie.h"
#include "vels/errors.h"

namespace vel {
namespace {

// Finds equal blocks among those already stored. Kept as an open hash table, so that sharing stays
// linear in the size of the table.
class block_pool {
public:
    bool reserve(size_t count) {
        size_t capacity = 16;
        while (capacity < count * 2) capacity *= 2;
        slots_ = make_host_array<int32_t>(capacity);
        if (!slots_) return false;
        memset(slots_.get(), 0xFF, capacity * sizeof(int32_t));
        mask_ = capacity - 1;
        return true;
    }

    // The number of an equal block, or `count` after noting that this block gets that number.
    int32_t find_or_add(const unsigned char *block, size_t size, unsigned char *const *stored,
                        int32_t count) {
        size_t slot = hash(block, size) & mask_;
        while (slots_[slot] >= 0) {
            if (memcmp(stored[slots_[slot]], block, size) == 0) return slots_[slot];
            slot = (slot + 1) & mask_;
        }
        slots_[slot] = count;
        return count;
    }

private:
    static size_t hash(const unsigned char *block, size_t size) {
        uint64_t value = 14695981039346656037u;
        for (size_t i = 0; i < size; ++i) value = (value ^ block[i]) * 1099511628211u;
        return static_cast<size_t>(value ^ value >> 32);
    }

    host_ptr<int32_t> slots_;
    size_t mask_ = 0;
};

struct sharing {
    vel_trie *table;
    block_pool states;
    block_pool pages;

    // Slots are compared with their padding, which insertion leaves zero.
    bool start() {
        size_t state_count = static_cast<size_t>(table->state_count);
        size_t page_count = static_cast<size_t>(table->page_count);
        arena &blocks = table->blocks;
        table->shared_states = blocks.take_array<unsigned char *>(state_count + 1);
        table->shared_pages = blocks.take_array<unsigned char *>(page_count + 1);
        table->child_counts = blocks.take_array<int32_t>(state_count + 1);
        table->state_count = table->page_count = 0;
        return table->shared_states && table->shared_pages && table->child_counts &&
               states.reserve(state_count) && pages.reserve(page_count);
    }

    void share_state(vel_trie_node *node) {
        node->state_index = -1;
        if (!node->state) return;
        int32_t &count = table->state_count;
        int32_t index = states.find_or_add(node->state, 256, table->shared_states, count);
        if (index == count) {
            for (int b = 0; b < 256; ++b) table->child_counts[index] += node->state[b] == byte_more;
            table->shared_states[count++] = node->state;
        }
        node->state = table->shared_states[index];
        node->state_index = index;
    }

    void share_page(vel_trie_node *node) {
        node->page_index = -1;
        if (!node->page) return;
        int32_t &count = table->page_count;
        size_t size = static_cast<size_t>(table->page_bytes());
        int32_t index = pages.find_or_add(node->page, size, table->shared_pages, count);
        if (index == count) table->shared_pages[count++] = node->page;
        node->page = table->shared_pages[index];
        node->page_index = index;
    }

    void share(vel_trie_node *node) {
        share_state(node);
        share_page(node);
        if (!node->state) return;
        for (int b = 0; b < 256; ++b) {
            if (node->state[b] == byte_more) share(node->children[node->index[b]]);
        }
    }
};

} // namespace

int32_t vel_trie_share(vel_trie *table) {
    trie_accept_every_byte(table);
    sharing sharing{table, {}, {}};
    if (!sharing.start()) {
        table->error = VEL_ENOMEM;
        return -1;
    }
    table->flags |= trie_shared;
    sharing.share(table->root);
    return 0;
}

} // namespace vel

// Writing a table: the counterpart of trie_read.cpp, used by the object compilers.
#include <cstdio>
#include <cstring>

#include "objfile/trie.h"

namespace vel {
namespace {

constexpr char digits[] = "0123456789abcdef";

class writer {
public:
    writer(text_sink &out, const vel_trie *table, trie_value_writer write_value)
        : out_(out), table_(table), write_value_(write_value) {}

    void write() {
        line("%d %d %d ", table_->longest, table_->shortest, table_->flags);
        write_value_(out_, table_->default_value, table_->value_size);
        put_newline();
        if (!(table_->flags & trie_shared)) return write_node(table_->root);
        line("%d %d\n", table_->state_count, table_->page_count);
        for (int32_t i = 0; i < table_->state_count; ++i) write_state(table_->shared_states[i]);
        for (int32_t i = 0; i < table_->page_count; ++i) write_page(table_->shared_pages[i]);
        write_shared_node(table_->root);
    }

private:
    template <typename... Values> void line(const char *format, Values... values) {
        char text[64];
        int length = snprintf(text, sizeof text, format, values...);
        out_.put(&out_, text, static_cast<size_t>(length));
    }

    void put_newline() { out_.put(&out_, "\n", 1); }

    void write_node(const vel_trie_node *node) {
        line("%d %d\n", node->state ? 1 : 0, node->page ? 1 : 0);
        if (node->state) write_state(node->state);
        if (node->page) write_page(node->page);
        write_children(node, &writer::write_node);
    }

    void write_shared_node(const vel_trie_node *node) {
        line("%d %d %u %u\n", node->state ? 1 : 0, node->page ? 1 : 0,
             node->state ? static_cast<unsigned>(node->state_index) : 0u,
             node->page ? static_cast<unsigned>(node->page_index) : 0u);
        write_children(node, &writer::write_shared_node);
    }

    using node_writer = void (writer::*)(const vel_trie_node *);

    void write_children(const vel_trie_node *node, node_writer write_child) {
        if (!node->state) return;
        for (int b = 0; b < 256; ++b) {
            if (node->state[b] == byte_more) (this->*write_child)(node->children[node->index[b]]);
        }
    }

    void write_state(const unsigned char *state) {
        static constexpr unsigned char none[1] = {byte_invalid};
        write_runs(state, 0, 1, none, [](text_sink &out, const unsigned char *entry, int32_t) {
            char text[2] = {digits[*entry >> 4], digits[*entry & 15]};
            out.put(&out, text, sizeof text);
        });
    }
    void write_page(const unsigned char *page) {
        write_runs(page, table_->slot_shift, table_->value_size, table_->default_value,
                   write_value_);
    }

    // Four equal entries in a row are written as a repeat, everything else literally; entries that
    // equal `skipped` are written only inside a literal run.
    void write_runs(const unsigned char *entries, int shift, int32_t size,
                    const unsigned char *skipped, trie_value_writer write_entry) {
        auto entry = [&](int i) { return entries + (static_cast<size_t>(i) << shift); };
        auto same = [&](const unsigned char *a, const unsigned char *b) {
            return memcmp(a, b, static_cast<size_t>(size)) == 0;
        };
        // How many entries from `i` on equal entry `i`.
        auto stretch = [&](int i) {
            int end = i + 1;
            while (end < 256 && same(entry(i), entry(end))) ++end;
            return end - i;
        };
        for (int i = 0; i < 256;) {
            if (same(entry(i), skipped)) {
                ++i;
                continue;
            }
            int repeat = stretch(i);
            if (repeat >= 4) {
                line("%02x%03x%03x", i, 1, repeat);
                write_entry(out_, entry(i), size);
                put_newline();
                i += repeat;
                continue;
            }
            int end = i;
            while (end < 256 && stretch(end) < 4) end += stretch(end);
            if (end < 256) end += 3; // the repeat to come would start three entries later
            int resume = end;
            while (same(entry(end - 1), skipped)) --end;
            line("%02x%03x%03x", i, end - i, 1);
            for (int k = i; k < end; ++k) write_entry(out_, entry(k), size);
            put_newline();
            i = resume;
        }
        out_.put(&out_, "0000000\n", 8);
    }

    text_sink &out_;
    const vel_trie *table_;
    trie_value_writer write_value_;
};

} // namespace

void vel_trie_write(text_sink &out, vel_trie *table, trie_value_writer write_value) {
    trie_accept_every_byte(table);
    writer(out, table, write_value).write();
}

void write_trie_value16(text_sink &out, const unsigned char *value, int32_t) {
    uint16_t number;
    memcpy(&number, value, sizeof number);
    char text[4];
    for (int i = 0; i < 4; ++i) text[i] = digits[number >> (12 - 4 * i) & 15];
    out.put(&out, text, sizeof text);
}

} // namespace vel

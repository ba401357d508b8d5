// Reading a table from an object file.
//
// Contract. A table that this reader accepts keeps these promises, so that sealing and every later
// walk need no checks of their own:
//   - every state entry is invalid, more or terminal, and each "more" has its child;
//   - no node lies deeper than the longest key, and that is at most max_key;
//   - shortest and longest key agree: 1 to longest, or 4 and 0 for an empty table;
//   - every index into the shared arrays is inside them.
// Everything else is refused with VEL_EBADFILE. Nothing from the file is believed as a size: the
// shared arrays grow as their members arrive, each of which takes at least eight bytes of the file,
// and so does each node; so memory and work are linear in the length of the file.
#include <cstring>

#include "objfile/trie.h"
#include "vels/errors.h"

namespace vel {
namespace {

struct run {
    uint32_t first;
    uint32_t length; // of the literal part
    uint32_t repeat;
};

class reader {
public:
    reader(text_reader &stream, vel_trie *table, trie_value_reader read_value)
        : stream_(stream), table_(table), read_value_(read_value) {}

    int32_t read(int32_t max_key) {
        if (read_header(max_key) && (is_shared() ? read_shared() : read_node(table_->root, 1))) {
            return 0;
        }
        if (table_->error == 0) table_->error = VEL_EBADFILE;
        return -1;
    }

private:
    bool is_shared() const { return table_->flags & trie_shared; }
    bool out_of_memory() {
        table_->error = VEL_ENOMEM;
        return false;
    }
    int32_t next_int() {
        int32_t value = vel_read_int(stream_);
        vel_skip_space(stream_);
        return value;
    }

    bool read_header(int32_t max_key) {
        table_->longest = vel_read_int(stream_);
        table_->shortest = vel_read_int(stream_);
        table_->flags = vel_read_int(stream_) | trie_terminal_marks;
        if (table_->longest > max_key) {
            table_->error = VEL_ELONGKEY;
            return false;
        }
        vel_skip_space(stream_);
        read_value_(stream_, table_->default_value, table_->value_size);
        vel_skip_space(stream_);
        bool empty = table_->longest == 0 && table_->shortest == max_character_bytes;
        bool filled = table_->shortest >= 1 && table_->shortest <= table_->longest;
        return (empty || filled) && !stream_.truncated();
    }

    bool read_shared() {
        int32_t state_count = next_int();
        int32_t page_count = next_int();
        for (int32_t i = 0; i < state_count; ++i) {
            unsigned char *state = read_state();
            if (!state) return false;
            if (!states_.push(state)) return out_of_memory();
        }
        for (int32_t i = 0; i < page_count; ++i) {
            unsigned char *page = read_page();
            if (!page) return false;
            if (!pages_.push(page)) return out_of_memory();
        }
        return keep_shared() && read_shared_node(table_->root, 1);
    }

    bool keep_shared() {
        arena &blocks = table_->blocks;
        table_->state_count = static_cast<int32_t>(states_.size());
        table_->page_count = static_cast<int32_t>(pages_.size());
        table_->shared_states = blocks.take_array<unsigned char *>(states_.size() + 1);
        table_->shared_pages = blocks.take_array<unsigned char *>(pages_.size() + 1);
        table_->child_counts = blocks.take_array<int32_t>(states_.size() + 1);
        if (!table_->shared_states || !table_->shared_pages || !table_->child_counts) {
            return out_of_memory();
        }
        for (size_t i = 0; i < states_.size(); ++i) {
            table_->shared_states[i] = states_[i];
            table_->child_counts[i] = count_children(states_[i]);
        }
        for (size_t i = 0; i < pages_.size(); ++i) table_->shared_pages[i] = pages_[i];
        return true;
    }

    bool read_shared_node(vel_trie_node *node, int32_t depth) {
        int32_t line[4];
        read_node_line(line);
        bool has_state = line[0] != 0;
        bool has_page = line[1] != 0;
        int32_t state = line[2];
        int32_t page = line[3];
        if (stream_.truncated()) return false;
        if (has_state && (state < 0 || state >= table_->state_count)) return false;
        if (has_page && (page < 0 || page >= table_->page_count)) return false;
        node->state_index = has_state ? state : -1;
        node->page_index = has_page ? page : -1;
        node->state = has_state ? table_->shared_states[state] : nullptr;
        node->page = has_page ? table_->shared_pages[page] : nullptr;
        node->child_count = has_state ? table_->child_counts[state] : 0;
        if (node->child_count == 0) return true;
        line_length_ = 0; // what repeats is the line of a last node only
        return read_children(node, depth);
    }

    bool read_node(vel_trie_node *node, int32_t depth) {
        bool has_state = next_int() != 0;
        bool has_page = next_int() != 0;
        if (stream_.truncated()) return false;
        if (has_state && !(node->state = read_state())) return false;
        if (has_page && !(node->page = read_page())) return false;
        table_->state_count += has_state && depth > 1;
        table_->page_count += has_page;
        node->state_index = node->page_index = -1;
        node->child_count = has_state ? count_children(node->state) : 0;
        return node->child_count == 0 || read_children(node, depth);
    }

    // The children of a node in byte order. Most of a large table is long stretches of equal last
    // nodes; in the shared form one node stands for each stretch.
    bool read_children(vel_trie_node *node, int32_t depth) {
        if (depth >= table_->longest) return false;
        arena &blocks = table_->blocks;
        node->children = blocks.take_array<vel_trie_node *>(static_cast<size_t>(node->child_count));
        node->index = blocks.take_array<unsigned char>(256);
        if (!node->children || !node->index) return out_of_memory();
        ++table_->index_count;
        for (int b = 0, number = 0; b < 256; ++b) {
            if (node->state[b] != byte_more) continue;
            vel_trie_node *child = read_child(depth + 1);
            if (!child) return false;
            node->index[b] = static_cast<unsigned char>(number);
            node->children[number++] = child;
        }
        return true;
    }

    vel_trie_node *read_child(int32_t depth) {
        if (last_ && repeats_last_line()) return last_;
        vel_trie_node read{};
        if (!(is_shared() ? read_shared_node(&read, depth) : read_node(&read, depth))) {
            return nullptr;
        }
        bool last = is_shared() && read.child_count == 0;
        if (last && last_ && last_->state_index == read.state_index &&
            last_->page_index == read.page_index) {
            return last_;
        }
        auto *node = table_->blocks.take_array<vel_trie_node>(1);
        if (!node) {
            table_->error = VEL_ENOMEM;
            return nullptr;
        }
        *node = read;
        if (last) last_ = node;
        return node;
    }

    // Steps over a node line that is, to the byte, the one that was read last.
    bool repeats_last_line() {
        if (line_length_ < sizeof(uint64_t)) return false; // as no line is that begins at a newline
        const unsigned char *text = stream_.peek(line_length_ + 1);
        if (!text || memcmp(text, line_, sizeof(uint64_t)) != 0) return false;
        for (size_t i = sizeof(uint64_t); i < line_length_; ++i) {
            if (text[i] != line_[i]) return false;
        }
        if (is_digit(text[line_length_])) return false;
        stream_.advance(line_length_);
        return true;
    }
    void read_node_line(int32_t *values) {
        const unsigned char *text = stream_.peek(sizeof line_);
        line_length_ = read_ints(stream_, values, 4);
        if (!text || line_length_ > sizeof line_) line_length_ = 0;
        if (line_length_) memcpy(line_, text, line_length_);
    }

    static int32_t count_children(const unsigned char *state) {
        int32_t count = 0;
        for (int b = 0; b < 256; ++b) count += state[b] == byte_more;
        return count;
    }

    // The head of a run line. False at the end of the list and for a run that leaves the table.
    bool next_run(run *run) {
        run->first = vel_read_hex(stream_, 2);
        run->length = vel_read_hex(stream_, 3);
        run->repeat = vel_read_hex(stream_, 3);
        if (stream_.truncated()) return bad_run();
        if (run->length == 0) return false;
        // Values are read into the table itself, so a run that repeats 0 times needs room too.
        uint32_t repeat = run->repeat ? run->repeat : 1;
        // Fields that are not hexadecimal come out larger than their width, so each is bounded
        // before they are multiplied.
        bool bounded = run->length <= 256 && repeat <= 256;
        return (bounded && run->first + run->length * repeat <= 256) || bad_run();
    }
    bool bad_run() {
        bad_run_ = true;
        return false;
    }

    unsigned char *read_state() {
        auto *state = table_->blocks.take_array<unsigned char>(256);
        if (!state) {
            table_->error = VEL_ENOMEM;
            return nullptr;
        }
        run run;
        while (next_run(&run)) {
            unsigned char literal[256];
            for (uint32_t i = 0; i < run.length; ++i) {
                uint32_t entry = vel_read_hex(stream_, 2);
                if (entry != byte_invalid && entry != byte_more && entry != byte_terminal) {
                    return nullptr;
                }
                literal[i] = static_cast<unsigned char>(entry);
            }
            for (uint32_t i = 0; i < run.repeat; ++i) {
                memcpy(state + run.first + i * run.length, literal, run.length);
            }
            vel_skip_space(stream_);
        }
        return bad_run_ ? nullptr : state;
    }

    unsigned char *read_page() {
        auto *page =
            table_->blocks.take_array<unsigned char>(static_cast<size_t>(table_->page_bytes()));
        if (!page) {
            table_->error = VEL_ENOMEM;
            return nullptr;
        }
        fill_with_default(page);
        run run;
        while (next_run(&run)) {
            read_values(slot(page, run.first), static_cast<int32_t>(run.length));
            size_t bytes = static_cast<size_t>(run.length) << table_->slot_shift;
            for (uint32_t i = 1; i < run.repeat; ++i) {
                memcpy(slot(page, run.first + i * run.length), slot(page, run.first), bytes);
            }
            vel_skip_space(stream_);
        }
        return bad_run_ ? nullptr : page;
    }

    void fill_with_default(unsigned char *page) {
        if (size() == sizeof(uint16_t)) {
            uint16_t value;
            memcpy(&value, table_->default_value, sizeof value);
            auto *slots = reinterpret_cast<uint16_t *>(page);
            for (uint32_t b = 0; b < 256; ++b) slots[b] = value;
            return;
        }
        memcpy(page, table_->default_value, size());
        size_t page_bytes = static_cast<size_t>(table_->page_bytes());
        for (size_t done = page_bytes / 256; done < page_bytes; done *= 2) {
            memcpy(page + done, page, done);
        }
    }

    void read_values(unsigned char *slots, int32_t count) {
        if (read_value_ == read_trie_value16 && table_->slot_shift == 1) {
            return read_hex16_run(stream_, reinterpret_cast<uint16_t *>(slots), count);
        }
        for (int32_t i = 0; i < count; ++i) {
            read_value_(stream_, slots + (i << table_->slot_shift), table_->value_size);
        }
    }

    unsigned char *slot(unsigned char *page, uint32_t b) {
        return page + (b << table_->slot_shift);
    }
    size_t size() const { return static_cast<size_t>(table_->value_size); }

    text_reader &stream_;
    vel_trie *table_;
    trie_value_reader read_value_;
    host_array<unsigned char *> states_;
    host_array<unsigned char *> pages_;
    bool bad_run_ = false;
    vel_trie_node *last_ = nullptr; // the node without children that was read last
    unsigned char line_[48];        // its line, as far as the length says
    size_t line_length_ = 0;
};

} // namespace

int32_t vel_trie_read(text_reader &stream, vel_trie *table, int32_t max_key,
                      trie_value_reader read_value) {
    return reader(stream, table, read_value).read(max_key);
}

void read_trie_value16(text_reader &stream, unsigned char *value, int32_t) {
    uint16_t number = static_cast<uint16_t>(vel_read_hex(stream, 4));
    memcpy(value, &number, sizeof number);
}

} // namespace vel

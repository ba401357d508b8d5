// Sealing: from the built or read trie to the rows that are looked up.
//
// Rows are made bottom up. A node that has no children is known by its shared state table and
// value page, so of the 17 000 last-byte nodes of a UTF-8 table only the few hundred different ones
// are ever spelled out; every other row is compared by content. The shape of the code set falls out
// on the way: each row is given a form, told from the forms of the rows below it.
//
// What a cell holds is the business of the table that is made, told by its `Form`:
//
//   cell, head           the type of a cell, and of the table's head: longest, shortest, low, width
//                        and shape are set here
//   max_cells            what a row offset in a cell can name
//   more(row)            the cell that leads to a row; is_more and is_end tell cells apart
//   end(node, b)         the cell of a byte that ends a character
//   fill_leaf            the row of a node without children
#pragma once

#include <cstring>

#include "objfile/row_form.h"
#include "objfile/row_numbers.h"
#include "objfile/sealed.h"

namespace vel {

template <typename Form> class sealer {
    using cell = typename Form::cell;

public:
    sealer(const vel_trie *trie, Form form) : trie_(trie), form_(form) {}

    // Makes head and rows, the root row first. False when memory cannot be had.
    bool seal() {
        measure(trie_->root, 0);
        head_.longest = trie_->longest;
        head_.shortest = trie_->shortest;
        for (int32_t depth = 1; depth < max_character_bytes; ++depth) {
            bool used = last_[depth] >= first_[depth];
            head_.low[depth] = used ? first_[depth] : 0;
            head_.width[depth] = used ? last_[depth] - first_[depth] + 1 : 0;
        }
        head_.width[0] = 256;
        if (!rows_.reserve(64) || !leaves_.reserve(64) || !cells_.extend(256)) return false;
        cell root[256];
        if (!fill(root, trie_->root, 0)) return false;
        memcpy(cells_.data(), root, sizeof root);
        head_.shape = shape();
        return !cells_.failed();
    }

    typename Form::head &head() { return head_; }
    host_array<cell> &cells() { return cells_; }

private:
    struct stored_row {
        uint32_t offset;
        uint32_t hash;
        int32_t depth;
        row_form form;
    };
    struct known_leaf {
        int32_t state, page;
        int32_t depth;
        uint32_t row; // number in rows_
    };

    // The range of bytes used at each depth.
    void measure(const vel_trie_node *node, int32_t depth) {
        if (!node->state || depth == max_character_bytes) return;
        bool is_leaf = node->child_count == 0;
        if (is_leaf && node->state_index >= 0 && node->state_index == measured_[depth]) return;
        if (is_leaf) measured_[depth] = node->state_index;
        int32_t b = 0;
        while (b < 256 && !node->state[b]) ++b;
        if (b == 256) return;
        int32_t last = 255;
        while (!node->state[last]) --last;
        if (static_cast<uint32_t>(b) < first_[depth]) first_[depth] = static_cast<uint32_t>(b);
        if (static_cast<uint32_t>(last) > last_[depth]) last_[depth] = static_cast<uint32_t>(last);
        const vel_trie_node *measured = nullptr; // equal neighbours are one node
        for (; b <= last; ++b) {
            if (node->state[b] != byte_more) continue;
            const vel_trie_node *child = node->children[node->index[b]];
            if (child != measured) measure(child, depth + 1);
            measured = child;
        }
    }

    bool fill(cell *cells, const vel_trie_node *node, int32_t depth) {
        if (node->state && node->child_count == 0) {
            form_.fill_leaf(cells, node, head_.low[depth], head_.width[depth]);
            return true;
        }
        uint32_t low = head_.low[depth];
        const vel_trie_node *before = nullptr; // the child whose row is at hand
        uint32_t row = row_numbers::none;
        for (uint32_t i = 0; i < head_.width[depth]; ++i) {
            uint32_t b = low + i;
            unsigned char state = node->state ? node->state[b] : 0;
            cells[i] = 0;
            if (state == byte_terminal) {
                cells[i] = form_.end(node, b);
            } else if (state == byte_more) {
                const vel_trie_node *child = node->children[node->index[b]];
                if (child != before) row = make_row(child, depth + 1);
                if (row == row_numbers::none) return false;
                before = child;
                cells[i] = Form::more(table_[row].offset);
                below_[depth][b] = table_[row].form;
            }
        }
        return true;
    }

    // The number of the row of a node, made if it is new.
    uint32_t make_row(const vel_trie_node *node, int32_t depth) {
        bool shared_leaf = node->child_count == 0 && node->state_index >= 0;
        if (!shared_leaf) return spell_out(node, depth);
        if (node == last_leaf_ && depth == last_depth_) return last_row_;
        last_leaf_ = node;
        last_depth_ = depth;
        return last_row_ = make_leaf_row(node, depth);
    }

    uint32_t make_leaf_row(const vel_trie_node *node, int32_t depth) {
        if (leaves_.crowded() && !rehash_leaves()) return row_numbers::none;
        size_t slot = leaf_slot({node->state_index, node->page_index, depth, 0});
        if (leaves_.at(slot) != row_numbers::none) return leaf_table_[leaves_.at(slot)].row;
        uint32_t row = spell_out(node, depth);
        if (row == row_numbers::none) return row;
        leaves_.put(slot, static_cast<uint32_t>(leaf_table_.size()));
        leaf_table_.push({node->state_index, node->page_index, depth, row});
        return leaf_table_.failed() ? row_numbers::none : row;
    }

    size_t leaf_slot(const known_leaf &leaf) const {
        uint64_t hash = (static_cast<uint64_t>(leaf.state) * 0x9E3779B97F4A7C15u) ^
                        (static_cast<uint64_t>(leaf.page + 1) * 0xC2B2AE3D27D4EB4Fu) ^
                        static_cast<uint64_t>(leaf.depth);
        size_t slot = leaves_.first(hash ^ hash >> 32);
        for (; leaves_.at(slot) != row_numbers::none; slot = leaves_.next(slot)) {
            const known_leaf &known = leaf_table_[leaves_.at(slot)];
            if (known.state == leaf.state && known.page == leaf.page && known.depth == leaf.depth) {
                break;
            }
        }
        return slot;
    }
    bool rehash_leaves() {
        if (!leaves_.reserve(leaves_.capacity() * 2)) return false;
        for (size_t i = 0; i < leaf_table_.size(); ++i) {
            leaves_.put(leaf_slot(leaf_table_[i]), static_cast<uint32_t>(i));
        }
        return true;
    }

    uint32_t spell_out(const vel_trie_node *node, int32_t depth) {
        cell cells[256];
        if (!fill(cells, node, depth)) return row_numbers::none;
        if (rows_.crowded() && !rehash_rows()) return row_numbers::none;
        uint32_t hash = hash_of(cells, depth);
        size_t slot = row_slot(cells, hash, depth);
        if (rows_.at(slot) != row_numbers::none) return rows_.at(slot);
        uint32_t offset = static_cast<uint32_t>(cells_.size());
        size_t width = head_.width[depth];
        if (offset + width > Form::max_cells) return row_numbers::none;
        cell *stored = cells_.extend(width);
        uint32_t number = static_cast<uint32_t>(table_.size());
        row_form form = node->child_count ? form_of(cells, depth) : form_of_last(cells, depth);
        if (!stored || !table_.push({offset, hash, depth, form})) return row_numbers::none;
        memcpy(stored, cells, width * sizeof(cell));
        rows_.put(slot, number);
        return number;
    }

    // Two halves of a row are hashed side by side, so that one does not wait for the other.
    uint32_t hash_of(const cell *cells, int32_t depth) const {
        constexpr uint64_t factor = 0x9E3779B97F4A7C15u;
        constexpr size_t step = 2 * sizeof(uint64_t) / sizeof(cell);
        size_t width = head_.width[depth];
        uint64_t even = static_cast<uint64_t>(depth);
        uint64_t odd = factor;
        size_t i = 0;
        for (; i + step <= width; i += step) {
            uint64_t pairs[2];
            memcpy(pairs, cells + i, sizeof pairs);
            even = ((even ^ pairs[0]) * factor) ^ even >> 32;
            odd = ((odd ^ pairs[1]) * factor) ^ odd >> 32;
        }
        for (; i < width; ++i) even = (even ^ cells[i]) * factor;
        uint64_t hash = (even ^ odd) * factor;
        return static_cast<uint32_t>(hash >> 32);
    }

    size_t row_slot(const cell *cells, uint32_t hash, int32_t depth) const {
        size_t width = head_.width[depth];
        size_t slot = rows_.first(hash);
        for (; rows_.at(slot) != row_numbers::none; slot = rows_.next(slot)) {
            const stored_row &known = table_[rows_.at(slot)];
            if (known.hash == hash && known.depth == depth &&
                memcmp(cells_.data() + known.offset, cells, width * sizeof(cell)) == 0) {
                break;
            }
        }
        return slot;
    }
    bool rehash_rows() {
        if (!rows_.reserve(rows_.capacity() * 2)) return false;
        for (size_t i = 0; i < table_.size(); ++i) {
            const stored_row &row = table_[i];
            rows_.put(row_slot(cells_.data() + row.offset, row.hash, row.depth),
                      static_cast<uint32_t>(i));
        }
        return true;
    }

    bool cell_has_form(cell one, int32_t depth, uint32_t b, row_form below) const {
        if (below == form_other) return Form::is_end(one);
        return Form::is_more(one) && below_[depth][b] == below;
    }

    // Where characters end, only one form can be.
    row_form form_of_last(const cell *cells, int32_t depth) const {
        if (head_.low[depth] != 0x80 || head_.width[depth] != 0x40) return form_of(cells, depth);
        cell all = cells[0];
        for (uint32_t i = 1; i < 0x40; ++i) all &= cells[i];
        return Form::is_end(all) ? form_tail1 : form_other;
    }

    row_form form_of(const cell *cells, int32_t depth) const {
        for (const row_form_rule &rule : row_form_rules) {
            bool holds = true;
            for (uint32_t i = 0; holds && i < head_.width[depth]; ++i) {
                uint32_t b = head_.low[depth] + i;
                bool valid = b >= rule.first && b <= rule.last;
                holds = valid ? cell_has_form(cells[i], depth, b, rule.below) : cells[i] == 0;
            }
            if (holds && head_.low[depth] <= rule.first &&
                head_.low[depth] + head_.width[depth] > rule.last) {
                return rule.form;
            }
        }
        return form_other;
    }

    table_shape shape() const {
        if (trie_->longest == 1) return table_shape::single_byte;
        if (is_utf8()) return table_shape::utf8;
        bool ascii = trie_->longest > 1;
        for (uint32_t b = 0; b < 0x80; ++b) ascii = ascii && Form::is_end(cells_[b]);
        return ascii ? table_shape::ascii_transparent : table_shape::general;
    }

    bool is_utf8() const {
        uint32_t b = 0;
        for (const lead_rule &rule : utf8_leads) {
            for (; b < rule.first; ++b) {
                if (cells_[b] != 0) return false;
            }
            for (; b <= rule.last; ++b) {
                if (!cell_has_form(cells_[b], 0, b, rule.below)) return false;
            }
        }
        for (; b < 256; ++b) {
            if (cells_[b] != 0) return false;
        }
        return true;
    }

    const vel_trie *trie_;
    Form form_;
    typename Form::head head_{};
    uint32_t first_[max_character_bytes] = {256, 256, 256, 256};
    uint32_t last_[max_character_bytes] = {};
    int32_t measured_[max_character_bytes] = {-1, -1, -1, -1};
    row_form below_[max_character_bytes][256] = {}; // of the row being filled at each depth
    host_array<cell> cells_;
    host_array<stored_row> table_;
    host_array<known_leaf> leaf_table_;
    row_numbers rows_;
    row_numbers leaves_;
    const vel_trie_node *last_leaf_ = nullptr;
    int32_t last_depth_ = 0;
    uint32_t last_row_ = 0;
};

} // namespace vel

// The character table of a charmap, made of the stretches of characters that its lines name.
//
// A stretch stays a stretch: rows are filled whole and equal neighbours are one node, so that
// neither time nor memory depends on how many characters a stretch has.
#pragma once

#include "charmap/charmap_names.h"
#include "objfile/sealed.h"

namespace vel {

class characters_builder {
public:
    // `count` characters from `first` on; their bytes do not overflow. Failed allocations show at
    // the end.
    void add(coded_character first, uint32_t count);

    // 0 with the table, or VEL_ENOMEM, or VEL_EBADFILE when one character begins with another.
    int32_t finish(const sealed_table *&table);

private:
    // The bytes stand at the top of the numbers, and below them whatever may follow.
    struct stretch {
        uint32_t first, last;
        int32_t length;
    };

    bool merge();
    vel_trie_node *build(int32_t depth, uint32_t base);
    vel_trie_node *build_whole(int32_t depth, int32_t length);
    vel_trie_node *keep(int32_t depth, const vel_trie_node &node);
    vel_trie_node *copy_of(const vel_trie_node &node);

    host_array<stretch> stretches_;
    size_t count_ = 0; // of those that merging leaves, disjoint and in order
    size_t at_ = 0;    // the one that goes on
    vel_trie *trie_ = nullptr;
    vel_trie_node *last_[max_character_bytes] = {}; // the last node of each depth
    vel_trie_node *whole_[max_character_bytes][max_character_bytes + 1] = {};
};

} // namespace vel

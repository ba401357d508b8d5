#include "charmap/charmap_characters.h"

#include <algorithm>

#include "vels/errors.h"

namespace vel {
namespace {

// The bits below the byte at a depth.
int32_t bits_below(int32_t depth) {
    return 8 * (max_character_bytes - 1 - depth);
}

uint32_t byte_at(int32_t depth, uint32_t point) {
    return point >> bits_below(depth) & 0xFF;
}

uint32_t last_below(int32_t depth, uint32_t point) {
    return point | ((uint32_t{1} << bits_below(depth)) - 1);
}

// A node under construction, on the stack.
struct open_node {
    unsigned char state[256] = {};
    unsigned char index[256] = {};
    vel_trie_node *children[256];
    vel_trie_node node = {0, 0, -1, -1, state, index, nullptr, children};

    void add_child(uint32_t b, vel_trie_node *child) {
        state[b] = byte_more;
        index[b] = static_cast<unsigned char>(node.child_count);
        children[node.child_count++] = child;
    }
};

bool equal(const vel_trie_node &a, const vel_trie_node &b) {
    size_t children = static_cast<size_t>(a.child_count) * sizeof *a.children;
    return a.child_count == b.child_count && memcmp(a.state, b.state, 256) == 0 &&
           (children == 0 || memcmp(a.children, b.children, children) == 0);
}

} // namespace

void characters_builder::add(coded_character first, uint32_t count) {
    int32_t length = static_cast<int32_t>(first.length);
    uint32_t begin = first.value << bits_below(length - 1);
    uint32_t last = (first.value + (count - 1)) << bits_below(length - 1);
    stretches_.push({begin, last_below(length - 1, last), length});
}

// Characters of different lengths that meet begin with one another.
bool characters_builder::merge() {
    const auto before = [](const stretch &a, const stretch &b) { return a.first < b.first; };
    if (!std::is_sorted(stretches_.begin(), stretches_.end(), before)) {
        std::sort(stretches_.begin(), stretches_.end(), before);
    }
    size_t kept = 0;
    for (const stretch &next : stretches_) {
        stretch *last = kept > 0 ? &stretches_[kept - 1] : nullptr;
        bool meets = last && next.first <= last->last;
        if (meets && next.length != last->length) return false;
        if (meets) {
            last->last = std::max(last->last, next.last);
        } else {
            stretches_[kept++] = next;
        }
    }
    count_ = kept;
    return true;
}

vel_trie_node *characters_builder::copy_of(const vel_trie_node &node) {
    auto *copy = trie_->blocks.take_array<vel_trie_node>(1);
    auto *state = trie_->blocks.take_array<unsigned char>(256);
    if (!copy || !state) return nullptr;
    *copy = node;
    copy->state = state;
    memcpy(state, node.state, 256);
    copy->index = nullptr;
    copy->children = nullptr;
    if (node.child_count == 0) return copy;
    size_t count = static_cast<size_t>(node.child_count);
    copy->index = trie_->blocks.take_array<unsigned char>(256);
    copy->children = trie_->blocks.take_array<vel_trie_node *>(count);
    if (!copy->index || !copy->children) return nullptr;
    memcpy(copy->index, node.index, 256);
    memcpy(copy->children, node.children, count * sizeof *node.children);
    return copy;
}

// The node of this depth that was made last when it is the same, else a new one.
vel_trie_node *characters_builder::keep(int32_t depth, const vel_trie_node &node) {
    if (!last_[depth] || !equal(*last_[depth], node)) last_[depth] = copy_of(node);
    return last_[depth];
}

// The node from which all bytes lead to characters of this length.
vel_trie_node *characters_builder::build_whole(int32_t depth, int32_t length) {
    vel_trie_node *&whole = whole_[depth][length];
    if (whole) return whole;
    open_node open;
    if (depth + 1 == length) {
        memset(open.state, byte_terminal, 256);
    } else {
        vel_trie_node *child = build_whole(depth + 1, length);
        if (!child) return nullptr;
        for (uint32_t b = 0; b < 256; ++b) open.add_child(b, child);
    }
    return whole = copy_of(open.node);
}

// The node of what follows the first `depth` bytes of `base`.
vel_trie_node *characters_builder::build(int32_t depth, uint32_t base) {
    open_node open;
    uint32_t end = depth == 0 ? 0xFFFFFFFF : last_below(depth - 1, base);
    uint32_t done = base; // everything before it is in the node
    while (at_ < count_ && stretches_[at_].first <= end) {
        const stretch now = stretches_[at_];
        uint32_t first = std::max(now.first, done);
        uint32_t last;
        if (now.length == depth + 1) {
            last = std::min(now.last, end);
            memset(open.state + byte_at(depth, first), byte_terminal,
                   byte_at(depth, last) - byte_at(depth, first) + 1);
        } else {
            uint32_t b = byte_at(depth, first);
            uint32_t child_base = first >> bits_below(depth) << bits_below(depth);
            last = last_below(depth, child_base);
            bool whole = now.first <= child_base && now.last >= last;
            vel_trie_node *child =
                whole ? build_whole(depth + 1, now.length) : build(depth + 1, child_base);
            if (!child) return nullptr;
            open.add_child(b, child);
        }
        while (at_ < count_ && stretches_[at_].last <= last) ++at_;
        if (last == end) break;
        done = last + 1;
    }
    return keep(depth, open.node);
}

int32_t characters_builder::finish(const sealed_table *&table) {
    if (stretches_.failed()) return VEL_ENOMEM;
    if (!merge()) return VEL_EBADFILE;
    trie_ = vel_trie_create(sizeof(uint16_t), 0, nullptr);
    if (!trie_) return VEL_ENOMEM;
    for (size_t i = 0; i < count_; ++i) {
        trie_->longest = std::max(trie_->longest, stretches_[i].length);
        trie_->shortest = std::min(trie_->shortest, stretches_[i].length);
    }
    vel_trie_node *root = build(0, 0);
    if (root) trie_->root = root;
    table = root ? seal(trie_) : nullptr;
    vel_trie_free(trie_);
    return table ? 0 : VEL_ENOMEM;
}

} // namespace vel

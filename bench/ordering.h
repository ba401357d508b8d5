// Loops that the libraries share: a list of words, compared or given keys. Each library brings the
// words in its own form, which may point into the list, a way to compare two of them, and a way to
// write a key.
#pragma once

#include "library.h"
#include "scratch.h"

#include <algorithm>
#include <cstring>
#include <numeric>

namespace bench {

// A digit for the order of each word and the next: 0 before, 1 the same, 2 behind.
template <typename Text, typename Compare>
std::string signs(const std::vector<Text> &texts, Compare compare) {
    std::string digits;
    for (std::size_t i = 1; i < texts.size(); ++i) {
        int order = compare(texts[i - 1], texts[i]);
        digits += order < 0 ? '0' : order == 0 ? '1' : '2';
    }
    return digits;
}

// The places of the words, ordered by `before`.
template <typename Before> std::vector<std::uint32_t> sorted(std::size_t count, Before before) {
    std::vector<std::uint32_t> places(count);
    std::iota(places.begin(), places.end(), 0);
    std::sort(places.begin(), places.end(), before);
    return places;
}

inline std::string joined(const std::vector<std::uint32_t> &places, const word_list &list) {
    std::string all;
    for (std::uint32_t place : places) all += list.words[place] + '\n';
    return all;
}

template <typename Text, typename Compare>
ordering comparing(const word_list_ptr &list, const std::vector<Text> &words, Compare compare) {
    auto texts = std::make_shared<const std::vector<Text>>(words);
    auto sort = [=, owner = list] {
        return sorted(texts->size(), [&](std::uint32_t a, std::uint32_t b) {
            int order = compare((*texts)[a], (*texts)[b]);
            return order < 0 || (order == 0 && a < b);
        });
    };
    ordering made;
    made.neighbours.pass = [=, owner = list] {
        std::int64_t before = 0;
        for (std::size_t i = 1; i < texts->size(); ++i)
            before += compare((*texts)[i - 1], (*texts)[i]) < 0;
        return before;
    };
    made.neighbours.result = [=](std::int64_t) { return signs(*texts, compare); };
    made.sort.pass = [=] { return static_cast<std::int64_t>(sort().front()); };
    made.sort.result = [=](std::int64_t) { return joined(sort(), *list); };
    return made;
}

// The first eight bytes of a key as a number that is ordered as they are.
inline std::uint64_t head_of(const char *key, std::size_t size) {
    std::uint64_t head = 0;
    for (std::size_t i = 0; i < sizeof head; ++i)
        head = head << 8 | (i < size ? static_cast<unsigned char>(key[i]) : 0);
    return head;
}

// `write(text, out, room)` gives the bytes of a key; the room is that of the longest.
template <typename Text, typename Write>
void add_keys(ordering &to, const word_list_ptr &list, const std::vector<Text> &words,
              Write write) {
    struct key {
        std::uint32_t from, size;
    };
    auto texts = std::make_shared<const std::vector<Text>>(words);
    auto memory = std::make_shared<std::vector<char>>(32 << 20);
    auto keys = std::make_shared<std::vector<key>>(words.size());
    auto compare = [=](const key &a, const key &b) {
        int order = std::memcmp(&(*memory)[a.from], &(*memory)[b.from], std::min(a.size, b.size));
        return order ? order : a.size < b.size ? -1 : a.size > b.size;
    };
    auto make_keys = [=, owner = list] {
        std::size_t used = 0;
        for (std::size_t i = 0; i < texts->size(); ++i) {
            auto size = static_cast<std::size_t>(
                write((*texts)[i], memory->data() + used, static_cast<int>(memory->size() - used)));
            (*keys)[i] = {static_cast<std::uint32_t>(used), static_cast<std::uint32_t>(size)};
            used += size + 1;
        }
        return static_cast<std::int64_t>(used);
    };
    auto sort = [=] {
        make_keys();
        struct record {
            std::uint64_t head; // of the key, which mostly decides
            std::uint32_t place;
        };
        std::vector<record> records;
        for (const key &of : *keys)
            records.push_back({head_of(&(*memory)[of.from], of.size),
                               static_cast<std::uint32_t>(records.size())});
        std::sort(records.begin(), records.end(), [&](const record &a, const record &b) {
            if (a.head != b.head) return a.head < b.head;
            int order = compare((*keys)[a.place], (*keys)[b.place]);
            return order < 0 || (order == 0 && a.place < b.place);
        });
        std::vector<std::uint32_t> places;
        for (const record &of : records) places.push_back(of.place);
        return places;
    };
    to.keys.pass = [=, owner = list] { // each where the one before was
        std::int64_t bytes = 0;
        for (const Text &text : *texts)
            bytes += static_cast<std::int64_t>(
                write(text, memory->data(), static_cast<int>(memory->size())));
        return bytes;
    };
    to.keys.result = [=](std::int64_t) {
        make_keys();
        return signs(*keys, compare);
    };
    to.sort_by_keys.pass = [=] { return static_cast<std::int64_t>(sort().front()); };
    to.sort_by_keys.result = [=](std::int64_t) { return joined(sort(), *list); };
}

// The words as terminated bytes, as long as the list lives.
inline std::vector<const char *> terminated(const word_list &list) {
    std::vector<const char *> texts;
    for (const std::string &word : list.words) texts.push_back(word.c_str());
    return texts;
}

} // namespace bench

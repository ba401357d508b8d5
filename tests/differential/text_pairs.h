// Pairs of texts whose order is worth comparing. A seed of its own each time: the same pairs again.
#pragma once

#include <cwctype>
#include <random>
#include <utility>

#include "differential/words.h"

namespace differential {

using text_pair = std::pair<std::u32string, std::u32string>;

class text_pairs {
public:
    // Words in their order, characters that the locale orders on its own, and all others.
    text_pairs(const words &list, const std::u32string &own, const std::u32string &all)
        : words_(list), own_(own), all_(all) {}

    text_pair neighbours() {
        const size_t at = below(words_.size() - 1);
        return {words_[at], words_[at + 1]};
    }
    text_pair edited() {
        const std::u32string &word = of(words_);
        return {edit(word), edit(word)};
    }
    text_pair of_own_characters() {
        const std::u32string first = made_of(own_, 6);
        return {first, below(2) ? made_of(own_, 6) : edit(first)};
    }
    text_pair of_all_characters() { return {made_of(all_, 4), made_of(all_, 4)}; }

private:
    size_t below(size_t n) { return std::uniform_int_distribution<size_t>(0, n - 1)(engine_); }
    template <typename List> const typename List::value_type &of(const List &list) {
        return list[below(list.size())];
    }
    std::u32string made_of(const std::u32string &from, size_t most) {
        std::u32string made;
        for (size_t left = 1 + below(most); left > 0; --left) made += of(from);
        return made;
    }
    std::u32string edit(std::u32string text) {
        const size_t at = below(text.size()), how = below(6);
        if (how == 0) return text.insert(at, 1, of(marks_));
        if (how == 1) return text.insert(at, 1, of(own_));
        if (how == 2) text[at] = of(own_);
        if (how == 3) std::swap(text[at], text[below(text.size())]);
        if (how == 4) text[at] = std::towupper(static_cast<wint_t>(text[at]));
        return how == 5 && text.size() > 1 ? text.erase(at, 1) : text;
    }

    const words &words_;
    const std::u32string &own_, &all_;
    const std::u32string marks_ = U" -'.";
    std::mt19937 engine_{20240601};
};

} // namespace differential

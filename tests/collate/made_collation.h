// Small collations made in memory, and the rules of collation written as they read: the weights
// of a string and a pass, with no thought for speed. What the library does is held against it.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "collate/layout.h"
#include "support/make_locale.h"
#include "vels/collate.h"

namespace vel_test {

using wide = std::vector<vel_wchar>;

inline int sign(int value) {
    return (value > 0) - (value < 0);
}

inline locale_ptr make_byte_base() {
    auto made = std::make_unique<test_locale>();
    made->add_range(0, 0xFF);
    return made;
}

// The locale of a code set with a collation that a test fills in. Characters are known to the
// collation by their place among the letters, counted from 1, and all others by 0.
class made_collation {
public:
    struct element {
        wide values;
        int32_t index;
    };

    // `make` makes a code set that is not finished. With `covered`, every character of the code set
    // has an index, else only the letters have.
    made_collation(locale_ptr (*make)(), const wide &letters, bool covered)
        : letters_(letters), text_(make()), indexes_(covered ? make() : nullptr) {
        if (!indexes_) {
            indexes_ = std::make_unique<test_locale>();
            indexes_->add('!', 0);
        }
        for (int32_t index = 0; vel_wchar letter : letters) indexes_->add(letter, ++index);
        indexes_->finish();
        text_->finish();
        collate().kind = vel::collation_as_specified;
    }
    ~made_collation() { vel::vel_free(collate().layout.block); }

    std::vector<std::vector<uint16_t>> passes; // the weights by index
    std::vector<int32_t> directions;
    std::vector<element> elements;
    std::vector<wide> expansions;
    int32_t max_weight = 9;

    vel_locale *get() { return text_->get(); }
    vel::collate_category &collate() { return get()->collate; }
    const wide &letters() const { return letters_; }

    // Puts what was filled in into the locale.
    vel_locale *finish() {
        vel::collate_category &to = collate();
        vel::vel_free(to.layout.block);
        to.layout = {};
        to.characters = indexes_->get()->ctype.characters;
        to.pass_count = static_cast<int32_t>(passes.size());
        to.index_count = static_cast<int32_t>(passes[0].size());
        to.max_weight = max_weight;
        for (size_t i = 0; i < passes.size(); ++i)
            to.passes[i] = {i < directions.size() ? directions[i] : 1, passes[i].data()};
        elements_.clear();
        for (element &e : elements)
            elements_.push_back({static_cast<int32_t>(e.values.size()), e.index, e.values.data()});
        // The parts of all expansions are one block, as they are in an object.
        parts_.clear();
        for (const wide &e : expansions) parts_.insert(parts_.end(), e.begin(), e.end());
        expansions_.clear();
        vel_wchar *part = parts_.data();
        for (const wide &e : expansions) {
            expansions_.push_back({static_cast<int32_t>(e.size()), part});
            part += e.size();
        }
        to.element_count = static_cast<int32_t>(elements_.size());
        to.elements = elements_.data();
        to.expansion_count = static_cast<int32_t>(expansions_.size());
        to.expansions = expansions_.data();
        EXPECT_TRUE(vel::lay_out(to));
        return get();
    }

private:
    wide letters_, parts_;
    locale_ptr text_, indexes_;
    std::vector<vel::collating_element> elements_;
    std::vector<vel::collating_expansion> expansions_;
};

struct cursor_scope {
    bool elements = true, expansions = true, backward = true;
};

// What a string weighs in a pass, without what is ignored, up to a character without an index.
// The words come with the characters that they are of, and end with a 0 and that character or 0.
using pass_weights = std::vector<std::pair<uint32_t, vel_wchar>>;

inline pass_weights weights_of(const vel::collate_category &by, int32_t pass, const wide &text,
                               cursor_scope scope) {
    const auto index_of = [&](vel_wchar value) {
        const uint32_t cell = by.characters->find_code(value);
        return vel::is_end(cell) ? vel::cell_value(cell) : -1;
    };
    // Elements are found from the start on, whatever the direction.
    std::vector<std::pair<int32_t, vel_wchar>> units;
    for (size_t i = 0, taken; i < text.size(); i += taken) {
        taken = 1;
        units.emplace_back(index_of(text[i]), text[i]);
        for (int32_t e = 0; scope.elements && e < by.element_count; ++e) {
            const vel::collating_element &element = by.elements[e];
            const size_t count = static_cast<size_t>(element.count);
            if (count > text.size() - i) continue;
            if (!std::equal(element.values, element.values + count, &text[i])) continue;
            units.back() = {element.index, 1};
            taken = count;
            break;
        }
    }
    const bool backward = scope.backward && by.passes[pass].direction == 2;
    if (backward) std::ranges::reverse(units);
    const uint16_t *weights = by.passes[pass].weights;
    pass_weights made;
    vel_wchar stop = 0;
    for (auto [index, value] : units) {
        if (index < 0) {
            stop = value;
            break;
        }
        if (weights[index] & 0x4000 && scope.expansions) {
            const auto &expansion = by.expansions[weights[index] & 0x3FFF];
            wide parts(expansion.values, expansion.values + expansion.count);
            if (backward) std::ranges::reverse(parts);
            for (vel_wchar part : parts) made.emplace_back(weights[index_of(part)], value);
        } else {
            made.emplace_back(weights[index], value);
        }
    }
    std::erase_if(made, [](auto &word) { return word.first == 1; });
    made.emplace_back(0, stop);
    return made;
}

// -1, 0 or 1 by the weights. `lone`: whether a character without an index ends a string above one
// that is over.
inline int32_t compare_by_rules(const vel::collate_category &by, const wide &a, const wide &b,
                                cursor_scope scope = {}, bool lone = true) {
    for (int32_t pass = 0; pass < by.pass_count; ++pass) {
        const pass_weights first = weights_of(by, pass, a, scope);
        const pass_weights second = weights_of(by, pass, b, scope);
        for (size_t i = 0;; ++i) {
            auto [w1, c1] = first[i];
            auto [w2, c2] = second[i];
            if (w1 == 0 && w2 == 0) {
                if (lone && (c1 != 0) != (c2 != 0)) return c1 ? 1 : -1;
                break;
            }
            if ((w1 & 0x3FFF) != (w2 & 0x3FFF)) return (w1 & 0x3FFF) < (w2 & 0x3FFF) ? -1 : 1;
            if (w1 & 0x8000 && c1 != c2) return c1 < c2 ? -1 : 1;
        }
    }
    return 0;
}

} // namespace vel_test

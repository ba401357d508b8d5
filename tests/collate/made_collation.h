// Small collations made in memory, and the rules of collation written as they read: a cursor a
// string and a pass, with no thought for speed. What the library does is held against it.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "collate/layout.h"
#include "support/make_locale.h"
#include "vels/collate.h"

namespace vel_test {

using wide = std::vector<vel_wchar>;

inline locale_ptr make_byte_base() {
    auto made = std::make_unique<test_locale>();
    made->add_range(0, 0xFF);
    return made;
}

// Characters of one to three bytes.
inline locale_ptr make_euc_base() {
    auto made = std::make_unique<test_locale>();
    made->add_ascii();
    made->add_rows(0x8E, 0x8E, 0xA1, 0xDF);
    made->add_rows(0xA1, 0xA7, 0xA1, 0xF3);
    made->add_range(0x8FB0A1, 0x8FB0FE);
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
        for (size_t i = 0; i < letters.size(); ++i) {
            indexes_->add(letters[i], static_cast<int32_t>(i) + 1);
        }
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
        for (size_t i = 0; i < passes.size(); ++i) {
            to.passes[i] = {i < directions.size() ? directions[i] : 1, passes[i].data()};
        }
        elements_.clear();
        for (element &e : elements) {
            elements_.push_back({static_cast<int32_t>(e.values.size()), e.index, e.values.data()});
        }
        parts_.clear();
        for (const wide &e : expansions) parts_.insert(parts_.end(), e.begin(), e.end());
        expansions_.clear();
        size_t first = 0;
        for (const wide &e : expansions) {
            expansions_.push_back({static_cast<int32_t>(e.size()), parts_.data() + first});
            first += e.size();
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

class weight_cursor {
public:
    weight_cursor(const vel::collate_category &by, int32_t pass, const wide &text,
                  cursor_scope scope)
        : by_(by), weights_(by.passes[pass].weights), text_(text), scope_(scope),
          step_(scope.backward && by.passes[pass].direction == 2 ? -1 : 1),
          at_(step_ > 0 ? 0 : static_cast<int32_t>(text.size()) - 1), over_(text.empty()) {
        mark();
    }

    struct weight {
        uint32_t word;
        vel_wchar value;
    };
    weight next() {
        for (;;) {
            if (over_) return {0, 0};
            int32_t index;
            if (part_) {
                index = index_of(part_->values[part_at_]);
                part_at_ += step_;
                if (part_at_ < 0 || part_at_ == part_->count) part_ = nullptr;
            } else if (marks_[static_cast<size_t>(at_)]) {
                const vel::collating_element &element = *marks_[static_cast<size_t>(at_)];
                index = element.index;
                length_ = element.count;
                value_ = 1;
            } else {
                value_ = text_[static_cast<size_t>(at_)];
                index = index_of(value_);
                length_ = 1;
            }
            if (index < 0) {
                over_ = true;
                return {0, value_};
            }
            uint32_t word = weights_[index];
            if (word & 0x4000 && scope_.expansions) {
                part_ = &by_.expansions[word & 0x3FFF];
                part_at_ = step_ > 0 ? 0 : part_->count - 1;
                word = 1;
            }
            if (!part_) {
                at_ += step_ * length_;
                over_ = at_ < 0 || at_ >= static_cast<int32_t>(text_.size());
                if (over_ && word == 1) return {0, 0};
            }
            if (word != 1) return {word, value_};
        }
    }
    bool over() const { return over_; }

private:
    int32_t index_of(vel_wchar value) const {
        uint32_t cell = by_.characters->find_code(value);
        return vel::is_end(cell) ? vel::cell_value(cell) : -1;
    }
    // Elements are marked all along: a cursor meets either end of one first.
    void mark() {
        marks_.resize(text_.size());
        for (size_t i = 0; scope_.elements && i < text_.size();) {
            size_t taken = 1;
            for (int32_t e = 0; e < by_.element_count; ++e) {
                const vel::collating_element &element = by_.elements[e];
                size_t count = static_cast<size_t>(element.count);
                if (count > text_.size() - i) continue;
                if (!std::equal(element.values, element.values + count, &text_[i])) continue;
                for (size_t k = 0; k < count; ++k) marks_[i + k] = &element;
                taken = count;
                break;
            }
            i += taken;
        }
    }

    const vel::collate_category &by_;
    const uint16_t *weights_;
    const wide &text_;
    cursor_scope scope_;
    int32_t step_, at_;
    bool over_;
    int32_t length_ = 1;
    vel_wchar value_ = 0;
    std::vector<const vel::collating_element *> marks_;
    const vel::collating_expansion *part_ = nullptr;
    int32_t part_at_ = 0;
};

// -1, 0 or 1 by the cursors. `lone`: whether a character without an index ends a string above one
// that is over.
inline int32_t compare_by_rules(const vel::collate_category &by, const wide &a, const wide &b,
                                cursor_scope scope = {}, bool lone = true) {
    for (int32_t pass = 0; pass < by.pass_count; ++pass) {
        weight_cursor first(by, pass, a, scope), second(by, pass, b, scope);
        for (;;) {
            auto [w1, c1] = first.next();
            auto [w2, c2] = second.next();
            if (w1 == 0 && w2 == 0 && (first.over() || second.over())) {
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

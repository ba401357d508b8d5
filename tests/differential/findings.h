// Collects differences and holds them against the table of those that are known and meant.
#pragma once

#include <cstdio>
#include <gtest/gtest.h>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "differential/cases.h"

namespace differential {

// Differences of one cause: in how many characters between two (their bytes as wide values, both
// included) ours and the host's answers differ.
struct known_difference {
    std::string_view locale; // a charmap or a source: in every locale of it
    std::string_view aspect; // what is compared
    uint32_t first, last;
    uint32_t count;
    std::string_view cause; // its name in docs/differences.md
};

class findings {
public:
    findings(const locale_case &of, std::span<const known_difference> known) : of_(of) {
        for (const known_difference &row : known)
            if (row.locale == of.charmap || row.locale == of.source) rows_.push_back({row, 0});
    }

    void compared() { ++compared_; }

    template <typename Describe>
    void add(std::string_view aspect, uint32_t value, Describe describe) {
        for (counted_row &row : rows_) {
            if (row.known.aspect != aspect || value < row.known.first || value > row.known.last)
                continue;
            ++row.seen;
            return;
        }
        if (++unexpected_ > most_shown) return;
        ADD_FAILURE() << of_.name() << ": " << aspect << " of " << hex(value) << ": " << describe();
    }

    // To be called at the end of an aspect: what was expected has to have happened.
    void settle(std::initializer_list<std::string_view> aspects) const {
        EXPECT_GT(compared_, 0u) << of_.name() << ": nothing was compared";
        EXPECT_EQ(unexpected_, 0u) << of_.name() << ": unexpected differences in all";
        for (const counted_row &row : rows_) {
            if (std::ranges::find(aspects, row.known.aspect) == aspects.end()) continue;
            EXPECT_EQ(row.seen, row.known.count)
                << of_.name() << ": " << row.known.aspect << " from " << hex(row.known.first)
                << " to " << hex(row.known.last) << ", " << row.known.cause;
        }
        std::printf("%s: %zu characters compared\n", of_.name().c_str(), compared_);
    }

    static std::string hex(uint32_t value) {
        char text[16];
        snprintf(text, sizeof text, "%02X", value);
        return text;
    }

private:
    struct counted_row {
        known_difference known;
        uint32_t seen;
    };
    static constexpr size_t most_shown = 10;

    locale_case of_;
    std::vector<counted_row> rows_;
    size_t compared_ = 0, unexpected_ = 0;
};

} // namespace differential

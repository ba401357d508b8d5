// Counts differences by what is compared, and holds them against a table of those that are meant.
#pragma once

#include <cstdio>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <span>
#include <string>
#include <vector>

namespace differential {

struct known_tally {
    std::string_view aspect; // what is compared
    size_t locales, differences;
    std::string_view cause; // its name in docs/differences.md
};

class tally {
public:
    void compare(const std::string &aspect, const std::string &locale, const std::string &value,
                 const std::string &ours, const std::string &host) {
        ++compared_;
        if (ours == host) return;
        row &of = rows_[aspect];
        ++of.differences;
        if (of.locales.insert(locale).second && of.shown.size() < most_shown)
            of.shown.push_back(locale + ", " + value + ": ours [" + ours + "], the host [" + host +
                               "]");
    }

    // Every row of the table has to be met exactly, and nothing else may differ.
    void settle(std::span<const known_tally> table) {
        EXPECT_GT(compared_, 0u);
        for (const known_tally &known : table) {
            const row &of = rows_[std::string(known.aspect)];
            EXPECT_TRUE(of.locales.size() == known.locales && of.differences == known.differences)
                << known.aspect << ", " << known.cause << ": " << known.differences << " in "
                << known.locales << " locales are known" << described(of);
            rows_.erase(std::string(known.aspect));
        }
        for (const auto &[aspect, of] : rows_) ADD_FAILURE() << aspect << described(of);
        std::printf("%zu texts compared\n", compared_);
    }

private:
    static constexpr size_t most_shown = 10;
    struct row {
        size_t differences = 0;
        std::set<std::string> locales;
        std::vector<std::string> shown;
    };

    static std::string described(const row &of) {
        std::string text = ": " + std::to_string(of.differences) + " differences in " +
                           std::to_string(of.locales.size()) + " locales";
        for (const std::string &one : of.shown) text += "\n  " + one;
        return text;
    }

    std::map<std::string, row> rows_;
    size_t compared_ = 0;
};

} // namespace differential

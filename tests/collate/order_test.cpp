// Comparison and keys on random collations, against the rules as they read.
#include <gtest/gtest.h>

#include <random>

#include "made_collation.h"
#include "vels/errors.h"

namespace {

using namespace vel_test;

class random_source {
public:
    int below(int n) { return std::uniform_int_distribution<>(0, n - 1)(engine_); }
    bool one_in(int n) { return below(n) == 0; }
    vel_wchar of(const wide &from) { return letters(1, from)[0]; }
    wide letters(int count, const wide &from, int first = 1000) {
        wide some(static_cast<size_t>(count));
        for (vel_wchar &one : some)
            one = from[static_cast<size_t>(below(std::min(first, static_cast<int>(from.size()))))];
        return some;
    }

private:
    std::mt19937 engine_{20240501};
};

constexpr int plain_letters = 4; // never expand, so that expansions may hold them

// Weights 2 to 6, of which 6 is positional; some are ignorable, some stand for expansions.
void fill(made_collation &made, random_source &random, cursor_scope with) {
    const wide &letters = made.letters();
    const size_t indexes = letters.size() + 1 + 4; // the last for elements
    made.passes.assign(static_cast<size_t>(1 + random.below(5)), std::vector<uint16_t>(indexes));
    made.expansions.clear();
    made.elements.clear();
    made.directions.clear();
    for (auto &pass : made.passes) {
        made.directions.push_back(with.backward && random.one_in(3) ? 2 : 1);
        for (size_t i = 0; i < indexes; ++i) {
            const int number = 2 + random.below(5);
            pass[i] = static_cast<uint16_t>(number == 6 ? 0x8006 : number);
            if (random.one_in(5)) pass[i] = 1;
            if (!with.expansions || i <= plain_letters || !random.one_in(4)) continue;
            pass[i] = static_cast<uint16_t>(0x4000 | made.expansions.size());
            made.expansions.push_back(random.letters(1 + random.below(3), letters, plain_letters));
        }
    }
    for (int i = with.elements ? 1 + random.below(6) : 0; i > 0; --i)
        made.elements.push_back(
            {random.letters(random.one_in(8) ? 1 : 2 + random.below(2), letters),
             static_cast<int32_t>(letters.size()) + 1 + random.below(4)});
    made.finish();
}

// A string, and often one that differs from it in few places.
std::pair<wide, wide> strings(random_source &random, const wide &letters) {
    const wide a =
        random.letters(random.one_in(20) ? 120 + random.below(60) : random.below(9), letters);
    wide b = a;
    for (int edits = random.below(4); edits > 0; --edits) {
        const auto at = b.begin() + random.below(static_cast<int>(b.size()) + 1);
        if (at == b.end() || random.one_in(3))
            b.insert(at, random.of(letters));
        else if (random.one_in(3))
            b.erase(at);
        else
            *at = random.of(letters);
    }
    return {a, b};
}

std::string bytes_of(const wide &text) {
    std::string bytes;
    for (vel_wchar value : text) bytes += pack(value);
    return bytes;
}

// Never null, unlike what an empty vector has.
const vel_wchar *values_of(const wide &text) {
    static const vel_wchar nothing = 0;
    return text.empty() ? &nothing : text.data();
}

int32_t length(const auto &text) {
    return static_cast<int32_t>(text.size());
}

std::string key_of(vel_locale *locale, const wide &text) {
    wide terminated = text;
    terminated.push_back(0);
    std::string key(static_cast<size_t>(vel_wcsxfrm(locale, nullptr, terminated.data(), 0)) + 1,
                    'x');
    std::string again(key.size(), 'y');
    EXPECT_EQ(length(key) - 1, vel_wcsxfrm(locale, key.data(), terminated.data(), length(key)));
    EXPECT_EQ(length(key) - 1,
              vel_full_mbsxfrm(locale, again.data(), bytes_of(text).c_str(), length(key)));
    EXPECT_EQ(key, again);
    EXPECT_EQ(strlen(key.c_str()), key.size() - 1);
    return key;
}

const wide utf8_letters = {'a', 'c', 0xC3A4, 0xE282AC, 'h', 0xE282AD, 0xC3A5, 0xF09F9880, 'z', '-'};
const wide euc_letters = {'a', 0xA4A2, 0xA4A4, 0x8FB0A1, 'h', 0x8EB1, 0xA4A3, 'z', '-'};
const wide byte_letters = {'a', 'c', 0xE4, 0xDF, 'h', 0xFC, 'z', '-', 1};

struct code_set {
    locale_ptr (*make)();
    const wide &letters;
    bool covered;
    wide others; // characters beside the letters
};
const code_set code_sets[] = {{make_utf8_base, utf8_letters, true, {'x', 0xC384}},
                              {make_utf8_base, utf8_letters, false, {'x', 0xC384}},
                              {make_euc_base, euc_letters, true, {'x'}},
                              {make_euc_base, euc_letters, false, {'x', 0xA4A5}},
                              {make_byte_base, byte_letters, true, {'x'}},
                              {make_byte_base, byte_letters, false, {'x'}}};

// Functions for terminated and counted strings, and what they heed.
struct pair_of_functions {
    decltype(vel_is_mbscoll_exp) *compare;
    decltype(tuk_vel_is_mbfscoll_exp) *compare_counted;
    cursor_scope scope;
    bool is_full = false;
};
constexpr pair_of_functions everything = {vel_im_mbscoll, tuk_vel_im_mbfscoll, {}, true};
constexpr pair_of_functions single_byte[] = {
    {vel_is_mbscoll_exp, tuk_vel_is_mbfscoll_exp, {false, true, false}},
    {vel_is_mbscoll_elem, tuk_vel_is_mbfscoll_elem, {true, false, false}},
    {vel_is_mbscoll_back, tuk_vel_is_mbfscoll_back, {false, false, true}},
    {vel_is_mbscoll_exp_elem, tuk_vel_is_mbfscoll_exp_elem, {true, true, false}},
};

// How many of the pairs were equal.
int compare_pairs(const code_set &set, made_collation &made, random_source &random,
                  const pair_of_functions &by) {
    wide alphabet = set.letters;
    alphabet.insert(alphabet.end(), set.others.begin(), set.others.end());
    vel_locale *locale = made.get();
    int ties = 0;
    for (int pair = 0; pair < 60 && !testing::Test::HasFailure(); ++pair) {
        const auto [a, b] = strings(random, alphabet);
        const int32_t expected = compare_by_rules(made.collate(), a, b, by.scope, by.is_full);
        const std::string x = bytes_of(a), y = bytes_of(b);
        EXPECT_EQ(expected, by.compare(locale, x.c_str(), y.c_str())) << x << ' ' << y;
        EXPECT_EQ(-expected, by.compare_counted(locale, y.data(), length(y), x.data(), length(x)));
        if (by.is_full) {
            EXPECT_EQ(expected, tuk_vel_full_wcscoll(locale, values_of(a), length(a), values_of(b),
                                                     length(b)));
        }
        if (by.is_full && set.covered) {
            EXPECT_EQ(expected, sign(key_of(locale, a).compare(key_of(locale, b))))
                << x << ' ' << y;
        }
        ties += expected == 0;
    }
    return ties;
}

TEST(order, follows_the_rules) {
    for (const code_set &set : code_sets) {
        SCOPED_TRACE(&set - code_sets);
        made_collation made(set.make, set.letters, set.covered);
        random_source random;
        int ties = 0;
        for (int table = 0; table < 200; ++table) {
            fill(made, random, {!random.one_in(4), !random.one_in(4), random.one_in(3)});
            ties += compare_pairs(set, made, random, everything);
            if (set.make != make_byte_base) continue;
            const pair_of_functions &part = single_byte[table % 4];
            fill(made, random, {true, part.scope.expansions, true});
            compare_pairs(set, made, random, part);
        }
        EXPECT_GT(ties, 1000);
        EXPECT_EQ(0, made.get()->error);
    }
}

} // namespace

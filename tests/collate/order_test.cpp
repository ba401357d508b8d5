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
    template <typename T> const T &of(const std::vector<T> &from) {
        return from[static_cast<size_t>(below(static_cast<int>(from.size())))];
    }

private:
    std::mt19937 engine_{20240501};
};

struct features {
    bool elements, expansions, backward;
};

constexpr int plain_letters = 4; // never expand, so that expansions may hold them

// Weights 2 to 6, of which 6 is positional; some are ignorable, some stand for expansions.
void fill(made_collation &made, random_source &random, features with) {
    const wide &letters = made.letters();
    size_t indexes = letters.size() + 1 + 4; // the last for elements
    made.passes.assign(static_cast<size_t>(1 + random.below(5)), std::vector<uint16_t>(indexes));
    made.expansions.clear();
    made.elements.clear();
    made.directions.clear();
    const wide plain(letters.begin(), letters.begin() + plain_letters);
    for (auto &pass : made.passes) {
        made.directions.push_back(with.backward && random.one_in(3) ? 2 : 1);
        for (size_t i = 0; i < indexes; ++i) {
            int number = 2 + random.below(5);
            pass[i] = static_cast<uint16_t>(number == 6 ? 0x8006 : number);
            if (random.one_in(5)) pass[i] = 1;
            if (!with.expansions || i <= plain_letters || !random.one_in(4)) continue;
            pass[i] = static_cast<uint16_t>(0x4000 | made.expansions.size());
            wide parts(static_cast<size_t>(1 + random.below(3)));
            for (vel_wchar &part : parts) part = random.of(plain);
            made.expansions.push_back(parts);
        }
    }
    for (int i = with.elements ? 1 + random.below(6) : 0; i > 0; --i) {
        wide values(static_cast<size_t>(random.one_in(8) ? 1 : 2 + random.below(2)));
        for (vel_wchar &value : values) value = random.of(letters);
        made.elements.push_back(
            {values, static_cast<int32_t>(letters.size()) + 1 + random.below(4)});
    }
    made.finish();
}

// A string, and often one that differs from it in few places.
std::pair<wide, wide> strings(random_source &random, const wide &letters) {
    wide a(static_cast<size_t>(random.one_in(20) ? 120 + random.below(60) : random.below(9)));
    for (vel_wchar &value : a) value = random.of(letters);
    wide b = a;
    for (int edits = random.below(4); edits > 0; --edits) {
        auto at = b.begin() + random.below(static_cast<int>(b.size()) + 1);
        if (at == b.end() || random.one_in(3)) {
            b.insert(at, random.of(letters));
        } else if (random.one_in(3)) {
            b.erase(at);
        } else {
            *at = random.of(letters);
        }
    }
    return {a, b};
}

std::string bytes_of(const wide &text) {
    std::string bytes;
    for (vel_wchar value : text) bytes += pack(value);
    return bytes;
}

std::string key_of(vel_locale *locale, const wide &text) {
    wide terminated = text;
    terminated.push_back(0);
    std::string key(static_cast<size_t>(vel_wcsxfrm(locale, nullptr, terminated.data(), 0)) + 1,
                    'x');
    const int32_t size = static_cast<int32_t>(key.size());
    EXPECT_EQ(size - 1, vel_wcsxfrm(locale, key.data(), terminated.data(), size));
    std::string again(key.size(), 'y');
    EXPECT_EQ(size - 1, vel_full_mbsxfrm(locale, again.data(), bytes_of(text).c_str(), size));
    EXPECT_EQ(key, again);
    EXPECT_EQ(strlen(key.c_str()), key.size() - 1);
    return key;
}

int sign(int value) {
    return (value > 0) - (value < 0);
}

// Never null, unlike what an empty vector has.
const vel_wchar *values_of(const wide &text) {
    static const vel_wchar nothing = 0;
    return text.empty() ? &nothing : text.data();
}

int32_t length(const auto &text) {
    return static_cast<int32_t>(text.size());
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

class order : public testing::TestWithParam<code_set> {};

TEST_P(order, follows_the_rules) {
    const auto &[make, letters, covered, others] = GetParam();
    made_collation made(make, letters, covered);
    random_source random;
    wide alphabet = letters;
    alphabet.insert(alphabet.end(), others.begin(), others.end());
    int ties = 0;
    for (int table = 0; table < 200; ++table) {
        fill(made, random, {!random.one_in(4), !random.one_in(4), random.one_in(3)});
        vel_locale *locale = made.get();
        for (int pair = 0; pair < 60; ++pair) {
            auto [a, b] = strings(random, alphabet);
            const int32_t expected = compare_by_rules(made.collate(), a, b);
            ASSERT_EQ(expected, tuk_vel_full_wcscoll(locale, values_of(a), length(a), values_of(b),
                                                     length(b)));
            const std::string x = bytes_of(a), y = bytes_of(b);
            ASSERT_EQ(expected, vel_im_mbscoll(locale, x.c_str(), y.c_str())) << x << ' ' << y;
            ASSERT_EQ(-expected,
                      tuk_vel_im_mbfscoll(locale, y.data(), length(y), x.data(), length(x)));
            if (covered) {
                ASSERT_EQ(expected, sign(key_of(locale, a).compare(key_of(locale, b))))
                    << x << ' ' << y;
            }
            ties += expected == 0;
        }
    }
    EXPECT_GT(ties, 1000);
    EXPECT_EQ(0, made.get()->error);
}

INSTANTIATE_TEST_SUITE_P(
    code_sets, order,
    testing::Values(code_set{make_utf8_base, utf8_letters, true, {'x', 0xC384}},
                    code_set{make_utf8_base, utf8_letters, false, {'x', 0xC384}},
                    code_set{make_euc_base, euc_letters, true, {'x'}},
                    code_set{make_euc_base, euc_letters, false, {'x', 0xA4A5}},
                    code_set{make_byte_base, byte_letters, true, {'x'}},
                    code_set{make_byte_base, byte_letters, false, {'x'}}));

TEST(single_byte_order, leaves_features_out) {
    struct row {
        decltype(vel_is_mbscoll_exp) *compare;
        decltype(tuk_vel_is_mbfscoll_exp) *compare_counted;
        cursor_scope scope;
    };
    const row rows[] = {
        {vel_is_mbscoll_exp, tuk_vel_is_mbfscoll_exp, {false, true, false}},
        {vel_is_mbscoll_elem, tuk_vel_is_mbfscoll_elem, {true, false, false}},
        {vel_is_mbscoll_back, tuk_vel_is_mbfscoll_back, {false, false, true}},
        {vel_is_mbscoll_exp_elem, tuk_vel_is_mbfscoll_exp_elem, {true, true, false}},
    };
    for (bool covered : {true, false}) {
        made_collation made(make_byte_base, byte_letters, covered);
        random_source random;
        wide alphabet = byte_letters;
        alphabet.push_back('x');
        for (int table = 0; table < 200; ++table) {
            const row &with = rows[table % 4];
            fill(made, random, {true, with.scope.expansions, true});
            for (int pair = 0; pair < 40; ++pair) {
                auto [a, b] = strings(random, alphabet);
                const int32_t expected = compare_by_rules(made.collate(), a, b, with.scope, false);
                const std::string x = bytes_of(a), y = bytes_of(b);
                ASSERT_EQ(expected, with.compare(made.get(), x.c_str(), y.c_str()));
                ASSERT_EQ(-expected, with.compare_counted(made.get(), y.data(), length(y), x.data(),
                                                          length(x)));
            }
        }
    }
}

} // namespace

// Searching, cutting and measuring random text, valid and not, against loops over single
// characters.
#include <gtest/gtest.h>

#include <random>

#include "string/needle.h"
#include "string/string_sets.h"
#include "vels/ctype.h"
#include "vels/errors.h"
#include "vels/multibyte.h"
#include "vels/string.h"

namespace {

using namespace vel_test;

constexpr uint32_t seed = 20250117;
constexpr int32_t untouched = 99; // an error cell before a call

// Text taken apart one character at a time.
struct parts {
    std::vector<std::string> characters;
    std::vector<size_t> starts;
    size_t end = 0;
    int32_t error = 0;

    wide_text values() const {
        wide_text values;
        for (const std::string &character : characters) {
            values.push_back(0);
            for (unsigned char c : character) values.back() = values.back() << 8 | c;
        }
        return values;
    }
};

parts take_apart(vel_locale *locale, const std::string &text, bool counted) {
    parts p;
    const std::string padded = text + std::string(8, '\0');
    while (counted ? p.end < text.size() : !vel_ismbsterm(locale, padded.data() + p.end)) {
        size_t left = counted ? text.size() - p.end : 4;
        locale->error = 0;
        int32_t used =
            tuk_vel_full_mblen(locale, padded.data() + p.end, static_cast<int32_t>(left));
        if (used < 0) {
            p.error = locale->error;
            break;
        }
        p.starts.push_back(p.end);
        p.characters.push_back(padded.substr(p.end, static_cast<size_t>(used)));
        p.end += static_cast<size_t>(used);
    }
    return p;
}

// What a search gives: the index of a character, -1 for none, and the error cell.
using sought = std::pair<int64_t, int32_t>;

sought slow_find(const parts &text, const parts &needle, bool last) {
    const auto &in = text.characters, &what = needle.characters;
    const auto at = last ? std::find_end(in.begin(), in.end(), what.begin(), what.end())
                         : std::search(in.begin(), in.end(), what.begin(), what.end());
    if (text.error && (last || at == in.end())) return {-1, text.error};
    return at == in.end() ? sought{-1, 0} : sought{at - in.begin(), untouched};
}

std::string draw(std::mt19937 &random, const code_set &set, size_t size, size_t kinds, bool spoil) {
    const vel_wchar letters[] = {set.x, 'a', ' ', set.y, '\t', 'b'};
    std::string text;
    for (size_t i = 0; i < size; ++i) text += pack(letters[random() % kinds], set.least);
    if (spoil && !text.empty()) text.erase(random() % text.size(), 1);
    return text;
}

// A text, what is looked for in it, and both taken apart.
struct trial {
    vel_locale *l;
    const code_set &set;
    bool counted;
    std::string text, part;
    // A text that is cut inside a character takes a terminator of its own.
    block<char> s{counted ? text : text + std::string(2 * set.least - 1, '\0')};
    block<char> t{counted ? part : terminated(set, part)};
    int32_t n = length(text), m = length(part);
    parts p = take_apart(l, text, counted), q = take_apart(l, part, counted), one = q;

    template <typename Text> int32_t length(const Text &of) const {
        return counted ? static_cast<int32_t>(of.size()) : -1;
    }
    // The index of the first character that is in the set of `part`, or not.
    int64_t first_member(bool wanted) const {
        auto found = std::find_if(p.characters.begin(), p.characters.end(), [&](auto &c) {
            return wanted == (std::count(q.characters.begin(), q.characters.end(), c) > 0);
        });
        return found - p.characters.begin();
    }
    template <typename Function> sought found(Function function) const {
        l->error = untouched;
        const char *at = function(l, s, n, t, m);
        auto start = std::find(p.starts.begin(), p.starts.end(), at - s.get());
        return {at ? start - p.starts.begin() : -1, l->error};
    }

    void search() {
        one.characters.resize(1);
        const sought first = slow_find(p, one, false), last = slow_find(p, one, true);
        const sought whole = slow_find(p, q, false);
        const int64_t in = first_member(true), out = first_member(false);
        const int64_t size = static_cast<int64_t>(p.characters.size());
        const sought member = in < size ? sought{in, untouched} : sought{-1, p.error};
        EXPECT_EQ(first, found(tuk_vel_mbschr));
        EXPECT_EQ(last, found(tuk_vel_mbsrchr));
        EXPECT_EQ(whole, found(tuk_vel_mbsmbs));
        EXPECT_EQ(member, found(tuk_vel_mbspbrk));
        EXPECT_EQ(in == size && p.error ? -1 : in, tuk_vel_mbscspn(l, s, n, t, m));
        EXPECT_EQ(out == size && p.error ? -1 : out, tuk_vel_mbsspn(l, s, n, t, m));
        if (p.error) return;

        const wide_text values = p.values(), others = q.values();
        block<vel_wchar> w(counted ? values : terminated(values));
        block<vel_wchar> v(counted ? others : terminated(others));
        const int32_t wn = length(values), wm = length(others);
        auto index = [&](const vel_wchar *at) { return at ? at - w.get() : -1; };
        EXPECT_EQ(first.first, index(tuk_vel_wcschr(l, w, wn, *v)));
        EXPECT_EQ(last.first, index(tuk_vel_wcsrchr(l, w, wn, *v)));
        EXPECT_EQ(whole.first, index(tuk_vel_wcswcs(l, w, wn, v, wm)));
        EXPECT_EQ(member.first, index(tuk_vel_wcspbrk(l, w, wn, v, wm)));
        EXPECT_EQ(in, tuk_vel_wcscspn(l, w, wn, v, wm));
        EXPECT_EQ(out, tuk_vel_wcsspn(l, w, wn, v, wm));
        EXPECT_EQ(tuk_vel_mbsntslen(l, s, n), tuk_vel_wcsntslen(l, w, wn));
    }

    void measure(size_t most, size_t place) {
        size_t kept = p.characters.size(), bytes = p.end;
        constexpr int32_t asked = VEL_CLASS_BLANK | VEL_CLASS_CNTRL;
        while (kept && vel_im_ismctype(l, &text[p.starts[kept - 1]], asked) == VEL_CLASS_BLANK) {
            bytes = p.starts[--kept];
        }
        EXPECT_EQ(p.error ? -1 : static_cast<int32_t>(kept), tuk_vel_mbsntslen(l, s, n));
        EXPECT_EQ(p.error ? -1 : static_cast<int32_t>(bytes), tuk_vel_mbsntsbytes(l, s, n));

        const bool fails = most > p.characters.size() && p.error;
        const size_t copied = most < p.starts.size() ? p.starts[most] : p.end;
        const int32_t less = counted ? 0 : static_cast<int32_t>(set.least);
        std::string out(text.size() + 8, '?');
        EXPECT_EQ(fails ? -1 : static_cast<int32_t>(copied) - less,
                  tuk_vel_mbsncpy(l, out.data(), s, n, static_cast<int32_t>(most)));

        if (place >= p.end) return;
        int32_t length_there = -1;
        size_t after = static_cast<size_t>(
            std::upper_bound(p.starts.begin(), p.starts.end(), place) - p.starts.begin());
        EXPECT_EQ(static_cast<int32_t>(place - p.starts[after - 1]),
                  vel_full_charoffset(l, s, s + place, &length_there));
        EXPECT_EQ(static_cast<int32_t>(p.characters[after - 1].size()), length_there);
    }
};

TEST(random_strings, give_what_plain_loops_give) {
    for_each_set([](const code_set &set, vel_locale *locale) {
        std::mt19937 random(seed);
        for (int round = 0; round < 3000 && !::testing::Test::HasFailure(); ++round) {
            SCOPED_TRACE(round);
            const size_t kinds = 1 + random() % 6, size = random() % (round % 49 ? 40 : 6000);
            std::string text = draw(random, set, size, kinds, round % 3 == 0);
            std::string part = draw(random, set, 1 + random() % 5, kinds, false);
            trial one{locale, set, round % 2 == 1, text, part};
            one.search();
            one.measure(random() % 12, random() % (text.size() + 1));
        }
    });
}

// Needles over two letters, which make the search by units give way to the linear one.
TEST(random_strings, find_needles_that_repeat_themselves) {
    std::mt19937 random(seed);
    for (int round = 0; round < 20000; ++round) {
        std::string text(random() % 3000, 'a'), needle(2 + random() % 60, 'a');
        for (size_t spots = random() % 4; spots > 0; --spots)
            needle[random() % needle.size()] = 'b';
        size_t period = 1 + random() % needle.size();
        for (size_t i = 0; i < text.size(); ++i) text[i] = needle[i % period];
        for (size_t spots = random() % 9; spots > 0 && !text.empty(); --spots)
            text[random() % text.size()] ^= 3;
        size_t expected = text.find(needle);
        wide_text wide(text.begin(), text.end()), part(needle.begin(), needle.end());
        block<vel_wchar> units(wide), sought_units(part);
        const vel_wchar *hit =
            vel::needle_search<vel_wchar>(sought_units, part.size()).find(units, wide.size());
        ASSERT_EQ(expected, hit ? static_cast<size_t>(hit - units.get()) : std::string::npos)
            << needle << '\n'
            << text;
    }
}

} // namespace

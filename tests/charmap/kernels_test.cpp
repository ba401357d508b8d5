// Every rung of the whole-string kernels against loops that take one character at a time.
#include <gtest/gtest.h>

#include <random>

#include "charmap/kernels.h"
#include "charmap/slow_text.h"
#include "support/make_locale.h"
#include "vels/errors.h"
#include "vels/multibyte.h"

namespace vel {

// The name of a rung in the names of its tests.
static void PrintTo(kernel_rung rung, std::ostream *out) {
    static constexpr const char *names[] = {"scalar", "sse", "avx2", "avx512"};
    *out << names[static_cast<int>(rung)];
}

} // namespace vel

namespace {

using namespace vel_test;
using namespace std::string_literals;
using vel::kernel_rung;

constexpr uint32_t seed = 20240611;
constexpr int32_t enough = 1 << 20; // room for any text here

// --- The functions under test, on blocks of exactly the stated size ------------------------------

outcome fast_decode(vel_locale *locale, const std::string &text, int32_t nbytes, int32_t room) {
    outcome o{0, 0, std::vector<vel_wchar>(text.size() + 8, untouched)};
    // The terminator, also where the text has been cut inside a character.
    size_t end_bytes = static_cast<size_t>(2 * vel_mb_loc_min(locale) - 1);
    size_t size = nbytes == -1 ? text.size() + end_bytes : static_cast<size_t>(std::max(nbytes, 1));
    std::unique_ptr<char[]> block(new char[size]);
    std::copy_n((text + terminator).begin(), size, block.get());
    o.error = error_of(locale, [&] {
        o.result = tuk_vel_im_mbfstowcfs(locale, o.out.data(), block.get(), nbytes, room);
    });
    return o;
}

outcome fast_encode(vel_locale *locale, const std::vector<vel_wchar> &wide, int32_t nvalues,
                    int32_t room) {
    outcome o;
    size_t size = nvalues == -1 ? wide.size() : static_cast<size_t>(nvalues);
    std::unique_ptr<vel_wchar[]> block(new vel_wchar[size]);
    std::copy_n(wide.begin(), size, block.get());
    std::string out(wide.size() * 4 + 8, '\xEE');
    o.error = error_of(locale, [&] {
        o.result = tuk_vel_full_wcstombs(locale, out.data(), block.get(), nvalues, room);
    });
    for (char b : out) o.out.push_back(static_cast<unsigned char>(b));
    return o;
}

outcome fast_count(vel_locale *locale, const std::string &text, int32_t nbytes) {
    outcome o;
    const std::string block = text + terminator; // a last character may be read beyond the end
    o.error = error_of(locale, [&] {
        o.result = nbytes == -1 ? vel_im_mbslen(locale, block.data())
                                : tuk_vel_im_mbfslen(locale, block.data(), nbytes);
    });
    if (o.result < 0) o.result = -1;
    return o;
}

// --- Texts ---------------------------------------------------------------------------------------

struct code_set {
    const char *name;
    locale_ptr (*make)();
    // Characters to draw from, more of the first ones.
    std::vector<vel_wchar> letters;
    size_t least = 1; // bytes of the shortest character
};

const code_set code_sets[] = {
    {"utf8",
     make_utf8,
     {'a', 'Z', ' ', 0xC3A9, 0xD0BF, 0xE38182, 0xE697A5, 0xC280, 0xDFBF, 0xE0A080, 0xED9FBF,
      0xEE8080, 0xEFBFBF, 0xF0908080, 0xF09F9880, 0xF48FBFBF}},
    {"euc", make_euc, {'a', 'Z', 0xA4A2, 0xB0A1, 0xCFD3, 0x8EB1, 0x8FB0A1, 0x8FB8FE, 0x8F00A1}},
    {"sjis", make_sjis, {'a', '~', 0xB1, 0x82A0, 0x835C, 0x8140, 0x9FFC, 0xEA7E}},
    {"gb", make_gb, {'a', '0', 0xB0A1, 0x8540, 0xFEFE, 0x81308130, 0x8139FE39}},
    {"two bytes", make_two_byte, {'a', 0x3042, 0x4100, 0xFFFF, 0x100}, 2},
    {"single byte", make_single_byte, {'a', 'Z', 0xE9, 0xFF}},
};

// Invalid as bytes and as values, in every code set or in most.
const std::string bad_bytes[] = {
    pack(0xFF),       pack(0x80),     pack(0xC080),     pack(0xC1BF),
    pack(0xC3),       pack(0xE09FBF), pack(0xE381),     pack(0xEDA080),
    pack(0xF08FBFBF), pack(0xF09080), pack(0xF4908080), pack(0xF5808080),
    pack(0xA4),       pack(0x8FB0),   pack(0x813081),   pack(0xD801),
};
const std::vector<vel_wchar> bad_values = {0xFF,       0x80,       0xC3,       0xA9,     0xC080,
                                           0xC1BF,     0xC3C3,     0xA9A9,     0xD801,   0xE08080,
                                           0xEDA080,   0xE30081,   0xE38100,   0xE3C381, 0xEFBFC0,
                                           0xF08FBFBF, 0xF4908080, 0xF5808080, 0x41C3A9, 0x7FFFFFFF,
                                           0x80000000, 0xFFFFFFFF, 0xF09F00A0, 0x30A1,   0x2240};

struct text_pair {
    std::string bytes;
    std::vector<vel_wchar> wide;
};

class kernels : public ::testing::TestWithParam<kernel_rung> {
protected:
    void SetUp() override {
        if (!vel::use_kernels(GetParam())) GTEST_SKIP() << "the processor has no such rung";
    }
    ~kernels() override { vel::use_kernels(kernel_rung::scalar); }

    template <typename Check> void for_each_code_set(Check check) {
        for (const code_set &set : code_sets) {
            SCOPED_TRACE(std::string(set.name) + ", seed " + std::to_string(seed));
            locale_ptr made = set.make();
            check(set, made->get());
            if (HasFailure()) return;
        }
    }

    static void pack_all(text_pair &text, size_t least) {
        text.bytes.clear();
        for (vel_wchar value : text.wide) text.bytes += pack(value, least);
    }

    // Runs of one letter and of mixed ones, up to about `size` bytes.
    text_pair draw(const code_set &set, size_t size) {
        text_pair text;
        while (text.bytes.size() < size) {
            size_t kinds = 1 + random_() % set.letters.size();
            for (size_t run = random_() % 60; run-- > 0;) {
                text.wide.push_back(set.letters[random_() % kinds]);
                text.bytes += pack(text.wide.back(), set.least);
            }
        }
        return text;
    }

    void compare(vel_locale *locale, const text_pair &text, int32_t room) {
        int32_t size = static_cast<int32_t>(text.bytes.size());
        int32_t count = static_cast<int32_t>(text.wide.size());
        std::vector<vel_wchar> terminated = text.wide;
        terminated.push_back(0);
        for (int32_t n : {-1, size}) {
            EXPECT_EQ(slow_decode(locale, text.bytes, n, room),
                      fast_decode(locale, text.bytes, n, room));
            EXPECT_EQ(slow_count(locale, text.bytes, n), fast_count(locale, text.bytes, n));
        }
        if (locale->single_byte) return; // encodes without a check: tested with the primitives
        EXPECT_EQ(slow_encode(locale, terminated, -1, room),
                  fast_encode(locale, terminated, -1, room));
        EXPECT_EQ(slow_encode(locale, text.wide, count, room),
                  fast_encode(locale, text.wide, count, room));
    }

    std::mt19937 random_{seed};
};

TEST_P(kernels, take_text_of_every_length) {
    for_each_code_set([&](const code_set &set, vel_locale *locale) {
        for (int round = 0; round < 4; ++round) {
            text_pair whole = draw(set, 240);
            text_pair text;
            for (vel_wchar value : whole.wide) {
                if (text.bytes.size() > 200) break;
                compare(locale, text, enough);
                text.wide.push_back(value);
                text.bytes += pack(value, set.least);
            }
        }
    });
}

TEST_P(kernels, stop_at_every_limit) {
    for_each_code_set([&](const code_set &set, vel_locale *locale) {
        for (int round = 0; round < 4; ++round) {
            text_pair text = draw(set, 160);
            text.wide.resize(std::min<size_t>(text.wide.size(), 200));
            pack_all(text, set.least);
            for (int32_t room = -1; room <= 250; ++room) compare(locale, text, room);
        }
    });
}

// Short characters behind many long ones: a store reaches farthest beyond what it is to write.
TEST_P(kernels, leave_the_bytes_behind_a_cut_alone) {
    locale_ptr made = make_utf8();
    text_pair text;
    for (size_t i = 0; i < 80; ++i) text.wide.push_back(i % 20 - 12 < 5 ? 'a' : 0xF09F9880);
    pack_all(text, 1);
    for (int32_t room = 0; room <= 250; ++room) compare(made->get(), text, room);
}

TEST_P(kernels, fail_at_invalid_characters_everywhere) {
    for_each_code_set([&](const code_set &set, vel_locale *locale) {
        text_pair whole = draw(set, 180);
        for (size_t at = 0; at < whole.wide.size() && at < 150; ++at) {
            text_pair text = whole;
            vel_wchar bad = bad_values[random_() % bad_values.size()];
            text.wide[at] = bad;
            text.bytes.clear();
            for (size_t i = 0; i < whole.wide.size(); ++i) {
                text.bytes += i == at ? bad_bytes[random_() % std::size(bad_bytes)]
                                      : pack(whole.wide[i], set.least);
            }
            compare(locale, text, enough);
            text.bytes.resize(random_() % (text.bytes.size() + 1));
            compare(locale, text, enough);
        }
    });
}

// In every lane of a block, also where the rows of a code set have been worked out.
TEST_P(kernels, refuse_every_value_that_is_no_character) {
    for_each_code_set([&](const code_set &set, vel_locale *locale) {
        if (locale->single_byte) return;
        for (size_t size : {size_t{100}, size_t{2200}}) {
            std::vector<vel_wchar> wide = draw(set, 5 * size).wide;
            wide.resize(size, set.letters[0]);
            for (vel_wchar bad : bad_values) {
                for (size_t at = 40; at < 76; ++at) {
                    vel_wchar good = std::exchange(wide[at], bad);
                    EXPECT_EQ(slow_encode(locale, wide, static_cast<int32_t>(size), enough),
                              fast_encode(locale, wide, static_cast<int32_t>(size), enough));
                    wide[at] = good;
                }
            }
        }
    });
}

// Longer than the windows in which terminated text is taken, and than what it takes to work out the
// rows of a code set.
TEST_P(kernels, take_long_texts) {
    for_each_code_set([&](const code_set &set, vel_locale *locale) {
        for (int round = 0; round < 4; ++round) {
            text_pair text = draw(set, 3000 + random_() % 40000);
            compare(locale, text, enough);
            compare(locale, text, static_cast<int32_t>(random_() % text.wide.size()));
            text.bytes.insert(random_() % text.bytes.size(),
                              bad_bytes[random_() % std::size(bad_bytes)]);
            text.wide[random_() % text.wide.size()] = bad_values[random_() % bad_values.size()];
            compare(locale, text, enough);
        }
    });
}

// The whole of UTF-8 a lead byte and three more: what a block accepts is what the table accepts,
// also at its end.
TEST_P(kernels, know_every_start_of_a_utf8_character) {
    locale_ptr made = make_utf8();
    const std::string edges = "\x00\x41\x7F\x80\x8F\x90\x9F\xA0\xBF\xC0\xC2\xE1\xF0\xFF"s;
    const auto check = [&](size_t before, const std::string &bytes) {
        const std::string text = std::string(before, 'x') + bytes + std::string(80, 'y');
        const int32_t size = static_cast<int32_t>(text.size());
        ASSERT_EQ(slow_decode(made->get(), text, size, enough),
                  fast_decode(made->get(), text, size, enough))
            << before << ::testing::PrintToString(bytes);
        ASSERT_EQ(slow_count(made->get(), text, size), fast_count(made->get(), text, size));
    };
    for (int lead = 0x80; lead < 0x100; ++lead) {
        for (char second : edges) {
            for (char third : edges) {
                const std::string bytes = {static_cast<char>(lead), second, third,
                                           edges[random_() % edges.size()]};
                check(static_cast<size_t>(lead % 59), bytes);
                check(59 + random_() % 5, bytes);
            }
        }
    }
}

TEST_P(kernels, decode_and_encode_every_utf8_character) {
    locale_ptr made = make_utf8();
    text_pair text;
    for (uint32_t code = 1; code < 0x110000; ++code)
        if (code - 0xD800 >= 0x800) text.wide.push_back(utf8(code));
    pack_all(text, 1);
    compare(made->get(), text, 1 << 23);
    EXPECT_EQ(text.bytes.size() + 1,
              static_cast<size_t>(vel_mbsbytes(made->get(), text.bytes.c_str())));
}

// What is behind an invalid value is left alone.
TEST_P(kernels, narrow_to_single_bytes) {
    locale_ptr made = make_single_byte();
    for (size_t size = 0; size < 200; ++size) {
        std::string bytes;
        while (bytes.size() < size) bytes += static_cast<char>(1 + random_() % 255);
        std::vector<vel_wchar> wide(size + 1);
        for (size_t i = 0; i < size; ++i) wide[i] = static_cast<unsigned char>(bytes[i]);
        for (size_t room : {size / 2, size, size + 1}) {
            std::string out(size + 2, '?');
            EXPECT_EQ(
                static_cast<int32_t>(std::min(room, size)),
                vel_is_wcstombs(made->get(), out.data(), wide.data(), static_cast<int32_t>(room)));
            EXPECT_EQ((bytes + '\0').substr(0, room) + std::string(size + 2 - room, '?'), out);
        }
        size_t bad = random_() % (size + 1);
        wide[bad] = 0x100;
        int32_t count = static_cast<int32_t>(size + 1);
        std::string out(size + 1, '?');
        EXPECT_EQ(-1, tuk_vel_is_wcstombs(made->get(), out.data(), wide.data(), count, count));
        EXPECT_EQ(bytes.substr(0, bad) + std::string(size + 1 - bad, '?'), out);
    }
}

INSTANTIATE_TEST_SUITE_P(rungs, kernels,
                         ::testing::Values(kernel_rung::scalar, kernel_rung::sse, kernel_rung::avx2,
                                           kernel_rung::avx512));

} // namespace

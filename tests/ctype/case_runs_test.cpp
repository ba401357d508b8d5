// The case of multibyte text in runs of every length, against one character at a time.
#include <gtest/gtest.h>

#include <random>

#include "charmap/kernels.h"
#include "support/make_locale.h"
#include "vels/ctype.h"
#include "vels/multibyte.h"

namespace {

using namespace vel_test;

auto make_mapped() {
    auto made = make_utf8_base();
    made->add_ascii_letters();
    for (uint32_t code = 0x410; code < 0x430; ++code) made->add_case(utf8(code), utf8(code + 32));
    for (uint32_t code = 0x1E00; code < 0x1E80; code += 2) {
        made->add_case(utf8(code), utf8(code + 1));
    }
    made->add_case(utf8(0x10400), utf8(0x10428));
    made->add_case(utf8(0x2C6F), utf8(0x250));                 // three and two bytes
    made->add_mapped(utf8(0x131), VEL_CLASS_LOWER, {'I', 0});  // two and one
    made->add_mapped(utf8(0x212A), VEL_CLASS_UPPER, {0, 'k'}); // three and one
    made->finish();
    return made;
}

using map_text = int32_t (*)(vel_locale *, char *, const char *);

struct direction {
    map_text whole, single;
};
const direction directions[] = {{vel_tombsupper, vel_im_tomupper},
                                {vel_tombslower, vel_im_tomlower}};

struct mapped {
    int32_t result;
    std::string out;

    bool operator==(const mapped &) const = default;
};

std::string spaced(size_t text_size) {
    return std::string(text_size * 2 + 8, '?');
}

mapped slow_map(vel_locale *locale, map_text single, const std::string &text) {
    mapped made{0, ""};
    for (size_t at = 0; at < text.size();) {
        if (vel_full_mblen(locale, text.c_str() + at, 4) < 0) {
            made.result = -1;
            break;
        }
        char out[8];
        int32_t counts = single(locale, out, text.c_str() + at);
        made.out.append(out, static_cast<size_t>(counts & 0xFF));
        at += static_cast<size_t>(counts >> 8);
    }
    if (made.result == 0) {
        made.result = static_cast<int32_t>(made.out.size());
        made.out += '\0';
    }
    made.out.resize(spaced(text.size()).size(), '?');
    return made;
}

TEST(case_runs, map_like_single_characters) {
    constexpr uint32_t seed = 4711;
    const uint32_t letters[] = {'a',    'Z',    ' ',     0x416,  0x434, 0x1E00, 0x1E7F,
                                0x4E00, 0x3042, 0x10428, 0x2C6F, 0x250, 0x131,  0x212A};
    const std::string bad[] = {"\xFF", "\x80", "\xD0", "\xE3\x81", "\xED\xA0\x80", "\xC1\xBF"};
    auto made = make_mapped();
    std::mt19937 random{seed};
    for (int round = 0; round < 1500; ++round) {
        // Some are longer than the windows in which text is taken.
        size_t size = round % 100 ? random() % 300 : 17000 + random() % 20000;
        std::string text;
        while (text.size() < size) {
            size_t first = random() % std::size(letters), kinds = 1 + random() % 3;
            for (size_t run = random() % 20; run-- > 0;) {
                text += pack(utf8(letters[(first + random() % kinds) % std::size(letters)]));
            }
        }
        if (round % 3 == 0)
            text.insert(random() % (text.size() + 1), bad[random() % std::size(bad)]);
        std::unique_ptr<char[]> block(new char[text.size() + 1]); // nothing behind it may be read
        std::copy_n(text.c_str(), text.size() + 1, block.get());
        for (const direction &to : directions) {
            mapped expected = slow_map(made->get(), to.single, text);
            for (vel::kernel_rung rung : {vel::kernel_rung::scalar, vel::kernel_rung::avx512}) {
                if (!vel::use_kernels(rung)) continue;
                mapped got{0, spaced(text.size())};
                got.result = to.whole(made->get(), got.out.data(), block.get());
                EXPECT_EQ(expected.result, got.result);
                EXPECT_TRUE(expected.out == got.out);
            }
        }
        ASSERT_FALSE(HasFailure()) << "seed " << seed << ", round " << round;
    }
    vel::use_kernels(vel::kernel_rung::scalar);
}

} // namespace

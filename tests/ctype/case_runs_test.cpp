// The case of multibyte text in runs of every length, against one character at a time.
#include <gtest/gtest.h>

#include <random>

#include "charmap/kernels.h"
#include "support/make_locale.h"
#include "vels/ctype.h"
#include "vels/multibyte.h"

namespace {

using namespace vel_test;
using vel::kernel_rung;

// With `upper_i` for i, as in Turkish or not.
locale_ptr make_mapped(vel_wchar upper_i) {
    auto made = make_utf8_base();
    made->add_ascii_letters();
    made->add_mapped('i', VEL_CLASS_LOWER, {upper_i, 0});
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
    int32_t (*whole_wide)(vel_locale *, vel_wchar *, const vel_wchar *);
    vel_wchar (*single_wide)(vel_locale *, vel_wchar);
};
const direction directions[] = {{vel_tombsupper, vel_im_tomupper, vel_towcsupper, vel_im_towupper},
                                {vel_tombslower, vel_im_tomlower, vel_towcslower, vel_im_towlower}};

struct mapped {
    int32_t result;
    std::string out;
};

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
    made.out.resize(text.size() * 2 + 8, '?');
    return made;
}

TEST(case_runs, map_like_single_characters) {
    constexpr uint32_t seed = 4711;
    const uint32_t letters[] = {'a',    'Z',    'i',     ' ',    0x416, 0x434, 0x1E00, 0x1E7F,
                                0x4E00, 0x3042, 0x10428, 0x2C6F, 0x250, 0x131, 0x212A};
    const std::string bad[] = {"\xFF", "\x80", "\xD0", "\xE3\x81", "\xED\xA0\x80", "\xC1\xBF"};
    const locale_ptr locales[] = {make_mapped('I'), make_mapped(utf8(0x130)), make_single_byte()};
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
        if (random() % 3 == 0)
            text.insert(random() % (text.size() + 1), bad[random() % std::size(bad)]);
        std::unique_ptr<char[]> block(new char[text.size() + 1]); // nothing behind it may be read
        std::copy_n(text.c_str(), text.size() + 1, block.get());
        vel_locale *locale = locales[round % std::size(locales)]->get();
        std::vector<vel_wchar> wide(text.size() + 1);
        int32_t count = vel_im_mbstowcs(locale, wide.data(), text.c_str(), 1 << 20);
        wide.resize(static_cast<size_t>(std::max(count, 0)) + 1);
        for (const direction &to : directions) {
            mapped expected = slow_map(locale, to.single, text);
            std::vector<vel_wchar> wide_expected;
            for (vel_wchar value : wide) wide_expected.push_back(to.single_wide(locale, value));
            for (kernel_rung rung :
                 {kernel_rung::scalar, kernel_rung::sse, kernel_rung::avx2, kernel_rung::avx512}) {
                if (!vel::use_kernels(rung)) continue;
                mapped got{0, std::string(expected.out.size(), '?')};
                got.result = to.whole(locale, got.out.data(), block.get());
                EXPECT_EQ(expected.result, got.result);
                EXPECT_TRUE(expected.out == got.out);
                if (count < 0) continue;
                std::vector<vel_wchar> in_place = wide;
                EXPECT_EQ(0, to.whole_wide(locale, in_place.data(), in_place.data()));
                EXPECT_EQ(wide_expected, in_place);
            }
        }
        ASSERT_FALSE(HasFailure()) << "seed " << seed << ", round " << round;
    }
    vel::use_kernels(kernel_rung::scalar);
}

} // namespace

// Whole-string functions against one character at a time, on long random text over the repertoire
// of each code set, by every kernel that this processor has.
#include <gtest/gtest.h>
#include <random>

#include "charmap/kernels.h"
#include "differential/cases.h"

namespace differential {
namespace {

constexpr uint32_t seed = 20240607;

using one_char_case = int32_t (*)(vel_locale *, char *, const char *);

class strings : public testing::TestWithParam<locale_case> {
protected:
    // What stepping makes of a text, up to the first invalid character.
    struct stepped {
        std::vector<vel_wchar> values;
        std::string upper, lower;
        bool valid = true;
    };

    void SetUp() override {
        owner_ = open_ours(GetParam());
        ASSERT_TRUE(owner_) << GetParam().name() << " is not in the pack " << VELS_TEST_DATA_ROOT;
        collect("");
        ASSERT_GT(characters_.size(), 100u);
    }

    vel_locale *ours() const { return owner_.get(); }

    // All characters but the null character.
    void collect(const std::string &head) {
        for (int byte = 0; byte < 256; ++byte) {
            const std::string bytes = head + static_cast<char>(byte);
            const int32_t size = static_cast<int32_t>(bytes.size());
            const int32_t length = tuk_vel_full_mblen(ours(), bytes.data(), size);
            if (length == size && packed(bytes) != 0) characters_.push_back(bytes);
            if (length < 0 && size < 4 && *vel_ext_errno(ours()) == VEL_EINVAL) collect(bytes);
        }
    }

    // Runs of neighbours, as text has them, between runs of anything.
    std::string random_text(size_t characters) {
        std::string text;
        while (characters > 0) {
            const size_t run = std::min<size_t>(characters, 1 + random_() % 70);
            const size_t start = random_() % 3 == 0 ? 0 : random_() % characters_.size();
            const size_t spread = random_() % 2 == 0 ? 100 : characters_.size();
            for (size_t i = 0; i < run; ++i)
                text += characters_[(start + random_() % spread) % characters_.size()];
            characters -= run;
        }
        return text;
    }

    stepped step(const std::string &text) const {
        stepped made;
        for (size_t at = 0; at < text.size();) {
            vel_wchar value;
            const int32_t left = static_cast<int32_t>(text.size() - at);
            const int32_t length = vel_full_mbtowc(ours(), &value, &text[at], left);
            made.valid = length > 0;
            if (!made.valid) break;
            made.values.push_back(value);
            append_case(made.upper, vel_im_tomupper, &text[at]);
            append_case(made.lower, vel_im_tomlower, &text[at]);
            at += length;
        }
        return made;
    }
    void append_case(std::string &to, one_char_case map, const char *character) const {
        char out[4];
        const int32_t lengths = map(ours(), out, character);
        to.append(out, lengths & 0xFF);
    }

    void expect_as_stepped(const std::string &text) {
        const stepped expected = step(text);
        expect_measured(text, expected);
        expect_decoded(text, expected);
        expect_mapped(text, expected.upper, expected.valid, vel_tombsupper);
        expect_mapped(text, expected.lower, expected.valid, vel_tombslower);
        if (expected.valid) expect_wide(text, expected);
    }

    void expect_measured(const std::string &text, const stepped &expected) {
        const int32_t count = static_cast<int32_t>(expected.values.size());
        const int32_t bytes = static_cast<int32_t>(text.size());
        EXPECT_EQ(vel_im_mbslen(ours(), text.c_str()), expected.valid ? count : -1);
        EXPECT_EQ(tuk_vel_im_mbfslen(ours(), text.c_str(), bytes), expected.valid ? count : -1);
        EXPECT_EQ(vel_mbsbytes(ours(), text.c_str()), expected.valid ? bytes + 1 : 0);
    }

    void expect_decoded(const std::string &text, const stepped &expected) {
        const size_t count = expected.values.size();
        const int32_t room = static_cast<int32_t>(text.size() + 1);
        const int32_t result = expected.valid ? static_cast<int32_t>(count) : -1;
        std::vector<vel_wchar> out(room, 1);
        EXPECT_EQ(vel_im_mbstowcs(ours(), out.data(), text.c_str(), room), result);
        EXPECT_TRUE(std::equal(expected.values.begin(), expected.values.end(), out.begin()));
        std::ranges::fill(out, 1);
        EXPECT_EQ(tuk_vel_im_mbfstowcfs(ours(), out.data(), text.c_str(), room - 1, room), result);
        EXPECT_TRUE(std::equal(expected.values.begin(), expected.values.end(), out.begin()));
    }

    void expect_mapped(const std::string &text, const std::string &expected, bool valid,
                       one_char_case map) {
        std::string out(vel_case_conv_outbuflen(ours(), static_cast<int32_t>(text.size())) + 1,
                        '\1');
        EXPECT_EQ(map(ours(), out.data(), text.c_str()),
                  valid ? static_cast<int32_t>(expected.size()) : -1);
        EXPECT_TRUE(out.starts_with(expected));
    }

    void expect_wide(const std::string &text, const stepped &expected) {
        std::vector<vel_wchar> wide = expected.values;
        wide.push_back(0);
        std::string out(text.size() + 1, '\1');
        const int32_t room = static_cast<int32_t>(out.size());
        EXPECT_EQ(vel_full_wcstombs(ours(), out.data(), wide.data(), room), room - 1);
        EXPECT_EQ(out, text + '\0');
        std::vector<vel_wchar> mapped(wide.size(), 1), stepped_upper;
        for (vel_wchar value : wide) stepped_upper.push_back(vel_im_towupper(ours(), value));
        EXPECT_EQ(vel_towcsupper(ours(), mapped.data(), wide.data()), 0);
        EXPECT_EQ(mapped, stepped_upper);
    }

    // Runs the check by every kernel, the best one last: it stays in use.
    template <typename Check> void by_every_kernel(Check check) {
        using enum vel::kernel_rung;
        for (vel::kernel_rung rung : {scalar, sse, avx2, avx512}) {
            if (!vel::use_kernels(rung)) continue;
            random_.seed(seed);
            SCOPED_TRACE(GetParam().name() + ", kernel " + std::to_string(static_cast<int>(rung)) +
                         ", seed " + std::to_string(seed));
            check();
            if (HasFailure()) return;
        }
    }

    size_t random() { return random_(); }

private:
    our_locale owner_;
    std::vector<std::string> characters_;
    std::mt19937 random_;
};

TEST_P(strings, long_text_as_by_stepping) {
    by_every_kernel([&] { expect_as_stepped(random_text(50000)); });
}

TEST_P(strings, damaged_text_as_by_stepping) {
    by_every_kernel([&] {
        for (int i = 0; i < 300 && !HasFailure(); ++i) {
            std::string text = random_text(1 + random() % 200);
            text[random() % text.size()] = static_cast<char>(1 + random() % 255);
            expect_as_stepped(text);
        }
    });
}

INSTANTIATE_TEST_SUITE_P(code_sets, strings, testing::ValuesIn(one_for_each_code_set()),
                         parameter_name);

} // namespace
} // namespace differential

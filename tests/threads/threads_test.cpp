// One locale read by many threads: the same results as in one thread, an error cell for each
// thread, and no race for ThreadSanitizer to report.
#include <barrier>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

#include "vels.h"

namespace {

constexpr int thread_count = 8;

thread_local int32_t error_cell;

int32_t *cell_of_thread(void *) {
    return &error_cell;
}

// Runs `work(i)` in all threads at once.
template <typename Work> void at_once(Work work) {
    std::barrier start(thread_count);
    std::vector<std::jthread> threads;
    for (int i = 0; i < thread_count; ++i)
        threads.emplace_back([&, i] {
            start.arrive_and_wait();
            work(i);
        });
}

// What the functions that read a locale make of a text.
struct reading {
    std::vector<vel_wchar> values, upper_values;
    std::string written, upper, lower;
    std::vector<int32_t> classes, lengths;

    bool operator==(const reading &) const = default;
};

void read_characters(vel_locale *locale, reading &into) {
    for (vel_wchar value : into.values) {
        char bytes[5] = {};
        const int32_t length = vel_full_wctomb(locale, bytes, value);
        into.written.append(bytes, length);
        into.classes.push_back(vel_im_iswctype(locale, value, 0xFFFF));
        into.classes.push_back(vel_im_ismctype(locale, bytes, 0xFFFF));
        into.lengths.push_back(tuk_vel_full_mblen(locale, bytes, 4));
        into.upper_values.push_back(vel_im_towupper(locale, value));
        into.upper_values.push_back(vel_im_towlower(locale, value));
    }
}

reading read(vel_locale *locale, const std::string &text) {
    reading made;
    const int32_t bytes = static_cast<int32_t>(text.size());
    made.values.resize(text.size());
    const int32_t count =
        tuk_vel_im_mbfstowcfs(locale, made.values.data(), text.c_str(), bytes, bytes);
    made.values.resize(std::max(count, 0));
    made.lengths = {vel_im_mbslen(locale, text.c_str()),
                    tuk_vel_im_mbfslen(locale, text.c_str(), bytes),
                    vel_mbsbytes(locale, text.c_str()), vel_ctype(locale, "alnum")};
    made.upper.resize(vel_case_conv_outbuflen(locale, bytes) + 1);
    made.lower = made.upper;
    made.lengths.push_back(vel_tombsupper(locale, made.upper.data(), text.c_str()));
    made.lengths.push_back(vel_tombslower(locale, made.lower.data(), text.c_str()));
    std::vector<vel_wchar> wide = made.values;
    wide.push_back(0);
    made.written.resize(text.size() + 1);
    made.lengths.push_back(vel_full_wcstombs(locale, made.written.data(), wide.data(), bytes + 1));
    read_characters(locale, made);
    return made;
}

struct text_case {
    const char *locale;
    std::string text;    // without an error
    std::string invalid; // no character begins so
    std::string cut;     // the beginning of a character

    friend void PrintTo(const text_case &of, std::ostream *out) { *out << of.locale; }
};

class threads : public testing::TestWithParam<text_case> {
protected:
    void SetUp() override {
        unsetenv("VEL_PATH");
        setenv("CORVANEDIR", VELS_TEST_DATA_ROOT, 1);
        const int32_t loaded = vel_lc_load(&locale_, GetParam().locale, -1, nullptr);
        vel_setextfunc(nullptr, VEL_HOOK_ERRNO, reinterpret_cast<vel_hook>(cell_of_thread));
        ASSERT_EQ(loaded, 0) << GetParam().locale << " in " << VELS_TEST_DATA_ROOT;
    }
    void TearDown() override {
        vel_setextfunc(nullptr, VEL_HOOK_ERRNO, nullptr);
        vel_lc_unload(locale_);
    }

    static std::string long_text() {
        std::string text;
        while (text.size() < 6000) text += GetParam().text;
        return text;
    }

    vel_locale *locale_;
};

// The kernels are chosen by whoever comes first; nothing before this test has called one.
TEST(first_use, kernels_are_chosen_once_for_all) {
    std::vector<vel_wchar> wide(5000, 0x41);
    wide.push_back(0);
    int32_t lengths[thread_count] = {};
    at_once([&](int i) { lengths[i] = vel_wcslen(wide.data() + i); });
    for (int i = 0; i < thread_count; ++i) EXPECT_EQ(lengths[i], 5000 - i);
}

TEST_P(threads, read_what_one_reads) {
    const std::string text = long_text();
    reading made[thread_count];
    at_once([&](int i) {
        for (int round = 0; round < 20; ++round) made[i] = read(locale_, text);
    });
    const reading expected = read(locale_, text);
    ASSERT_GT(expected.values.size(), 1000u);
    ASSERT_EQ(expected.lengths[0], static_cast<int32_t>(expected.values.size()));
    ASSERT_NE(expected.upper, expected.lower);
    for (const reading &one : made) EXPECT_TRUE(one == expected);
}

// Threads fail in different ways at the same time, and every second one does not fail.
TEST_P(threads, have_errors_of_their_own) {
    const text_case &of = GetParam();
    const std::string text = long_text(), broken = text + of.invalid + text;
    int wrong[thread_count] = {};
    at_once([&](int i) {
        const int32_t length = static_cast<int32_t>(of.cut.size());
        for (int round = 0; round < 500; ++round) {
            error_cell = 0;
            int32_t expected = 0;
            if (i % 4 == 1) {
                expected = VEL_EILSEQ;
                wrong[i] += vel_im_mbslen(locale_, broken.c_str()) != -1;
            } else if (i % 4 == 3) {
                expected = VEL_EINVAL;
                wrong[i] += tuk_vel_full_mblen(locale_, of.cut.data(), length) != -1;
            } else {
                wrong[i] += vel_im_mbslen(locale_, text.c_str()) <= 0;
            }
            wrong[i] += error_cell != expected;
        }
    });
    for (int i = 0; i < thread_count; ++i) EXPECT_EQ(wrong[i], 0) << "thread " << i;
}

INSTANTIATE_TEST_SUITE_P(
    locales, threads,
    testing::Values(text_case{"de_de.utf-8", "Gr\u00FC\u00DFe, Stra\u00DFe 7 \u20AC \U0001F600 ",
                              "\xC3(", "\xE2\x82"},
                    text_case{"ja_jp.euc-jp", "abc \xC5\xEC\xB5\xFE \xA5\xAB \x8F\xB0\xA1 ",
                              "\xC5 ", "\x8F\xB0"},
                    text_case{"zh_cn.gb18030", "Xyz \xB3\xBF 1 \x81\x30\x84\x36 ", "\xB3\x20",
                              "\x81\x30\x84"}),
    [](const testing::TestParamInfo<text_case> &one) { return std::string(one.param.locale, 5); });

} // namespace

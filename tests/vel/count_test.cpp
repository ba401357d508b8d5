// vel count: what it counts, and where it finds what is invalid.
#include "vel/runner.h"

namespace {

using namespace vel_test;

class count : public vel_tool_test {};

constexpr size_t block = 1 << 20; // bytes read at a time

TEST_F(count, counts_by_the_code_set_of_the_locale) {
    struct {
        const char *locale;
        std::string text;
        const char *counts;
    } cases[] = {
        {"C", "", "0\t0\t0\t0"},
        {"de_DE.UTF-8",
         "Gr\xC3\xBC\xC3\x9F"
         "e\n\xE2\x82\xAC\xF0\x9F\x98\x80",
         "8\t1\t15\t0"},
        {"de_DE.ISO-8859-1",
         "Gr\xC3\xBC\xC3\x9F"
         "e\n",
         "8\t1\t8\t0"},
        {"ja_JP.SHIFT_JIS", "\x82\xA0\x83\x5C\xB1\n", "4\t1\t6\t0"}, // 5C is a second byte
        {"ja_JP.EUC-JP", "\xA4\xA2\x8E\xB1\x8F\xB0\xA1", "3\t0\t7\t0"},
        {"zh_CN.GB18030", "\x81\x30\x81\x30\xC4\xE3\n", "3\t1\t7\t0"},
        {"C", std::string("a\0b\n\0", 5), "5\t1\t5\t0"},
        {"ja_JP.SHIFT_JIS", std::string("\x82\xA0\0\x82\xA0", 5), "3\t0\t5\t0"},
        {"en_US.IBM037", "\xC8\x89\x25", "3\t1\t3\t0"}, // "Hi" and a line feed
    };
    for (const auto &row : cases) {
        outcome got = vel_on(row.text, {"count", "-l", row.locale});
        EXPECT_EQ(got.status, 0) << row.locale << got.err;
        EXPECT_EQ(got.out.substr(0, got.out.rfind('\t')), row.counts) << row.locale;
    }
}

TEST_F(count, places_of_invalid_sequences) {
    struct {
        const char *locale;
        std::string text;
        const char *counts;
        std::vector<std::string> reports;
    } cases[] = {
        {"C", "a\xE3\x81z\xFF", "2\t0\t5\t2", {"byte 1: E3 81 is", "byte 4: FF is"}},
        {"C", "a\xE3\x81", "1\t0\t3\t1", {"byte 1: E3 81 is"}},
        {"C", "\xF0\x9F\x98", "0\t0\t3\t1", {"byte 0: F0 9F 98 is"}},
        {"C", "\xED\xA0\x80\xC0\x80", "0\t0\t5\t5", {"byte 0: ED is", "byte 4: 80 is"}},
        {"ja_JP.SHIFT_JIS", "\x82\x20\x82", "1\t0\t3\t2", {"byte 0: 82 is", "byte 2: 82 is"}},
        {"en_US.ANSI_X3.4-1968", "a\xE9z", "2\t0\t3\t1", {"byte 1: E9 is"}},
    };
    for (const auto &row : cases) {
        outcome got = vel_on(row.text, {"count", "-l", row.locale});
        EXPECT_EQ(got.status, 1);
        EXPECT_EQ(got.out.substr(0, got.out.rfind('\t')), row.counts) << got.err;
        expect_parts(got.err, row.reports);
    }
}

TEST_F(count, characters_and_faults_across_blocks) {
    const std::string euro = "\xE2\x82\xAC";
    for (size_t shift = 0; shift < 3; ++shift) {
        std::string text(shift, 'a');
        text += repeated(euro, block / 3 * 2 + 5); // no byte that surely begins a character
        std::string expected = std::to_string(shift + block / 3 * 2 + 5) + "\t0\t" +
                               std::to_string(text.size()) + "\t0\t";
        outcome got = vel_on(text, {"count", "-l", "C"});
        EXPECT_EQ(got.out.rfind(expected, 0), 0u) << got.out << got.err;

        text = std::string(block - shift, 'a') + "\xE2\x82" + "z";
        got = vel_on(text, {"count", "-l", "C"});
        expect_parts(got.err, {"byte " + std::to_string(block - shift) + ": E2 82 is"});
        EXPECT_EQ(got.out.rfind(std::to_string(block - shift + 1) + "\t", 0), 0u) << got.out;
    }
    // Two-byte characters whose second byte could be a first one, in lines longer than a window.
    std::string text = "a" + repeated("\xA4\xA2", block);
    outcome got = vel_on(text, {"count", "-l", "ja_JP.EUC-JP"});
    EXPECT_EQ(got.out.rfind(std::to_string(block + 1) + "\t0\t", 0), 0u) << got.out << got.err;
}

TEST_F(count, standard_input_comes_in_pieces) {
    outcome got =
        shell("for b in a '\\342' '\\202' '\\254' '\\n'; do printf \"$b\"; sleep 0.05; done"
              " | vel count -l C");
    EXPECT_EQ(got.out, "3\t1\t5\t0\t-\n") << got.err;
    EXPECT_EQ(got.status, 0);
}

TEST_F(count, several_files_and_one_that_is_missing) {
    std::string one = put("one", "a\n"), two = put("two", "\xC3\xA4\n");
    outcome got = vel({"count", "-l", "C", one, two});
    EXPECT_EQ(got.status, 0);
    EXPECT_EQ(got.out, "2\t1\t2\t0\t" + one + "\n2\t1\t3\t0\t" + two + "\n4\t2\t5\t0\ttotal\n");
    got = vel({"count", "-l", "C", one, in_folder("none"), two});
    EXPECT_EQ(got.status, 1);
    EXPECT_NE(got.out.find("4\t2\t5\t0\ttotal\n"), std::string::npos);
}

TEST_F(count, only_the_first_faults_are_listed) {
    std::string text = repeated("a\xFF", 25);
    auto lines = [](const std::string &err) { return std::count(err.begin(), err.end(), '\n'); };
    outcome got = vel_on(text, {"count", "-l", "C"});
    EXPECT_EQ(lines(got.err), 11);
    EXPECT_NE(got.err.find("15 more invalid sequences"), std::string::npos);
    EXPECT_EQ(lines(vel_on(text, {"count", "-l", "C", "--list", "3"}).err), 4);
    got = vel_on(text, {"count", "-l", "C", "--all"});
    EXPECT_EQ(lines(got.err), 25);
    EXPECT_NE(got.err.find("byte 49: FF"), std::string::npos);
}

} // namespace

// vel case: mapping streams, with all that must come through unchanged.
#include <sys/stat.h>

#include "vel/runner.h"

namespace {

using namespace vel_test;

class text_case : public vel_tool_test {};

TEST_F(text_case, maps_by_the_locale) {
    struct {
        const char *direction;
        const char *locale;
        std::string text;
        std::string expected;
    } cases[] = {
        {"upper", "de_DE.UTF-8", "gr\xC3\xBCn\n", "GR\xC3\x9CN\n"},
        {"lower", "de_DE.UTF-8", "GR\xC3\x9CN", "gr\xC3\xBCn"},
        {"upper", "de_DE.ISO-8859-1", "gr\xFCn", "GR\xDCN"},
        {"upper", "tr_TR.UTF-8", "ii", "\xC4\xB0\xC4\xB0"}, // longer than before
        {"lower", "tr_TR.UTF-8", "I", "\xC4\xB1"},
        {"upper", "ja_JP.SHIFT_JIS", "\x83\x61z", "\x83\x61Z"}, // 61 is a second byte
        {"upper", "C", "", ""},
        {"upper", "C", std::string("\0a\0\0\xC3\xA4\0", 7), std::string("\0A\0\0\xC3\x84\0", 7)},
        {"upper", "de_DE.ISO-8859-1", std::string("a\0\xE4", 3), std::string("A\0\xC4", 3)},
        {"lower", "en_US.IBM037", "\xC8\xC9", "\x88\x89"},
    };
    for (const auto &row : cases) {
        outcome got = vel_on(row.text, {"case", row.direction, "-l", row.locale});
        EXPECT_EQ(got.status, 0) << row.locale << got.err;
        EXPECT_EQ(got.out, row.expected) << row.locale;
    }
}

TEST_F(text_case, invalid_bytes_pass_through_and_are_reported) {
    std::string text("a\xFF\0b\xE3\x81z\xE3", 8);
    outcome got = vel_on(text, {"case", "upper", "-l", "C"});
    EXPECT_EQ(got.status, 1);
    EXPECT_EQ(got.out, std::string("A\xFF\0B\xE3\x81Z\xE3", 8));
    expect_parts(got.err, {"byte 1: FF", "byte 4: E3 81", "byte 7: E3"});
    got = vel_on("a\xE9z", {"case", "upper", "-l", "en_US.ANSI_X3.4-1968"});
    EXPECT_EQ(got.status, 1);
    EXPECT_EQ(got.out, "A\xE9Z");
}

TEST_F(text_case, large_text_with_nulls_and_faults) {
    std::string piece("stra\xC3\x9F"
                      "e \xC3\xA4\0\xE2\x82\xACuro\n",
                      19);
    std::string upper("STRA\xC3\x9F"
                      "E \xC3\x84\0\xE2\x82\xACURO\n",
                      19);
    const size_t times = 150000; // nearly three blocks
    std::string text = repeated(piece, times) + "\xFF" + repeated(piece, times);
    outcome got = vel_on(text, {"case", "upper", "-l", "de_DE.UTF-8"});
    EXPECT_EQ(got.status, 1);
    EXPECT_TRUE(got.out == repeated(upper, times) + "\xFF" + repeated(upper, times));
    EXPECT_NE(got.err.find("byte " + std::to_string(19 * times) + ": FF"), std::string::npos);
}

TEST_F(text_case, output_file_is_replaced_when_complete) {
    std::string path = put("text", "abc\n");
    chmod(path.c_str(), 0640);
    EXPECT_EQ(vel({"case", "upper", "-l", "C", "-o", path, path}).status, 0);
    EXPECT_EQ(content_of(path), "ABC\n");
    struct stat status;
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640u);
    // After a failure the old file stands, and nothing else is left.
    std::string old = put("target/out", "old");
    EXPECT_EQ(vel({"case", "upper", "-l", "C", "-o", old, path, "/nowhere/x"}).status, 1);
    EXPECT_EQ(content_of(old), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(in_folder("target")), {}), 1);
}

} // namespace

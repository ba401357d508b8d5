// Text of a code set whose shortest character has two bytes: big-endian values up to 0x1FF.
#include "vel/runner.h"

namespace {

using namespace vel_test;

// A table whose characters are 00xx and 01xx; `page` is the values of the characters 00xx.
std::string two_byte_table(const std::string &page) {
    return "2 2 3 0000\n2 1\n"
           "0000100201\n0000000\n"   // first bytes 00 and 01: more follows
           "0000110004\n0000000\n" + // any second byte ends a character
           page +
           "0000000\n1 0 0 0\n1 1 1 0\n1 0 1 0\n";
}

std::string two_byte_locale() {
    std::string indexes, pairs = "26\n", letters = "01a001";
    for (int i = 0; i < 26; ++i) {
        char text[40];
        snprintf(text, sizeof text, "%04x", i + 1);
        indexes += text;
        snprintf(text, sizeof text, "%08x%08x\n", 'A' + i, 'a' + i);
        pairs += text;
    }
    std::string classes = "0a0010010030\n4100101a0185\n6100101a0186\n";
    std::string cases = "41" + letters + indexes + "\n61" + letters + indexes + "\n";
    return "FILE_TYPE=locale_object\nCOMPILER_VERSION=11\nHEADER_LENGTH=3\nunicode\n"
           "### LC_CTYPE\n" +
           two_byte_table(classes) + "0\n" + two_byte_table(cases) + pairs + "1.0\n" +
           "### LC_COLLATE\nas_specified\n0 4 3 0000\n1 0\n0000000\n1 0 0 0\n0 0 0 0 0 1\n"
           "### LC_NUMERIC\n" +
           repeated("0\n", 5) + "### LC_MONETARY\n" + repeated("0\n", 7) + repeated("127\n", 8) +
           "### LC_TIME\ngregorian\n" + repeated("0\n", 14) + "12\n" + repeated("0\n", 12) +
           "12\n" + repeated("0\n", 12) + repeated("0\n", 11) + "### LC_MESSAGES\n" +
           repeated("0\n", 4);
}

class two_byte : public vel_tool_test {
protected:
    // An absolute path is a specification too.
    const std::string locale_ = put("wide.lco", two_byte_locale());
};

// Text in two-byte characters.
std::string wide(const std::string &text) {
    std::string result;
    for (char c : text) result += std::string(1, '\0') + c;
    return result;
}

TEST_F(two_byte, count) {
    // 010A and 0A01 hold the byte of the line feed, and 000A is found at even places only.
    outcome got = vel_on(wide("ab\n") + std::string("\x01\x0A\x00\x01\x01\x00\x0A", 7),
                         {"count", "-l", locale_});
    EXPECT_EQ(got.out.rfind("6\t1\t13\t1\t", 0), 0u) << got.out << got.err;
    got = vel_on(wide("a") + "\xFF\xFE" + wide("b"), {"count", "-l", locale_});
    EXPECT_NE(got.err.find("byte 2: FF FE is"), std::string::npos) << got.err;
    EXPECT_EQ(got.out.rfind("2\t0\t6\t1\t", 0), 0u) << got.out;
}

TEST_F(two_byte, text_case) {
    // The null character stays, and so do zero bytes that only meet in two characters.
    std::string odd("\x01\x00\x00\x61", 4), upper("\x01\x00\x00\x41", 4);
    std::string null(2, '\0');
    outcome got = vel_on(wide("ab") + null + odd + null, {"case", "upper", "-l", locale_});
    EXPECT_EQ(got.status, 0) << got.err;
    EXPECT_EQ(got.out, wide("AB") + null + upper + null);
    std::string text = wide("abc") + null;
    got = vel_on(repeated(text, 300000), {"case", "upper", "-l", locale_});
    EXPECT_TRUE(got.out == repeated(wide("ABC") + null, 300000)) << got.err;
}

TEST_F(two_byte, classify) {
    EXPECT_EQ(vel({"classify", "-l", locale_, "--hex", "0061 0161"}).out,
              "\\x00\\x61\t00 61\t0x0061\tlower alpha graph print\t\\x00\\x41\t-\n"
              "\\x01\\x61\t01 61\t0x0161\t-\t-\t-\n");
}

} // namespace

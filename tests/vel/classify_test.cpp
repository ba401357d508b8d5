// vel classify: one row for every character.
#include "vel/runner.h"

namespace {

using namespace vel_test;

class classify : public vel_tool_test {};

TEST_F(classify, rows) {
    struct {
        std::vector<std::string> arguments;
        const char *rows;
    } cases[] = {
        {{"-l", "de_DE.UTF-8", "a\xC3\x84"},
         "a\t61\t0x61\tlower alpha xdigit graph print\tA\t-\n"
         "\xC3\x84\tC3 84\t0xC384\tupper alpha graph print\t-\t\xC3\xA4\n"},
        {{"-l", "de_DE.UTF-8", "--hex", "09 e382a2"},
         "<U+0009>\t09\t0x09\tspace blank cntrl\t-\t-\n"
         "\xE3\x82\xA2\tE3 82 A2\t0xE382A2\talpha graph print full_width\t-\t-\n"},
        {{"-l", "de_DE.ISO-8859-1", "--hex", "E4,41"},
         "\\xE4\tE4\t0xE4\tlower alpha graph print\t\\xC4\t-\n"
         "A\t41\t0x41\tupper alpha xdigit graph print\t-\ta\n"},
        {{"-l", "en_US.IBM037", "--hex", "81"},
         "\\x81\t81\t0x81\tlower alpha xdigit graph print\t\\xC1\t-\n"},
    };
    for (const auto &row : cases) {
        std::vector<std::string> arguments = {"classify"};
        arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
        outcome got = vel(arguments);
        EXPECT_EQ(got.status, 0) << got.err;
        EXPECT_EQ(got.out, row.rows);
    }
}

TEST_F(classify, classes_of_the_locale_and_invalid_bytes) {
    outcome got = vel({"classify", "-l", "ja_JP.UTF-8", "\xE3\x82\xA2"});
    EXPECT_NE(got.out.find(" jkata"), std::string::npos) << got.out;
    got = vel({"classify", "-l", "ja_JP.SHIFT_JIS", "--hex", "82 A0 82"});
    EXPECT_EQ(got.status, 1);
    EXPECT_EQ(got.out.rfind("\\x82\\xA0\t82 A0\t0x82A0\t", 0), 0u) << got.out;
    EXPECT_NE(got.out.find("\n-\t82\t-\tinvalid\t-\t-\n"), std::string::npos) << got.out;
}

} // namespace

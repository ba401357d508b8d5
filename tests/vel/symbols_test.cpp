// vel symbols: text as names, and back.
#include "vel/runner.h"

namespace {

using namespace vel_test;

class symbols : public vel_tool_test {};

TEST_F(symbols, names_of_text_and_text_of_names) {
    struct {
        std::vector<std::string> arguments;
        std::string out;
    } cases[] = {
        {{"--charmap", "latin1", "a\xE4"}, "<a><U00E4>\n"},
        {{"--charmap", "sjis", "\x93\xFA"}, "<U65E5>\n"},
        {{"--charmap", "latin1", "-r", "<U0061> <U00E4>"}, "a\xE4\n"},
        {{"--charmap", "latin1", "-r", "<a><NUL><newline>"}, std::string("a\0\n\n", 4)},
        {{"-r", "<u0008364>"}, "€\n"},
        {{"--charmap", "ibm037", "-r", "<A>"}, "\xC1\x25"},
        {{""}, ""},
    };
    for (auto &row : cases) {
        row.arguments.insert(row.arguments.begin(), "symbols");
        outcome got = vel(row.arguments);
        EXPECT_EQ(got.out, row.out) << got.err;
        EXPECT_EQ(got.status, 0);
    }
    outcome all = vel({"symbols", "--all", "a~"});
    EXPECT_EQ(all.out.substr(0, 3), "61\t") << all.err;
    expect_parts(all.out, {"<a>", "<U0061>", "\n7E\t", "<tilde>", "<u0000126>"});
}

TEST_F(symbols, streams_come_back_as_they_were) {
    std::string text = repeated("x日本 é\n\n<\\>ア\t", 20000);
    std::string path = put("text", text);
    for (const char *code_set : {"utf8", "eucjp", "gb18030"}) {
        std::string charmap = std::string(" --charmap ") + code_set;
        outcome got = shell(std::string("vel convert -t ") + code_set + " -c -q " + path +
                            " | vel symbols" + charmap + " | dd bs=997 2>&- | vel symbols -r" +
                            charmap + " | vel convert -f " + code_set);
        std::string expected = shell(std::string("vel convert -t ") + code_set + " -c -q " + path +
                                     " | vel convert -f " + code_set)
                                   .out;
        EXPECT_GT(expected.size(), 300000u);
        EXPECT_TRUE(got.out == expected) << code_set << got.err;
    }
    EXPECT_EQ(shell("printf 'a\\nb' | vel symbols | wc -l").out, "2\n");
}

TEST_F(symbols, what_has_no_name_or_is_none) {
    struct {
        std::vector<std::string> arguments;
        std::string out, message;
    } cases[] = {
        {{"ab\xFF"}, "<", "byte 2: FF is no character of UTF-8"},
        {{"\xE3\x81"}, "", "byte 0: E3 81 begins a character"},
        {{"-r", "<a><nope>"}, "a", "byte 3: '<nope>' is no name in the charmap of UTF-8"},
        {{"-r", "<a>b"}, "a", "byte 3: 'b' stands where '<' should"},
        {{"-r", "<a><b"}, "a", "byte 3: '<b' has no '>'"},
        {{"--charmap", "nope", "a"}, "", "unknown code set 'nope'"},
        {{"--data", "/none", "--charmap", "utf8", "a"}, "", "/none/vels/cm3/e01c.cmo"},
    };
    for (auto &row : cases) {
        row.arguments.insert(row.arguments.begin(), "symbols");
        outcome got = vel(row.arguments);
        EXPECT_EQ(got.status, 1) << row.message;
        EXPECT_EQ(got.out.substr(0, row.out.size()), row.out);
        expect_parts(got.err, {row.message});
    }
    outcome got = shell("printf 'a\\n\\377' | vel symbols");
    expect_parts(got.err, {"standard input: byte 2: FF"});
}

} // namespace

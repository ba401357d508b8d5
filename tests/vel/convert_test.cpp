// vel convert: what is converted, what cannot be, files and streams.
#include "vel/runner.h"

namespace {

using namespace vel_test;
using namespace std::string_literals;

class convert : public vel_tool_test {
protected:
    outcome converted(const std::string &text, const std::string &from, const std::string &to,
                      std::vector<std::string> more = {}) {
        std::vector<std::string> arguments = {"convert", "-f", from, "-t", to};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return vel_on(text, arguments);
    }
};

// "日本" and an "a", as each code set has it.
constexpr char utf8_nihon[] = "\xE6\x97\xA5\xE6\x9C\xAC"
                              "a";
constexpr char sjis_nihon[] = "\x93\xFA\x96\x7B"
                              "a";
constexpr char euc_nihon[] = "\xC6\xFC\xCB\xDC"
                             "a";

TEST_F(convert, code_sets_by_any_name) {
    struct {
        const char *from, *to;
        std::string text, result;
    } cases[] = {
        {"utf8", "iso-8859-1", "Grüße\n",
         "Gr\xFC\xDF"
         "e\n"},
        {"Latin1", "UTF-8",
         "Gr\xFC\xDF"
         "e",
         "Grüße"},
        {"819", "437", "\xE4\xA3", "\x84\x9C"},
        {"utf8", "shift_jis", utf8_nihon, sjis_nihon},
        {"sjis", "utf8", sjis_nihon, utf8_nihon},
        {"eucjp", "sjis", euc_nihon, sjis_nihon},
        {"utf-8", "ibm037", "A1\n", "\xC1\xF1\x25"},
        {"utf-8", "utf8", utf8_nihon, utf8_nihon},
        {"437", "cp437", "\x81\x9C", "\x81\x9C"},
        {"ibm933", "933", "\x0E\x88\x61", "\x0E\x88\x61"},
        {"utf8", "latin1", "", ""},
        {"utf8", "latin1", "a\0b"s, "a\0b"s},
        {"ibm933", "utf8", "\x0E\x88\x61\x0F\xC1", "가A"},
        {"utf8", "ibm933", "A가가A가", "\xC1\x0E\x88\x61\x88\x61\x0F\xC1\x0E\x88\x61\x0F"},
        // No conversion for the pair: by way of UTF-8.
        {"big5", "eucjp", "\xA4\xE9", "\xC6\xFC"},
        {"ibm933", "euc-kr", "\x0E\x88\x61\x0F\xC1",
         "\xB0\xA1"
         "A"},
        {"euc-kr", "ibm933", "\xB0\xA1", "\x0E\x88\x61\x0F"},
    };
    for (const auto &row : cases) {
        outcome got = converted(row.text, row.from, row.to);
        EXPECT_EQ(got.out, row.result) << row.from << " to " << row.to;
        EXPECT_EQ(got.err, "");
        EXPECT_EQ(got.status, 0);
    }
}

TEST_F(convert, strict_stops_with_the_place_and_the_reason) {
    struct {
        const char *from, *to;
        std::string text, out;
        std::vector<std::string> parts;
    } cases[] = {
        {"utf8",
         "latin1",
         "12345€6",
         "12345",
         {"text: byte 5: E2 82 AC (U+20AC", "has no counterpart in latin1"}},
        {"utf8", "latin1", "ab\xFFz", "ab", {"text: byte 2: FF is no character of utf8"}},
        {"utf8", "utf8", "ab\xC3(", "ab", {"text: byte 2: C3 is no character of utf8"}},
        {"utf8", "latin1", "ab\xE2\x82", "ab", {"byte 2: E2 82 begins a character"}},
        {"sjis", "sjis", "ab\x81\x20", "ab", {"byte 2: 81 is no character of sjis"}},
        {"utf8", "utf8", "ab\xE2\x82", "ab", {"byte 2: E2 82 begins a character"}},
        {"sjis", "latin1", "A\x93\xFA", "A", {"byte 1: 93 FA (U+65E5) has no counterpart"}},
        {"koi8-r", "big5", "A\xBF", "A", {"byte 1: BF (U+00A9", "counterpart in big5"}},
    };
    for (const auto &row : cases) {
        for (size_t before : {0, 70000}) { // also where text is converted in large pieces
            std::string front(before, 'x');
            outcome got = converted(front + row.text, row.from, row.to);
            EXPECT_TRUE(got.out == front + row.out) << row.from << " to " << row.to;
            EXPECT_EQ(got.status, 1);
            if (before == 0) expect_parts(got.err, row.parts);
        }
    }
}

TEST_F(convert, substitute_and_skip) {
    struct {
        const char *from, *to, *way;
        std::string text, out;
        int status;
        const char *summary;
    } cases[] = {
        {"utf8", "latin1", "--substitute", "a€b€", "a?b?", 0,
         "text: 2 characters that latin1 lacks were replaced"},
        {"utf8", "latin1", "--skip", "a€b", "ab", 0,
         "text: 1 character that latin1 lacks was left out"},
        {"utf8", "latin1", "--substitute", "a\xFF€\xE2\x82", "a???", 1,
         "text: 1 character that latin1 lacks and 2 invalid sequences were replaced"},
        {"utf8", "utf8", "--substitute", "a\xFFz", "a\xEF\xBF\xBDz", 1, "1 invalid sequence was"},
        {"utf8", "utf8", "-c", "a\xFFz", "az", 1, "1 invalid sequence was left out"},
        {"ibm933", "ibm933", "--substitute", "\x0E\x88\x61\xFF\xFF\x0F\xC1", "\x0E\x88\x61\x0F\xC1",
         1, "1 invalid"},
        {"utf-16le", "utf8", "-c",
         "a\0\0\xDC"
         "b\0"s,
         "ab", 1, "1 invalid"},
        {"sjis", "utf8", "--substitute", "\x93", "\xEF\xBF\xBD", 1, "1 invalid sequence was"},
        {"sjis", "ibm037", "--substitute", "A\xFF", "\xC1\x6F", 1, "1 invalid sequence was"},
        {"koi8-r", "big5", "--skip",
         "A\xBF"
         "B",
         "AB", 0, "that big5 lacks was"},
        // What is replaced or left out keeps the shift state of what is around it.
        {"utf8", "ibm933", "--skip", "가\xFF가", "\x0E\x88\x61\x88\x61\x0F", 1, "1 invalid"},
        {"utf8", "ibm933", "--skip", "가\xFF", "\x0E\x88\x61\x0F", 1, "1 invalid"},
        {"ibm933", "utf8", "--skip", "\x0E\x88\x61\xFF\xFF\x88\x61\x0F\xC1", "가가A", 1,
         "1 invalid"},
        {"ibm933", "utf8", "--skip", "\x0E\x88\x61\x88\x0F\xC1", "가A", 1, "1 invalid"},
    };
    for (const auto &row : cases) {
        outcome got = converted(row.text, row.from, row.to, {row.way});
        EXPECT_EQ(got.out, row.out) << row.from << " to " << row.to << " " << row.way;
        EXPECT_EQ(got.status, row.status);
        expect_parts(got.err, {row.summary});
        EXPECT_EQ(converted(row.text, row.from, row.to, {row.way, "-q"}).err, "");
    }
    outcome got = converted("€a\xFF€", "utf8", "latin1", {"-c", "--report", "2"});
    expect_parts(got.err, {"byte 0: E2 82 AC", "byte 4: FF"});
    EXPECT_EQ(got.err.find("byte 5"), got.err.npos);
}

TEST_F(convert, problems_are_found_in_long_text) {
    std::string text, skipped, replaced;
    size_t lacking = 0;
    for (size_t i = 0; i < 300000; ++i) {
        // Alone, in a crowd, and not at all.
        bool is_lacking = i % 9973 == 0 || (i > 100000 && i < 101000) || i == 299999;
        text += is_lacking ? "€" : "é";
        if (!is_lacking) skipped += '\xE9';
        replaced += is_lacking ? '?' : '\xE9';
        lacking += is_lacking;
    }
    EXPECT_TRUE(converted(text, "utf8", "latin1", {"-c"}).out == skipped);
    outcome got = converted(text, "utf8", "latin1", {"--substitute"});
    EXPECT_TRUE(got.out == replaced);
    expect_parts(got.err, {"text: " + std::to_string(lacking) + " characters that latin1 lacks"});
}

TEST_F(convert, streams_split_anywhere) {
    // Lengths that divide no block, so that characters lie across the ends of all of them.
    std::string text = repeated("a日本é語\n가", 60000);
    std::string path = put("long", text);
    for (const char *code_set : {"gb18030", "utf8"}) {
        std::string there = std::string("vel convert -t ") + code_set,
                    back = std::string("vel convert -f ") + code_set;
        EXPECT_TRUE(shell(there + " " + path + " | " + back).out == text) << code_set;
        EXPECT_TRUE(
            shell("cat " + path + " | dd bs=997 2>&- | " + there + " | dd bs=61 2>&- | " + back)
                .out == text)
            << code_set;
    }
    std::string mixed = repeated("A가B나다C\n", 30000);
    outcome got = shell("vel convert -t ibm933 " + put("mixed", mixed) +
                        " | dd bs=997 2>&- | vel convert -f ibm933");
    EXPECT_TRUE(got.out == mixed) << got.err;
    EXPECT_EQ(shell("(printf '\\343\\201'; sleep 0.2; printf '\\202') | vel convert -t sjis").out,
              "\x82\xA0");
}

TEST_F(convert, each_file_is_a_text_of_its_own) {
    std::string korean = put("korean", "\x0E\x88\x61"), latin = put("latin", "\xC1");
    outcome got = shell("printf '\\301' | vel convert -f ibm933 " + korean + " - " + latin);
    EXPECT_EQ(got.out, "가AA");
    std::string cut = put("cut", "\xE2\x82"), rest = put("rest", "\xAC");
    got = vel({"convert", "-c", cut, rest});
    EXPECT_EQ(got.out, "");
    expect_parts(got.err, {"/cut: 1 invalid", "/rest: 1 invalid"});
}

TEST_F(convert, output_files) {
    std::string file = put("file", "Grüße"), bad = put("bad", "a€");
    EXPECT_EQ(vel({"convert", "-t", "latin1", "-o", file, file}).status, 0);
    EXPECT_EQ(content_of(file), "Gr\xFC\xDF"
                                "e");
    outcome got = vel({"convert", "-t", "latin1", "-o", file, bad});
    EXPECT_EQ(got.status, 1);
    EXPECT_EQ(content_of(file), "Gr\xFC\xDF"
                                "e");
    EXPECT_EQ(shell("ls " + file + "*").out, file + "\n");
    EXPECT_EQ(vel({"convert", file, "-o", in_folder("none/out")}).status, 1);
    EXPECT_EQ(shell("vel convert -t latin1 -o /dev/full " + bad + repeated(" " + bad, 9)).status,
              1);
    got = shell("vel convert -f latin1 " + put("long", std::string(1 << 20, '\xE4')) +
                " | head -c 2");
    EXPECT_EQ(got.out, "ä");
    EXPECT_EQ(got.err, "");
}

TEST_F(convert, what_is_not_there) {
    std::string text = put("text", "a");
    const telling cases[] = {
        {1, {"-f", "klingon"}, {"unknown code set 'klingon'", "vel codesets"}},
        {1,
         {"-f", "8859-1", "-t", "utf8", "--data", "/none"},
         {"no conversion from 8859-1 to utf8", "/none/vels/cv9/0333e01c.cvo", "--data"}},
        {1, {"-l", "--data", "/none"}, {"looked in /none/vels/cv9"}},
        {2, {"--skip", "--strict"}, {"vel convert --help"}},
    };
    expect_told({"convert", text}, cases);
    outcome list = vel({"convert", "--list"});
    expect_parts(list.out, {"ISO-8859-1\tUTF-8\t0333e01c.cvo\n", "UTF-8\tISO-8859-1\t"});
    // A damaged one is not passed over.
    namespace fs = std::filesystem;
    fs::create_directories(in_folder("vels/cv9"));
    fs::create_directories(in_folder("vels/cm3"));
    fs::copy_file(VELS_TEST_DATA_ROOT "/vels/cm3/registry", in_folder("vels/cm3/registry"));
    put("vels/cv9/0333e01c.cvo", "FILE_TYPE=locale_object\n");
    outcome got = vel({"convert", "-f", "latin1", text, "--data", in_folder("")});
    expect_parts(got.err, {"0333e01c.cvo, the file is damaged"});
}

TEST_F(convert, progress_on_a_terminal) {
    const std::string command = "(echo a; sleep 1; echo b) | vel convert > /dev/null";
    std::string shown = on_terminal(command);
    expect_parts(shown, {"4 B, ", "B/s"});
    EXPECT_TRUE(shown.ends_with("\r\x1b[K")) << shown;
    EXPECT_EQ(on_terminal(command + " --quiet"), "");
}

} // namespace

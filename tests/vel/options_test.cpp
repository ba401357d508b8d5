// The command line itself: usage errors, help, exit statuses, output that cannot be written.
#include "vel/runner.h"

namespace {

using namespace vel_test;

class options : public vel_tool_test {};

TEST_F(options, usage_errors_are_told_in_one_line_and_exit_2) {
    struct {
        std::vector<std::string> arguments;
        const char *message;
    } cases[] = {
        {{}, "no command given: see 'vel --help'"},
        {{"conut"}, "there is no command 'conut'"},
        {{"count", "--nope"}, "--nope: see 'vel count --help'"},
        {{"case", "sideways"}, "see 'vel case --help'"},
        {{"count", "--color=pink"}, "pink"},
        {{"classify", "--hex", "C3A"}, "'C3A' is not hexadecimal"},
    };
    for (const auto &row : cases) {
        outcome got = vel(row.arguments);
        EXPECT_EQ(got.status, 2) << row.message;
        EXPECT_EQ(got.out, "");
        EXPECT_EQ(got.err.rfind("vel: ", 0), 0u) << got.err;
        EXPECT_EQ(got.err.find('\n'), got.err.size() - 1);
        EXPECT_NE(got.err.find(row.message), std::string::npos) << got.err;
    }
}

TEST_F(options, every_command_has_help) {
    for (const char *name :
         {"date", "parse-date", "number", "parse-number", "money", "count", "case", "classify",
          "locale", "info", "locales", "codesets", "doctor", "convert", "symbols", "charmap"}) {
        outcome got = vel({name, "--help"});
        EXPECT_EQ(got.status, 0);
        EXPECT_NE(got.out.find(std::string("Usage: vel ") + name), std::string::npos) << got.out;
    }
    EXPECT_NE(vel({"--version"}).out.find("locale objects 11"), std::string::npos);
}

TEST_F(options, what_cannot_be_written_is_a_failure) {
    outcome full = shell("vel --help > /dev/full");
    EXPECT_EQ(full.status, 1);
    EXPECT_NE(full.err.find("cannot write standard output: No space"), std::string::npos);
    // A closed pipe ends the tool without a word and without a signal.
    outcome closed = shell("(sleep 1; vel --help; echo $? >&2) | true");
    EXPECT_EQ(closed.err, "1\n");
    outcome lost = shell("vel case upper -l C -o /dev/full < /bin/sh");
    EXPECT_EQ(lost.status, 1);
}

TEST_F(options, messages_say_what_was_tried) {
    const telling cases[] = {
        {1,
         {"locale", "--data", "/nowhere", "de_DE"},
         {"there is no data directory", "/nowhere/vels/lc11/de_de/e01c.lco", "--data"}},
        {1,
         {"locale", "qq_QQ"},
         {"'qq_QQ'", "not installed", "/lc11/qq_qq/e01c.lco", "vel locales"}},
        {1, {"locale", "de_DE.klingon"}, {"unknown code set 'klingon'", "vel codesets"}},
        {1, {"count", "-l", "C", "/nowhere/file"}, {"cannot open /nowhere/file: No such file"}},
        {1,
         {"case", "upper", "-l", "C", "-o", "/nowhere/out"},
         {"cannot write beside /nowhere/out"}},
        {1, {"codesets", "--data", "/nowhere"}, {"registry", "/nowhere/vels/cm3/registry"}},
        {1, {"locales", "--data", "/nowhere"}, {"looked in /nowhere/vels/lc11"}},
    };
    expect_told({}, cases);
}

TEST_F(options, data_comes_before_the_search_path) {
    outcome got = vel({"locale", "--data", VELS_TEST_DATA_ROOT, "C"}, {"VEL_PATH=/nowhere"});
    EXPECT_EQ(got.status, 0) << got.err;
    EXPECT_EQ(vel({"locale", "C"}, {"VEL_PATH=/nowhere"}).status, 1);
}

TEST_F(options, colours_and_frames_on_a_terminal_only) {
    const auto expect = [](const std::string &shown, bool colours, bool frames) {
        EXPECT_EQ(shown.find("\x1b[") != shown.npos, colours) << shown;
        EXPECT_EQ(shown.find("│") != shown.npos, frames) << shown;
    };
    const std::string command = " classify -l C a";
    expect(shell("vel" + command).out, false, false);
    expect(on_terminal("vel --color=auto" + command, {"TERM=xterm"}), true, true);
    expect(on_terminal("vel --color=auto" + command, {"NO_COLOR=1"}), false, true);
    expect(on_terminal("vel --color=never" + command, {"TERM=xterm"}), false, true);
    expect(on_terminal("vel --color=always" + command, {"NO_COLOR=1"}), true, true);
}

} // namespace

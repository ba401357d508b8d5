// The command line itself: usage errors, help, exit statuses, output that cannot be written.
#include <pty.h>

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
    struct {
        std::vector<std::string> arguments;
        std::vector<std::string> parts;
    } cases[] = {
        {{"locale", "--data", "/nowhere", "de_DE"},
         {"there is no data directory", "/nowhere/vels/lc11/de_de/e01c.lco", "--data"}},
        {{"locale", "qq_QQ"}, {"'qq_QQ'", "not installed", "/lc11/qq_qq/e01c.lco", "vel locales"}},
        {{"locale", "de_DE.klingon"}, {"unknown code set 'klingon'", "vel codesets"}},
        {{"count", "-l", "C", "/nowhere/file"}, {"cannot open /nowhere/file: No such file"}},
        {{"case", "upper", "-l", "C", "-o", "/nowhere/out"}, {"cannot write beside /nowhere/out"}},
        {{"codesets", "--data", "/nowhere"}, {"registry", "/nowhere/vels/cm3/registry"}},
        {{"locales", "--data", "/nowhere"}, {"looked in /nowhere/vels/lc11"}},
    };
    for (const auto &row : cases) {
        outcome got = vel(row.arguments);
        EXPECT_EQ(got.status, 1);
        expect_parts(got.err, row.parts);
    }
}

TEST_F(options, data_comes_before_the_search_path) {
    outcome got = vel({"locale", "--data", VELS_TEST_DATA_ROOT, "C"}, {"VEL_PATH=/nowhere"});
    EXPECT_EQ(got.status, 0) << got.err;
    EXPECT_EQ(vel({"locale", "C"}, {"VEL_PATH=/nowhere"}).status, 1);
}

// Colours and frames, on a terminal only.
class terminal : public options {
protected:
    std::string on_terminal(const std::string &variable, const std::string &choice) {
        int primary = -1;
        pid_t child = forkpty(&primary, nullptr, nullptr, nullptr);
        if (child == 0) {
            execl("/usr/bin/env", "env", "-i", "LC_ALL=C.UTF-8", variable.c_str(), VELS_VEL_PATH,
                  "--data", VELS_TEST_DATA_ROOT, choice.c_str(), "classify", "-l", "C", "a",
                  nullptr);
            _exit(127);
        }
        std::string text;
        char block[4096];
        for (ssize_t got; (got = read(primary, block, sizeof block)) > 0;) {
            text.append(block, static_cast<size_t>(got));
        }
        close(primary);
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0) << text;
        return text;
    }
};

TEST_F(terminal, colours_and_frames) {
    const std::string colour = "\x1b[", frame = "│";
    std::string plain = vel({"classify", "-l", "C", "a"}).out;
    EXPECT_EQ(plain.find(colour), std::string::npos);
    EXPECT_EQ(plain.find(frame), std::string::npos);
    std::string shown = on_terminal("TERM=xterm", "--color=auto");
    EXPECT_NE(shown.find(colour), std::string::npos);
    EXPECT_NE(shown.find(frame), std::string::npos);
    EXPECT_EQ(on_terminal("NO_COLOR=1", "--color=auto").find(colour), std::string::npos);
    EXPECT_EQ(on_terminal("TERM=xterm", "--color=never").find(colour), std::string::npos);
    EXPECT_NE(on_terminal("NO_COLOR=1", "--color=always").find(colour), std::string::npos);
}

} // namespace

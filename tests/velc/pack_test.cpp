// Whole trees, and what the command leaves behind when it fails.
#include <cstdio>
#include <iterator>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/scratch.h"
#include "velc/output_file.h"
#include "velc/pack.h"
#include "velc/runner.h"
#include "velc/tool_error.h"

namespace {

using namespace velc;
using vel_test::outcome;
using vel_test::run_velc;
using vel_test::scratch_directory;

constexpr const char *small_locales = "default C UTF-8\n"
                                      "C UTF-8\n"
                                      "de_DE ISO-8859-1 ISO-8859-15 IBM273\n"
                                      "de_DE@euro ISO-8859-15\n"
                                      "ja_JP EUC-JP\n"
                                      "sr_RS@latin ISO-8859-2\n"
                                      "ast_ES ISO-8859-15\n";

// The standard recipe with fewer locales.
std::string small_recipe(const scratch_directory &at, const char *locales = small_locales) {
    at.put("recipe/codesets", standard_recipe.codesets);
    at.put("recipe/aliases", standard_recipe.aliases);
    at.put("recipe/locales", locales);
    return (at / "recipe").string();
}

TEST(pack, is_the_same_whatever_the_number_of_jobs) {
    const scratch_directory at;
    const std::string recipe = small_recipe(at);
    const std::string first = (at / "one").string(), second = (at / "deeper/two").string();
    const outcome made = run_velc({"pack", "-j1", "--recipe", recipe, "-o", first});
    EXPECT_EQ(made.code, 0) << made.err;
    EXPECT_NE(made.out.find("10 locale objects and 7 charmap objects"), made.out.npos) << made.out;
    EXPECT_EQ(made.err, "") << "no progress bar where nobody looks";
    EXPECT_EQ(run_velc({"pack", "-q", "-j7", "--recipe", recipe, "-o", second}).out, "");

    const auto files = at.files("one");
    EXPECT_TRUE(files == at.files("deeper/two"));
    for (const char *expected :
         {"vels/cm3/registry", "vels/cm3/0333.cmo", "vels/cm3/13ba.cmo", "vels/cm3/e007.cmo",
          "vels/lc11/default.lco", "vels/lc11/c.utf-8", "vels/lc11/de_de/0333.lco",
          "vels/lc11/de_de/039b.lco", "vels/lc11/de_de/039beuro.lco", "vels/lc11/de_de/0111.lco",
          "vels/lc11/ja_jp/13ba.lco", "vels/lc11/ja_jp/e007.lco", "vels/lc11/sr_rs/0390latn.lco",
          "vels/lc11/ast_es.iso-8859-15"})
        EXPECT_EQ(files.count(expected), 1u) << expected;
    EXPECT_EQ(files.size(), 18u) << "and nothing else";

    const outcome checked = run_velc({"check", first});
    EXPECT_EQ(checked.code, 0) << checked.err;
    EXPECT_EQ(checked.out, "18 checked, 0 bad\n");
}

TEST(pack, goes_on_after_a_bad_locale_and_says_so) {
    const scratch_directory at;
    const std::string recipe = small_recipe(at, "default C UTF-8\nxx_XX UTF-8\nde_DE ISO-8859-1\n");
    const outcome made = run_velc({"pack", "-q", "--recipe", recipe, "-o", (at / "t").string()});
    EXPECT_EQ(made.code, 1);
    EXPECT_NE(made.err.find("xx_XX"), made.err.npos) << made.err;
    EXPECT_TRUE(std::filesystem::exists(at / "t/vels/lc11/de_de/0333.lco"));
    EXPECT_FALSE(std::filesystem::exists(at / "t/vels/lc11/xx_xx"));
}

TEST(pack, refuses_recipes_that_contradict_themselves) {
    const scratch_directory at;
    const source_library sources;
    const auto plan = [&](const char *locales) {
        const recipe what = read_recipe(small_recipe(at, locales));
        return plan_pack(what, codeset_table(what), sources, false);
    };
    // saaho and saah would both be saah.
    for (const char *bad :
         {"aa_ER@saaho UTF-8\naa_ER@saah UTF-8\n", "de_DE\n", "default C\n", "de_DE NO-SUCH\n",
          "../x UTF-8\n", "he_IL@hebr he_IL+hebrew-he UTF-8\n", "he_IL@hebr he_IL+\n"})
        EXPECT_THROW((void)plan(bad), tool_error) << bad;
    EXPECT_EQ(plan("de_DE UTF-8\nde_DE UTF-8\n").size(), 3u) << "the same twice is no harm";
}

TEST(output, is_whole_or_not_there) {
    const scratch_directory at;
    write_output(at / "a/b/file", "one");
    write_output(at / "a/b/file", "two");
    EXPECT_EQ(at.files(), (std::map<std::string, std::string>{{"a/b/file", "two"}}));
    std::filesystem::create_directory(at / "a/b/directory");
    EXPECT_THROW(write_output(at / "a/b/directory", "x"), tool_error);
    EXPECT_THROW(write_output(at / "a/b/file/below", "x"), tool_error);
    EXPECT_EQ(at.files().size(), 1u) << "nothing is left beside";
}

TEST(output, goes_into_a_pipe_and_does_not_replace_it) {
    const scratch_directory at;
    const std::string path = (at / "pipe").string();
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    std::FILE *reader = fdopen(open(path.c_str(), O_RDWR), "r");
    write_output(path, "text");
    char text[5] = "";
    EXPECT_EQ(std::fread(text, 1, 4, reader), 4u);
    EXPECT_STREQ(text, "text");
    std::fclose(reader);
    EXPECT_TRUE(std::filesystem::is_fifo(path));
}

// A wrong command, the exit code, and what the complaint has to name.
TEST(command_line, says_what_is_wrong) {
    const scratch_directory at;
    const std::string out = (at / "x.lco").string(), recipe = small_recipe(at);
    at.put("src/charmaps/UTF-8", "CHARMAP\n");
    at.put("src/locales/bad", "LC_TIME\nnonsense\nEND LC_TIME\n");
    const std::string sources = (at / "src").string();
    const struct {
        std::vector<std::string> words;
        int code;
        const char *complaint;
    } cases[] = {
        {{}, 2, "subcommand"},
        {{"fly"}, 2, "fly"},
        {{"locale", "de_DE"}, 2, "--charmap"},
        {{"pack", "--jobs", "many"}, 2, "jobs"},
        {{"locale", "xx_XX", "-c", "UTF-8", "-o", out}, 1, "xx_XX"},
        {{"locale", "de_DE", "-c", "UTF-9", "-o", out}, 1, "UTF-9"},
        {{"locale", "de_DE", "-c", "UTF-8", "-o", out, "--source", "/nowhere"},
         1,
         "/nowhere/charmaps and /nowhere/locales"},
        {{"locale", "he_IL", "-c", "UTF-8", "--overlay", "no-such", "-o", out}, 1, "hebrew-he"},
        {{"locale", "he_IL", "-c", "UTF-8", "--overlay", "/no/such", "-o", out}, 1, "/no/such:"},
        {{"locale", "he_IL", "-c", "UTF-8", "--overlay", "./a\nb", "-o", out}, 1, "letters"},
        {{"locale", "bad", "-c", "UTF-8", "-o", out, "--source", sources}, 1, ":"},
        {{"charmap", "/tmp/UTF-8", "-o", out}, 1, "charmaps"},
        {{"registry", "-o", out, "--recipe", "/nowhere"}, 1, "/nowhere/codesets"},
        {{"dump", (at / "none").string()}, 1, "none"},
        {{"check", (at / "none").string()}, 1, "none"},
        {{"check", recipe}, 1, "no objects"},
    };
    for (const auto &one : cases) {
        const outcome made = run_velc(one.words);
        const std::string words = testing::PrintToString(one.words);
        EXPECT_EQ(made.code, one.code) << words << made.err;
        EXPECT_EQ(made.err.substr(0, 6), "velc: ") << words << made.err;
        EXPECT_NE(made.err.find(one.complaint), made.err.npos) << words << made.err;
        EXPECT_FALSE(std::filesystem::exists(out)) << words;
    }
    for (const char *command : {"", "charmap", "locale", "registry", "pack", "dump", "check"}) {
        std::vector<std::string> words = {"--help"};
        if (*command) words.insert(words.begin(), command);
        const outcome help = run_velc(words);
        EXPECT_EQ(help.code, 0) << command;
        EXPECT_NE(help.out.find("Exit codes"), help.out.npos) << command;
    }
}

TEST(command_line, fails_on_characters_that_cannot_be_written_only_when_told) {
    const scratch_directory at;
    const std::string out = (at / "x.lco").string();
    const std::vector<std::string> lenient = {"locale", "ja_JP", "-c", "ISO-8859-1", "-o", out};
    std::vector<std::string> strict = lenient;
    strict.push_back("--strict");
    EXPECT_EQ(run_velc(strict).code, 1);
    EXPECT_FALSE(std::filesystem::exists(out));
    const outcome made = run_velc(lenient);
    EXPECT_EQ(made.code, 0);
    EXPECT_NE(made.err.find("U+65E5"), made.err.npos) << made.err;
}

} // namespace

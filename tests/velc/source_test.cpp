// Locale sources: the lexer's awkward cases, the categories, copies, collation statements.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include "support/scratch.h"
#include "velc/runner.h"
#include "velc/source/locale_source.h"
#include "velc/source/source_library.h"
#include "velc/source/survey.h"

namespace velc {
namespace {

source_library &library() {
    static source_library one;
    return one;
}

std::string error_of(std::string_view text) {
    symbol_table symbols;
    try {
        parse_locale_source("bad", "bad", text, symbols);
    } catch (const source_error &error) {
        return error.what();
    }
    return "no error";
}

TEST(Source, SurveyReadsAllButTheNamelessCharmaps) {
    std::set<std::string> unreadable;
    std::map<survey_row::what, int> count;
    for (const survey_row &row : survey(default_source_root)) {
        ++count[row.kind];
        if (row.readable) continue;
        unreadable.insert(row.name);
        EXPECT_EQ(row.kind, survey_row::what::charmap) << row.error;
        EXPECT_NE(row.error.find(".gz:"), std::string::npos) << row.error;
    }
    EXPECT_EQ(count[survey_row::what::charmap], 233);
    EXPECT_EQ(count[survey_row::what::locale], 361);
    EXPECT_EQ(unreadable, (std::set<std::string>{"ISO_10646", "ISO_8859-1,GL"}));
}

TEST(Source, ErrorsSayWhereWhatAndWhatInstead) {
    struct {
        std::string_view text, message;
    } const cases[] = {
        {"LC_TIME\nabday \"a\";\"b\"\nEND LC_TIME\n", "bad:2: found 2 names, expected 7"},
        {"LC_TIME\nd_fmt \"%d\nEND LC_TIME\n",
         "bad:2: found the end of the line inside a string, expected '\"'"},
        {"LC_TIME\nera \"+:2:1990/x/01:+*:n:f\"\nEND LC_TIME\n",
         "bad:2: found \"+:2:1990/x/01:+*:n:f\", expected a number in the era"},
        {"comment_char %\nescape_char /\nLC_MONETARY\nmon_grouping 3;/\n\n% remark\nx\n",
         "bad:7: found 'x', expected a number"},
        {"LC_NUMERIC\ncolour \"red\"\nEND LC_NUMERIC\n",
         "bad:2: found 'colour', expected a keyword of LC_NUMERIC"},
        {"LC_NUMERIC\ncopy \"a\"\ngrouping 3\nEND LC_NUMERIC\n",
         "bad:3: found 'grouping', expected nothing else in a section that copies another"},
        {"LC_NUMERIC\ndecimal_point \"<U12345678>\"\nEND LC_NUMERIC\n",
         "bad:2: found \"<U12345678>\", expected a code point up to <U0010FFFF>, no surrogate"},
        {"LC_NUMERIC\ndecimal_point \"<nosuch>\"\nEND LC_NUMERIC\n",
         "bad:2: found \"<nosuch>\", expected <Uxxxx> or the name of a portable character instead "
         "of <nosuch>"},
        {"LC_NUMERIC\ndecimal_point \"\\x2e\"\nEND LC_NUMERIC\n",
         "bad:2: found \"\\x2e\", expected <Uxxxx> instead of a byte of some code set"},
        {"LC_NUMERIC\ndecimal_point \"\xC3\x28\"\nEND LC_NUMERIC\n",
         "bad:2: found \"\xC3\x28\", expected well-formed UTF-8"},
        {"LC_NUMERIC\ngrouping 3\n", "bad:2: found the end of the file, expected END LC_NUMERIC"},
        {"LC_CTYPE\nupper <U0042>..<U0041>\nEND LC_CTYPE\n",
         "bad:2: found <U0041>, expected a character not below <U0042>"},
        {"LC_CTYPE\noutdigit <U0030>..<U0038>\nEND LC_CTYPE\n",
         "bad:2: found 9 digits after outdigit, expected 10"},
        {"LC_COLLATE\ncollating-symbol <S1>..<T3>\nEND LC_COLLATE\n",
         "bad:2: found <T3>, expected a symbol spelled as <S1> but for hexadecimal digits"},
        {"LC_COLLATE\n<open\nEND LC_COLLATE\n",
         "bad:2: found '<open' up to the end of the line, expected '>'"},
        {"", "bad: found no category, expected at least one"},
    };
    for (const auto &c : cases) EXPECT_EQ(error_of(c.text), c.message);
}

TEST(Source, CopiesThatCannotBeFollowed) {
    const vel_test::scratch_directory at;
    at.put("locales/ring1", "LC_COLLATE\ncopy \"ring2\"\nEND LC_COLLATE\n");
    at.put("locales/ring2", "\nLC_COLLATE\ncopy \"ring1\"\nEND LC_COLLATE\n");
    at.put("locales/orphan", "LC_TIME\ncopy \"nowhere\"\nEND LC_TIME\n");
    at.put("locales/hollow", "LC_TIME\ncopy \"ring1\"\nEND LC_TIME\n");
    at.put("locales/open", "LC_COLLATE\nifdef A\n<U0041>\nEND LC_COLLATE\n");
    struct {
        const char *name, *place, *text;
    } const cases[] = {
        {"ring1", "ring2:3: ", "a copy of \"ring1\" inside itself"},
        {"orphan", "orphan:2: ", "the name \"nowhere\", expected a source"},
        {"hollow", "hollow:2: ", "expected a source that has this category"},
        {"open", "open:3: ", "expected an endif"},
        {"../open", "../open: ", "expected the name of a source"},
    };
    source_library sources(at.path());
    for (const auto &c : cases)
        vel_test::expect_complaint({c.place, c.text}, [&] { sources.locale(c.name); });
}

TEST(Source, TextsWithAwkwardEnds) {
    // A comment in uk_UA ends with the escape, strings of bo_CN and sm_WS go on in the next line
    // with what elsewhere begins a comment, the name of a section of ug_CN has a remark.
    EXPECT_EQ(library().locale("uk_UA")->time->abday[6], U"сб");
    EXPECT_TRUE(library().locale("bo_CN")->time->d_t_fmt.ends_with(
        U"%H\u0F40\u0F66\u0F62\u0F0B\u0F58%M\u0F40\u0F66\u0F62\u0F0B\u0F46%S"));
    EXPECT_NO_THROW(library().locale("sm_WS"));
    EXPECT_EQ(library().locale("ug_CN")->copied.front(), "i18n");
}

TEST(Source, CollationsFollowCopies) {
    // Of two copies the second replaces the first.
    const auto om_ET = library().locale("om_ET")->collate;
    const auto om_KE = library().locale("om_KE")->collate;
    ASSERT_EQ(om_ET->parts.size(), om_KE->parts.size());
    for (std::size_t i = 0; i < om_ET->parts.size(); ++i)
        EXPECT_EQ(om_ET->parts[i].source, om_KE->parts[i].source);

    EXPECT_NE(library().symbols().find("SAC01"), no_symbol); // out of a range
    EXPECT_EQ(library().symbols().find("U1F600"), 0x1F600u);
    EXPECT_EQ(library().symbols().name(0x1F600), "U0001F600");
}

} // namespace
} // namespace velc

// Overlays: what they replace, what they leave, what is refused, and what the library makes of
// them.
#include <gtest/gtest.h>

#include "record/record.h"
#include "support/scratch.h"
#include "velc/recipe.h"
#include "velc/runner.h"
#include "velc/source/source_library.h"
#include "velc/source/time_overlay.h"
#include "velc/tool_error.h"
#include "vels/locale.h"

namespace {

using namespace velc;
using vel_test::content_of;
using vel_test::expect_complaint;
using vel_test::run_velc;
using vel_test::scratch_directory;

const time_format &time_of(const char *locale) {
    static source_library library;
    return *library.locale(locale)->time;
}

constexpr const char *twelve =
    "\"a\";\"b\";\"c\";\"d\";\"e\";\"f\";\"g\";\"h\";\"i\";\"j\";\"k\";\"l\"";

std::string in_section(const std::string &statements) {
    return "LC_TIME\n" + statements + "END LC_TIME\n";
}

TEST(overlays, replace_what_they_name_and_drop_what_belongs_to_the_other_calendar) {
    const time_format &japanese = time_of("ja_JP"), &greek = time_of("el_GR");
    ASSERT_FALSE(japanese.era.empty() || japanese.era_d_fmt.empty() || greek.alt_mon.empty());

    const std::string fourteen = std::string("mon ") + twelve + ";\"m\";\"ν\"\n";
    const std::string hebrew = in_section(fourteen + "calendar \"hebrew\"\nd_fmt \"%-d %B\"\n");
    const time_format made = overlay_time(japanese, "one", hebrew).time;
    EXPECT_EQ(made.calendar, calendar_system::hebrew);
    EXPECT_EQ(made.mon.at(13), U"ν");
    EXPECT_EQ(made.abmon, made.mon) << "there are no short names";
    EXPECT_EQ(made.d_fmt, U"%-d %B");
    EXPECT_EQ(made.day, japanese.day);
    EXPECT_EQ(made.t_fmt, japanese.t_fmt);
    EXPECT_EQ(made.alt_digits, japanese.alt_digits);
    EXPECT_TRUE(made.era.empty() && made.era_d_fmt.empty() && made.era_d_t_fmt.empty());
    EXPECT_TRUE(overlay_time(greek, "one", hebrew).time.alt_mon.empty());

    const time_format same =
        overlay_time(japanese, "one", in_section("calendar \"gregorian\"\nt_fmt \"%T\"\n")).time;
    EXPECT_EQ(same.era.size(), japanese.era.size());
    EXPECT_EQ(same.mon, japanese.mon);
    EXPECT_TRUE(overlay_time(japanese, "one", in_section("era \"\"\n")).time.era.empty());
}

TEST(overlays, are_refused_with_the_line) {
    const std::string mon = std::string("mon ") + twelve;
    const std::pair<std::string, const char *> cases[] = {
        {in_section("calendar \"hebrew\"\n" + mon + "\n"),
         "bad:3: found 12 names, expected 14 in the hebrew calendar"},
        {in_section(mon + ";\"m\"\ncalendar \"islamic\"\n"),
         "bad:2: found 13 names, expected 12 in the islamic calendar"},
        {in_section("calendar \"islamic\"\n" + mon + "\nabmon \"a\"\n"),
         "bad:4: found 1 names, expected 12 in the islamic calendar"},
        {in_section("calendar \"julian\"\n"),
         "bad:2: found \"julian\", expected gregorian, hebrew, islamic or arabic"},
        {in_section("t_fmt \"%T\"\ncalendar \"islamic\"\n"),
         "bad:3: found another calendar, expected its names in mon"},
        {in_section("\nmonth \"a\"\n"), "bad:3: found 'month', expected a keyword of LC_TIME"},
        {in_section("copy \"de_DE\"\n"), "bad:2: found copy, expected keywords of LC_TIME"},
        {in_section("") + in_section(""),
         "bad:3: found 'LC_TIME', expected one LC_TIME and nothing "
         "else"},
        {"LC_NUMERIC\n", "bad:1: found 'LC_NUMERIC', expected one LC_TIME and nothing else"},
        {"# nothing\n", "bad: found nothing, expected LC_TIME"},
    };
    for (const auto &[text, message] : cases)
        expect_complaint({message}, [&] { overlay_time(time_of("de_DE"), "bad", text); });
}

// A pack of the standard overlays under the names that people give to the library.
class overlaid_pack : public testing::Test {
protected:
    void SetUp() override {
        at_.put("recipe/codesets", standard_recipe.codesets);
        at_.put("recipe/aliases", standard_recipe.aliases);
        at_.put("recipe/locales", "he_IL@hebrew he_IL+hebrew-he UTF-8 ISO-8859-8\n"
                                  "ar_SA@isla ar_SA+islamic-ar UTF-8\n"
                                  "en_US@hebr en_US+hebrew-en UTF-8\n");
        for (const auto &[name, text] : standard_recipe.overlays)
            at_.put("recipe/overlays/" + std::string(name), text);
        const std::string recipe = at_ / "recipe", root = at_ / "pack";
        ASSERT_EQ(run_velc({"pack", "-q", "--recipe", recipe, "-o", root}).code, 0);
        ASSERT_EQ(run_velc({"check", "-q", root}).code, 0);
        setenv("CORVANEDIR", root.c_str(), 1);
    }
    void TearDown() override { unsetenv("CORVANEDIR"); }

    scratch_directory at_;
};

TEST_F(overlaid_pack, is_what_the_library_loads) {
    const struct {
        const char *name;
        std::int32_t calendar;
        int months, index;
        const char *month, *d_fmt;
    } cases[] = {
        {"he_il.57372@hebr", vel::calendar_hebrew, 14, 12, "אדר א'", "%.1d ב%B %Y"},
        {"he_il.916@hebr", vel::calendar_hebrew, 14, 5, "\xE0\xE3\xF8", "%.1d \xE1%B %Y"},
        {"en_us.utf8@hebr", vel::calendar_hebrew, 14, 11, "Elul", "%.1d %B %Y"},
        {"ar_sa.57372@isla", vel::calendar_islamic, 12, 8, "رمضان", "%.1d %B %Y هـ"},
    };
    for (const auto &one : cases) {
        SCOPED_TRACE(one.name);
        vel_locale *locale = nullptr;
        ASSERT_EQ(vel_lc_load(&locale, one.name, -1, nullptr), 0);
        const vel::time_category &time = locale->time;
        EXPECT_EQ(time.calendar, one.calendar);
        EXPECT_EQ(time.months.count, one.months);
        EXPECT_EQ(time.abbreviated_months.count, one.months);
        EXPECT_STREQ(time.months.items[one.index].bytes, one.month);
        EXPECT_STREQ(time.d_fmt.bytes, one.d_fmt);
        vel_lc_unload(locale);
    }
}

TEST_F(overlaid_pack, has_what_the_locale_command_makes) {
    const std::string path = at_ / "recipe/overlays/hebrew-he", out = at_ / "one.lco";
    const std::string packed = content_of(at_ / "pack/vels/lc11/he_il/e01chebr.lco");
    EXPECT_NE(packed.find("\nOVERLAY=hebrew-he\n"), packed.npos);
    for (const std::string &overlay : {std::string("hebrew-he"), path}) {
        const std::vector<std::string> words = {"locale",    "he_IL", "-c", "UTF-8",
                                                "--overlay", overlay, "-o", out};
        EXPECT_EQ(run_velc(words).code, 0);
        EXPECT_TRUE(content_of(out) == packed) << overlay;
    }
}

} // namespace

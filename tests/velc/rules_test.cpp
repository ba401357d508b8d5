// The pure rules of velc: names, numbers, formats, groupings, classes.
#include <gtest/gtest.h>

#include "common/locale_name.h"
#include "velc/codesets.h"
#include "velc/ctype_section.h"
#include "velc/number_sections.h"
#include "velc/text_encoder.h"
#include "velc/time_formats.h"
#include "velc/tool_error.h"

namespace {

using namespace velc;

// Those that are kept are already what the library wants, or no locale name at all.
TEST(locale_names, become_specifications) {
    constexpr std::pair<const char *, const char *> cases[] = {
        {"de_DE.UTF-8@euro", "de_de.utf-8@euro"},
        {"de_DE", "de_de.utf8"},
        {"de_DE@euro", "de_de.utf8@euro"},
        {"ja_JP.SJIS", "ja_jp.sjis"},
        {"en_US.iso88591", "en_us.iso88591"},
        {"ca_ES@valencia", "ca_es.utf8@vale"},
        {"sr_RS@latin", "sr_rs.utf8@latn"},
        {"he_IL.UTF-8@hebr", "he_il.utf-8@hebr"},
        {"ar_SA@islamic", "ar_sa.utf8@isla"},
        {"C", "default.lco"},
        {"POSIX", "default.lco"},
        {"C.UTF-8", "c.utf-8"},
        {"c.utf8", "c.utf-8"},
        {"ast_ES.utf8", "ast_es.utf-8"},
        {"ast_ES.ISO8859-15", "ast_es.iso-8859-15"},
        {"hsb_DE.iso_8859-2", "hsb_de.iso-8859-2"},
        {"gez_ER@abegede", "gez_er.utf-8@abegede"},
        {"eo", "eo.utf-8"},
        {"syr.57372", "syr.utf-8"},
    };
    for (const auto &[typed, expected] : cases) {
        EXPECT_EQ(tools::locale_specification(typed), expected) << typed;
        EXPECT_EQ(tools::locale_specification(expected), expected) << typed;
    }
    for (const char *kept : {"de_de.819@euro", "default.lco", "native", "de_de\\0333.lco",
                             "../secret", "de_DE.", "de_DE.#x", "VEL_CTYPE = de_de.819 ; ", ""})
        EXPECT_EQ(tools::locale_specification(kept), kept);
}

TEST(time_formats, are_rewritten) {
    constexpr std::pair<const char32_t *, const char32_t *> cases[] = {
        {U"%a %d %b %Y %T", U"%a %d %b %Y %T"},
        {U"%-d.%-m.%Y", U"%.1d.%.1m.%Y"},
        {U"%-e/%k:%M", U"%.1d/%2.1H:%M"},
        {U"%l:%M %P", U"%2.1I:%M %p"},
        {U"%F", U"%Y-%m-%d"},
        {U"%EC%Ey %Od %OC", U"%EC%Ey %Od %OC"},
        {U"100%% %u", U"100%% %.1u"},
        {U"%OB %Y", U"%B %Y"},
        // A time zone takes one blank along.
        {U"%T %Z", U"%T"},
        {U"%Z %T", U"%T"},
        {U"%a %Z %Y", U"%a %Y"},
        {U"%H\u202F%z", U"%H"},
    };
    for (const auto &[written, expected] : cases)
        EXPECT_TRUE(library_time_format("d_fmt", written) == expected)
            << to_utf8(written) << " became " << to_utf8(library_time_format("d_fmt", written));
    for (const char32_t *bad : {U"%Q", U"%", U"%s", U"%G", U"%Ed", U"%-Q", U"a%E"})
        EXPECT_THROW((void)library_time_format("d_fmt", bad), tool_error) << to_utf8(bad);
}

TEST(groupings, end_as_the_library_understands_them) {
    const std::pair<grouping_list, std::vector<int>> cases[] = {
        {{}, {}},           {{-1}, {}},
        {{0, 0}, {}},       {{3}, {3}},
        {{3, 3}, {3}},      {{3, 0}, {3}},
        {{3, 2}, {3, 2}},   {{3, 2, 2}, {3, 2}},
        {{3, -1}, {3, -1}}, {{2, 2, 2, 3}, {2, 2, 2, 3}},
    };
    for (const auto &[written, expected] : cases) EXPECT_EQ(object_grouping(written), expected);
}

TEST(own_classes, get_five_numbers) {
    const auto classes = [](std::initializer_list<std::pair<const char *, char32_t>> list) {
        ctype from;
        for (const auto &[name, size] : list)
            from.classes.push_back({name, {{0x100, 0xFF + size}}});
        return number_classes(from);
    };
    const own_classes few = classes({{"alpha", 9}, {"combining", 9}, {"hanzi", 9}});
    EXPECT_EQ(few.kept, (std::vector<std::string>{"full_width", "hanzi", "combining"}));
    EXPECT_TRUE(few.dropped.empty());
    const own_classes many =
        classes({{"a", 5}, {"b", 1}, {"c", 5}, {"combining", 90}, {"d", 5}, {"e", 5}});
    EXPECT_EQ(many.kept, (std::vector<std::string>{"full_width", "a", "c", "d", "e"}));
    EXPECT_EQ(many.dropped, (std::vector<std::string>{"b", "combining"}));
}

TEST(text_encoder, writes_plain_forms_of_what_is_missing) {
    charmap::parts parts;
    parts.name = "SMALL";
    for (char32_t c = 0x20; c < 0x7F; ++c) {
        parts.entries.push_back({c, {static_cast<std::uint32_t>(c), 1}, true});
        parts.lines.push_back(1);
    }
    const charmap small(parts);
    text_encoder encoder(small, nullptr);
    EXPECT_EQ(encoder.encode("mon", U"l\u2019an\u202F\u200E2\u4E00"), "l'an 2?");
    ASSERT_EQ(encoder.substitutions().size(), 4u);
    EXPECT_FALSE(encoder.substitutions()[2].lossy);
    EXPECT_TRUE(encoder.substitutions()[3].lossy);
    EXPECT_EQ(encoder.encode("mon", U"\u2019"), "'");
    EXPECT_EQ(encoder.substitutions().size(), 4u) << "each is told once";
}

recipe recipe_of(const char *codesets, const char *aliases) {
    return {parse_recipe_file("codesets", codesets), parse_recipe_file("aliases", aliases),
            parse_recipe_file("locales", "")};
}

TEST(codesets, name_objects_so_that_the_name_leads_back) {
    const codeset_table table(recipe_of("UTF-8 57372\nEUC-JP 5050 57351\nKOI-8 57700\n"
                                        "A_NAME_OF_TWENTY_ONE 57701\n",
                                        "short A_NAME_OF_TWENTY_ONE\n"));
    EXPECT_EQ(table.header_name(table.at("UTF-8"), 57372), "UTF-8");
    EXPECT_EQ(table.header_name(table.at("EUC-JP"), 5050), "EUC-JP");
    EXPECT_EQ(table.header_name(table.at("EUC-JP"), 57351), "ujis");
    EXPECT_EQ(table.header_name(table.at("A_NAME_OF_TWENTY_ONE"), 57701), "short");
    EXPECT_EQ(table.header_name(table.at("KOI-8"), 57700), "57700") << "its name is taken";
    EXPECT_THROW((void)table.at("MISSING"), tool_error);
    const codeset_table standard(read_recipe({}));
    for (const codeset &one : standard.all())
        for (std::uint16_t number : one.numbers) {
            const std::string name = standard.header_name(one, number);
            EXPECT_EQ(standard.names().find(name), number) << one.charmap;
            EXPECT_LE(name.size(), longest_header_name) << one.charmap;
        }
}

TEST(codesets, refuse_what_would_be_ambiguous) {
    constexpr const char *bad[][2] = {
        {"A 1\nB 1\n", ""},    {"A 1\nA 2\n", ""},     {"A\n", ""},
        {"A 65536\n", ""},     {"A 57344\n", ""},      {"A x\n", ""},
        {"A 1\n", "name B\n"}, {"A 1\n", "na@me A\n"}, {"A 1\n", "#x A\nname\n"},
    };
    for (const auto &[codesets, aliases] : bad)
        EXPECT_THROW((void)codeset_table(recipe_of(codesets, aliases)), tool_error)
            << codesets << aliases;
}

} // namespace

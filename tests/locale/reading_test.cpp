// What is read from a locale object, and what is refused.
#include <cmath>

#include "locale/locale_fixture.h"

using namespace vel_test;
using grouping = vel_grouping;

namespace {

class reading : public locale_test {};

std::u32string wide(const vel::locale_text &text) {
    return std::u32string(reinterpret_cast<const char32_t *>(text.wide));
}
std::vector<int32_t> sizes(const grouping &from) {
    return {from.sizes, from.sizes + from.count};
}

TEST_F(reading, items_of_a_single_byte_object) {
    vel_locale *locale = load({});
    ASSERT_NE(locale->byte_upper, nullptr);
    EXPECT_EQ(locale->ctype.pairs[2].upper, 0x42u);
    EXPECT_EQ(locale->ctype.classes[1].number, 1);
    const vel::collate_category &collate = locale->collate;
    EXPECT_EQ(collate.pass_count, 2);
    EXPECT_EQ(collate.passes[1].direction, vel::pass_backward);
    EXPECT_EQ(collate.passes[0].weights[1], 0x8002);
    EXPECT_EQ(collate.elements[0].values[1], 0x62u);
    EXPECT_EQ(collate.expansions[0].values[1], 0x43u);
    EXPECT_EQ(locale->collate_features, 15u);
    EXPECT_EQ(locale->collate_longest_element, 2u);
    const vel_conventions &conventions = locale->conventions;
    EXPECT_EQ(wide(conventions.numeric.thousands_sep), U".");
    EXPECT_EQ(locale->numeric_marks.positive_sign, U'+');
    EXPECT_EQ(locale->monetary_marks.positive_sign, 0u);
    EXPECT_EQ(conventions.monetary.n_sign_posn, 127); // -4 stands for nothing
    EXPECT_STREQ(locale->time.abbreviated_months.items[1].bytes, "Feb");
}

TEST_F(reading, growth_factors) {
    object_parts parts = multibyte_parts();
    for (auto [line, expected] : std::vector<std::pair<const char *, double>>{
             {"\n2.5\n", 2.5},
             {" 2.5\n", 2.5},
             {"\n\n", 4.0},
             {"\n", 4.0},
             {" 4\n", 4.0},
             {"\n1.0\n", 2.0}}) { // one character doubles, whatever the file says
        parts.growth = line;
        vel_locale *locale = load(parts);
        EXPECT_EQ(locale->case_growth, expected) << line;
        EXPECT_EQ(locale->collate.kind, vel::collation_as_specified) << line;
    }
}

TEST_F(reading, groupings_keep_what_can_be_reached) {
    for (auto [text, expected] :
         std::vector<std::pair<const char *, std::vector<int32_t>>>{{"0\n", {}},
                                                                    {"1 0\n", {}},
                                                                    {"1 -1\n", {}},
                                                                    {"2 3 -7\n", {3, -1}},
                                                                    {"3 3 0 2\n", {3, 0}},
                                                                    {"3 3 2 2\n", {3, 2, 2}}}) {
        object_parts parts;
        parts.numeric = hex_texts({",", "."}) + text + hex_texts({"+", "-"});
        vel_locale *locale = load(parts);
        EXPECT_EQ(sizes(locale->conventions.numeric.grouping), expected) << text;
        EXPECT_STREQ(locale->conventions.numeric.negative_sign.bytes, "-");
    }
}

TEST_F(reading, long_strings_arrive_whole) {
    object_parts parts = multibyte_parts();
    std::string text;
    for (int i = 0; i < 5000; ++i) text += "\xC3\xA4";
    parts.messages = hex_texts({text, "^n", "", ""});
    vel_locale *locale = load(parts);
    EXPECT_EQ(locale->conventions.messages.texts[0].bytes, text);
    EXPECT_EQ(wide(locale->conventions.messages.texts[0]), std::u32string(5000, 0xC3A4));
}

// Each case replaces one part of a good object.
struct refusal {
    const char *name;
    std::string object_parts::*part;
    std::string text;
    int32_t error;
};

TEST_F(reading, refused_objects) {
    using parts = object_parts;
    const std::string table = table_text({{"A", 1}});
    const auto collation = [&](const std::string &rest) { return "as_specified\n" + table + rest; };
    const std::string two = "1 2 9 0 1 0\n1\n0001 4000\n"; // index 1 is expansion 0
    const std::string money = parts().monetary;
    const refusal cases[] = {
        {"file type", &parts::type, "FILE_TYPE=charmap_object\n", VEL_EBADFILE},
        {"version", &parts::version, "COMPILER_VERSION=12\n", VEL_EVERSION},
        {"header too short", &parts::length, "HEADER_LENGTH=2\n", VEL_EBADFILE},
        {"three header lines", &parts::length, "HEADER_LENGTH=3\n", 0},
        {"more header lines", &parts::length, "X=5\na\n### LC_CTYPE\n", 0},
        {"header without length", &parts::length, "HEADER_LENGTH\n", VEL_EBADFILE},
        {"header without end", &parts::length, "HEADER_LENGTH=99999999999999999999\n",
         VEL_EBADFILE},
        {"marker", &parts::growth, "1.5\n### LC_COLLATE \n", 0},
        {"classes", &parts::classes, "-1\n", VEL_EBADFILE},
        {"more classes than there are", &parts::classes, "2000000000\n0 a\n", VEL_EBADFILE},
        {"class number", &parts::classes, "1\n-1 a\n", VEL_EBADFILE},
        {"class name", &parts::classes, "1\n0 " + std::string(128, 'x') + "\n", VEL_EBADFILE},
        {"longest class name", &parts::classes, "1\n0 " + std::string(127, 'x') + "\n", 0},
        {"case index", &parts::case_table, table_text({{"A", 3}}), VEL_EBADFILE},
        {"an empty last node", &parts::case_table,
         "2 1 1 0000\n1 0\n410020010104\n0000000\n1 0\n0000000\n", 0},
        {"pairs", &parts::pairs, "-1\n", VEL_EBADFILE},
        {"a pair without a character", &parts::pairs, "2\n0000014100000061 0000004200000062\n",
         VEL_EBADFILE},
        {"more pairs than there are", &parts::pairs, "2147483647\n0000004100000061\n",
         VEL_EBADFILE},
        {"growth", &parts::growth, "-1.5\n", VEL_EBADFILE},
        {"huge growth", &parts::growth, "1e999\n", VEL_EBADFILE},
        {"key length", &parts::class_table, "5 1 3 0000\n", VEL_EBADFILE},
        {"kind", &parts::collate, "as_specifie\n", VEL_ELOCALE},
        {"passes", &parts::collate, collation("9 2 9 0 0 0\n"), VEL_EBADFILE},
        {"negative passes", &parts::collate, collation("-1 2 9 0 0 0\n"), VEL_EBADFILE},
        {"indexes", &parts::collate, collation("1 65537 9 0 0 0\n1\n0001\n"), VEL_EBADFILE},
        {"index beyond", &parts::collate, collation("1 1 9 0 0 0\n1\n0001\n"), VEL_EBADFILE},
        {"direction", &parts::collate, collation("1 2 9 0 0 0\n3\n0001 0001\n"), VEL_EBADFILE},
        {"weight", &parts::collate, collation("1 2 9 0 0 0\n1\n0001 000a\n"), VEL_EBADFILE},
        {"weight 0", &parts::collate, collation("1 2 9 0 0 0\n1\n0001 8000\n"), VEL_EBADFILE},
        {"expansion", &parts::collate, collation("1 2 9 0 0 0\n1\n0001 4000\n"), VEL_EBADFILE},
        {"empty expansion", &parts::collate, collation(two + "0\n"), VEL_EBADFILE},
        {"plain expansion", &parts::collate, collation(two + "1 00000042\n"), 0},
        {"expansion of itself", &parts::collate, collation(two + "1 00000041\n"), VEL_EBADFILE},
        {"nested only where unused", &parts::collate,
         "as_specified\n" + table_text({{"A", 1}, {"B", 0}}, 1) +
             "2 2 9 0 2 0\n1\n0002 4000\n1\n4001 0001\n1 00000042\n1 00000041\n",
         0},
        {"expansions", &parts::collate, collation("0 2 9 0 99999999 0\n"), VEL_EBADFILE},
        {"elements", &parts::collate, collation("0 2 9 99999999 0 0\n"), VEL_EBADFILE},
        {"empty element", &parts::collate, collation("0 2 9 1 0 0\n0 0001\n"), VEL_EBADFILE},
        {"element index", &parts::collate, collation("0 2 9 1 0 0\n1 00000041 0002\n"),
         VEL_EBADFILE},
        {"huge element", &parts::collate, collation("0 2 9 1 0 0\n2000000000 00000041 0001\n"),
         VEL_EBADFILE},
        {"order by value", &parts::collate, "as_specified\n4 0 1 0000\n0 0\n0000000\n0 0 0 0 0 1\n",
         VEL_EBADFILE}, // a root without a state table
        {"string length", &parts::numeric, "-1 00\n", VEL_EBADFILE},
        {"string without a space", &parts::numeric, "1\t2C\n", VEL_ENOFILE},
        {"string too short", &parts::messages, "2000000000 41", VEL_EBADFILE},
        {"grouping", &parts::numeric, hex_texts({",", "."}) + "16\n", VEL_ENOPRINT},
        {"negative grouping", &parts::numeric, hex_texts({",", "."}) + "-1\n", VEL_EBADFILE},
        {"monetary grouping", &parts::monetary, hex_texts({"", "", "", ""}) + "16\n", VEL_ENOPRINT},
        {"calendar", &parts::calendar, "julian\n", VEL_ECALENDAR},
        {"day", &parts::time, "1x41\n", VEL_ENOMEM},
        {"months", &parts::time, hex_texts(std::vector<std::string>(14, "d")) + "2000000000\n",
         VEL_ENOMEM},
    };
    for (const refusal &one : cases) {
        object_parts object;
        object.*one.part = one.text;
        EXPECT_EQ(load_error(object.text()), one.error) << one.name;
    }
    object_parts multibyte = multibyte_parts();
    multibyte.messages = hex_texts({"\xC3", "", "", ""}); // half a character
    EXPECT_EQ(load_error(multibyte.text()), VEL_EILSEQ);
    multibyte.class_table = table_text({});
    EXPECT_EQ(load_error(multibyte.text()), VEL_ENOERA);
}

TEST_F(reading, markers_are_found_at_line_starts_only) {
    object_parts parts;
    std::string growth = parts.growth;
    parts.growth = growth + std::string(127, 'x') + "### LC_COLLATE\nno kind\n";
    EXPECT_EQ(load_error(parts.text()), VEL_ELOCALE) << "a piece begins after 127 bytes";
    parts.growth = growth + std::string(126, 'x') + "### LC_COLLATE\nno kind\n";
    EXPECT_EQ(load_error(parts.text()), 0);
    parts.growth = growth + std::string(31, 'x') + "### LC_COLLATE\nno kind\n";
    EXPECT_EQ(creation_error(parts), VEL_ELOCALE) << "of a whole object, after 31";
}

} // namespace

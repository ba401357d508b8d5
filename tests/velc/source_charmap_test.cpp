// Charmap sources, and the substitutions for what a code set lacks.

#include <gtest/gtest.h>

#include "velc/source/locale_source.h"
#include "velc/source/source_library.h"

namespace velc {
namespace {

source_library &library() {
    static source_library one;
    return one;
}

std::string error_of(std::string_view text) {
    try {
        parse_charmap("bad", text);
    } catch (const source_error &error) {
        return error.what();
    }
    return "no error";
}

TEST(Charmap, SourcesWithSlips) {
    EXPECT_EQ(library().charmap("EBCDIC-PT")->name(), "EBCDIC-PT");            // no head at all
    EXPECT_EQ(library().charmap("MAC-CENTRALEUROPE")->by_code().size(), 256u); // no CHARMAP line
    EXPECT_EQ(library().charmap("TSCII")->sequences().size(), 63u);
    // Mnemonic names whose lines also give the code point.
    EXPECT_EQ(library().charmap("JIS_C6220-1969-JP")->decode({0x31, 1}), 0x30A2);
}

TEST(Charmap, Forms) {
    const charmap c = parse_charmap("small", "<code_set_name> SMALL\nCHARMAP\n"
                                             "<U0041> \\x41 hexadecimal\n<U0042> \\d066 decimal\n"
                                             "<U0043> \\103 octal\n"
                                             "<U3041>..<U3043> \\x82\\xff carries\n"
                                             "%IRREVERSIBLE%<U0041> \\x61\nEND CHARMAP\n"
                                             "WIDTH_DEFAULT 3\n"
                                             "WIDTH\n<U3041>...<U3042> 2\nEND WIDTH\n");
    EXPECT_EQ(c.encode_text(U"ABC"), "ABC");
    EXPECT_EQ(c.encode(0x3042), (byte_sequence{0x8300, 2}));
    EXPECT_EQ(c.decode({0x61, 1}), U'A');
    EXPECT_EQ(c.width(0x3042), 2);
    EXPECT_EQ(c.width(0x3043), 3);
    struct {
        std::string_view text, message;
    } const cases[] = {
        {"CHARMAP\n<U0041> x41\n", "bad:2: found 'x41', expected the bytes"},
        {"CHARMAP\n<U0041> \\x4\n", "bad:2: found '\\x4', expected a byte"},
        {"CHARMAP\n<U0041> \\d300\n", "bad:2: found '\\d300', expected a byte"},
        {"CHARMAP\n<U0041> \\x41\\x41\\x41\\x41\\x41\n", "bad:2: found"},
        {"CHARMAP\n<U0041>..<U0040> \\x41\n", "bad:2: found '<U0040>', expected a character"},
        {"CHARMAP\n<U0041>..<U0043> \\xfe\n", "bad:2: found '<U0043>', expected a range that"},
        {"CHARMAP\n<space> \\x20\n", "bad:2: found '<space>', expected a character given as <Ux"},
        {"CHARMAP\n<UD800> \\x20\n", "bad:2: found '<UD800>', expected <Uxxxx> up to"},
        {"charmap\n", "bad:1: found 'charmap', expected CHARMAP"},
        {"CHARMAP\nEND CHARMAP\n", "bad:2: found no character"},
        {"", "bad: found no character"},
    };
    for (const auto &row : cases)
        EXPECT_TRUE(error_of(row.text).starts_with(row.message)) << error_of(row.text);
    EXPECT_THROW(library().charmap("no-such-set"), source_error);
}

// Expected texts are those that the host's own compiler writes for the same sources.
TEST(Translit, FitsTextsIntoCodeSets) {
    struct {
        const char *locale, *charmap;
        std::u32string_view text;
        std::u32string_view fitted;
    } const rows[] = {
        {"fr_FR", "ISO-8859-1", U"1\u202F234", U"1\u00A0234"},
        {"fr_FR", "ANSI_X3.4-1968", U"\u202F", U" "},
        {"de_DE", "ISO-8859-1", U"10 €", U"10 EUR"},
        {"de_DE@euro", "ISO-8859-15", U"10 €", U"10 €"},
        {"de_DE", "ANSI_X3.4-1968", U"Märzß", U"Maerzss"},
        {"en_US", "ANSI_X3.4-1968", U"März", U"Marz"},
        {"fr_CA", "ISO-8859-1", U"l\u2019\u0153uf", U"l'oeuf"},
        {"uk_UA", "ANSI_X3.4-1968", U"Україна", U"Ukrayina"},
        {"ja_JP", "EUC-JP", U"\u4E48", U"\u5E7A"},
    };
    for (const auto &row : rows) {
        const auto table = library().translit(row.locale);
        const auto fitted = table->fit(row.text, *library().charmap(row.charmap));
        ASSERT_TRUE(fitted) << row.locale << to_utf8(row.text);
        EXPECT_EQ(to_utf8(*fitted), to_utf8(row.fitted)) << row.locale << row.charmap;
    }
}

TEST(Translit, LastResorts) {
    const auto ascii = library().charmap("ANSI_X3.4-1968");
    EXPECT_EQ(library().translit("de_DE")->substitute(0xE123, *ascii), U"?"); // default_missing
    EXPECT_EQ(library().translit("POSIX")->substitute(0xE123, *ascii), std::nullopt);
    EXPECT_EQ(library().translit("POSIX")->fit(U"a\uE123", *ascii), std::nullopt);
    const text_list micro = library().translit("de_DE")->candidates(0xB5);
    ASSERT_FALSE(micro.empty());
    EXPECT_EQ(micro.front(), U"\u03BC");
    EXPECT_EQ(library().translit("de_DE")->substitute(0xB5, *ascii), U"u");
}

TEST(Translit, LastRuleOfACharacterCounts) {
    symbol_table symbols;
    const locale_source source =
        parse_locale_source("x", "x",
                            "LC_CTYPE\ntranslit_start\n<U00E4> \"a\"\n<U00E4><U00F6> <U0061>\n"
                            "<U00E4> <U0061><U0065>;\"e\"\ntranslit_end\nEND LC_CTYPE\n",
                            symbols);
    const auto &rules = source.ctype.own->translit.rules;
    ASSERT_EQ(rules.size(), 2u);
    EXPECT_EQ(rules[0].from, U"\u00E4");
    EXPECT_EQ(rules[0].to, (text_list{U"ae", U"e"}));
    EXPECT_EQ(rules[1].from, U"\u00E4\u00F6");
}

} // namespace
} // namespace velc

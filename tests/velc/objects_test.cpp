// Compiled objects as the library and the tool itself read them back.
#include <cstdlib>
#include <cstring>

#include <gtest/gtest.h>

#include "support/scratch.h"
#include "velc/check.h"
#include "velc/dump.h"
#include "velc/locale_writer.h"
#include "velc/object_text.h"
#include "velc/registry_source.h"
#include "velc/runner.h"
#include "velc/tool_error.h"
#include "vels/errors.h"
#include "vels/registry.h"

namespace {

using namespace velc;
using vel_test::expect_complaint;
using vel_test::scratch_directory;

source_library &sources() {
    static source_library library;
    return library;
}

const codeset_table &codesets() {
    static const codeset_table table(read_recipe({}));
    return table;
}

std::string compiled(const char *source, const char *charmap) {
    static locale_writer writer(sources(), codesets());
    return writer.write(source, charmap, codesets().at(charmap).number()).text;
}

TEST(compiled_locales, say_how_much_case_conversion_can_grow) {
    const scratch_directory at;
    // U+0131 goes from two bytes to one, i to U+0130 from one byte to two.
    EXPECT_EQ(read_lco(at.put("one.lco", compiled("tr_TR", "UTF-8"))).growth, 2.0);
    EXPECT_EQ(read_lco(at.put("one.lco", compiled("tr_TR", "ISO-8859-9"))).growth, 1.0);
}

TEST(registry, resolves_what_people_type) {
    const scratch_directory at;
    const auto path = at.put("registry", make_registry(codesets(), sources()));
    constexpr std::pair<const char *, int> cases[] = {
        {"utf8", 57372},        {"UTF-8", 57372},  {"iso-8859-1", 819},   {"ISO8859-1", 819},
        {"iso88591", 819},      {"latin1", 819},   {"iso8859-15", 923},   {"latin-9", 923},
        {"windows-1252", 1252}, {"euc-jp", 5050},  {"eucjp", 5050},       {"ujis", 57351},
        {"shift_jis", 57350},   {"sjis", 57350},   {"cp932", 932},        {"gb18030", 1392},
        {"euckr", 970},         {"cp949", 57356},  {"koi8-r", 57382},     {"tis-620", 57373},
        {"greek", 737},         {"ebcdic-us", 37}, {"ccsid28709", 29709}, {"819", 819},
    };
    for (const bool cached : {false, true}) {
        if (cached) vel_cache_registry(nullptr, path.c_str());
        for (const auto &[name, number] : cases)
            EXPECT_EQ(vel_cs_name2cs_num(nullptr, name, path.c_str()), number) << name;
        EXPECT_EQ(vel_cs_name2cs_num(nullptr, "no-such", path.c_str()), VEL_CS_INVALID);
    }
    for (const codeset &one : codesets().all()) {
        const std::string name = codesets().header_name(one, one.number());
        EXPECT_EQ(vel_cs_name2cs_num(nullptr, name.c_str(), nullptr), one.number()) << name;
    }
    vel_free_registry_cache();
}

// A fault in an object, and the word that the complaint has to have in it.
struct fault {
    const char *name;
    const char *find, *replace;
    const char *complaint;
};
constexpr fault faults[] = {
    {"type", "locale_object", "locale_objekt", "FILE_TYPE"},
    {"version", "VERSION=11", "VERSION=12", "COMPILER_VERSION"},
    {"header length", "LENGTH=9", "LENGTH=8", "code set"},
    {"code set", "\nISO-8859-1\n###", "\nISO-8859-99\n###", "registry"},
    {"number", "CODESET_NUMBER=819", "CODESET_NUMBER=820", "819"},
    {"state entry", "0000110004", "0000110003", "table"},
    {"class number", "0 full_width", "9 full_width", "full_width"},
    {"case index", "0018001900", "0018ff1900", "index"},
    {"case pair", "0000004100000061", "0000014100000061", "141"},
    {"marker", "### LC_TIME", "### LC_TIMES", "LC_TIME"},
    {"text length", "7 536f6e6e746167", "9 536f6e6e746167", "LC_TIME"},
    {"text digits", "7 536f6e6e746167", "7 536f6e6e7461xx", "hexadecimal"},
    {"grouping", "\n1 3\n", "\n2 3 0\n", "grouping"},
    {"calendar", "gregorian", "martian", "calendar"},
    {"months", "gregorian", "hebrew", "14, as the hebrew calendar has"},
    {"tail", "### LC_MESSAGES", "### LC_MESSAGES\n1 41", "end of the file"},
};

TEST(check, finds_faults) {
    const scratch_directory at;
    const name_resolver resolve = [](std::string_view name) {
        return codesets().names().find(name);
    };
    const std::string good = compiled("de_DE", "ISO-8859-1");
    EXPECT_NO_THROW(check_lco(at.put("good.lco", good), resolve));
    EXPECT_NO_THROW(check_hash(at / "good.lco"));
    for (const fault &f : faults) {
        SCOPED_TRACE(f.name);
        std::string bad = good;
        const std::size_t place = bad.find(f.find);
        ASSERT_NE(place, bad.npos);
        bad.replace(place, std::strlen(f.find), f.replace);
        const auto path = at.put("bad.lco", bad);
        expect_complaint({f.complaint, "bad.lco"}, [&] { check_lco(path, resolve); });
    }
    std::string changed = good;
    changed[changed.size() - 3] ^= 1;
    EXPECT_THROW(check_hash(at.put("changed.lco", changed)), tool_error);
    for (std::size_t cut = 10; cut < good.size(); cut += 97)
        EXPECT_THROW(check_lco(at.put("cut.lco", good.substr(0, cut)), resolve), tool_error) << cut;
}

TEST(check, knows_registries) {
    const scratch_directory at;
    EXPECT_NO_THROW(check_registry(at.put("registry", "# one\nutf8  57372 # ours\n")));
    for (const char *bad : {"utf8 57372", "utf8\n", "utf8 x\n", "UTF8 57372\n", "utf8 57344\n",
                            "a-name-of-twenty-two-c 1\n", "# nothing\n"})
        EXPECT_THROW(check_registry(at.put("registry", bad)), tool_error) << bad;
}

TEST(dump, tells_what_is_in_an_object) {
    const scratch_directory at;
    const lco_file file = read_lco(at.put("one.lco", compiled("ja_JP", "EUC-JP")));
    const text_decoder decoder(file.codeset, codesets(), std::string(default_source_root));
    const std::string text = dump_lco(file, decoder, true);
    for (const char *expected :
         {"SOURCE=ja_JP", "CODESET=EUC-JP", "currency_symbol      \"￥\"", "\"月曜日\"",
          "jhira                88 characters", "grouping             3",
          "era_t_fmt            \"%H時%M分%S秒\"",
          "a4 a2        U+3042 あ      alpha graph print full_width jhira\n",
          "61           U+0061 a       lower alpha graph print xdigit [41 61]\n"})
        EXPECT_NE(text.find(expected), text.npos) << expected;

    const text_decoder blind(file.codeset, codesets(), "/nowhere");
    EXPECT_EQ(blind.decode("a\xA4\xA2\\"), "a\\xa4\\xa2\\\\");
}

TEST(conversion_objects, are_read_and_checked) {
    const scratch_directory at;
    const object_header header{"codeset_conversion_object", 9, {}};
    // Two characters: 41 becomes C3 84, 42 is illegal; everything else is the substitute.
    const std::string text =
        with_header(header, "0 0\n0000\n1 2 0 0 1 1 0\n2.0\n1 1 1 313f\n1 1\n0000110004\n0000000\n"
                            "4100200112c38400\n0000000\n");
    const auto path = at.put("one.cvo", text);
    const cvo_file file = read_cvo(path);
    EXPECT_EQ(file.target_max, 2);
    EXPECT_EQ(file.expansion, 2.0);
    const std::string dumped = dump_cvo(file, nullptr, true);
    EXPECT_NE(dumped.find("  41                      12 c3 84\n"), dumped.npos) << dumped;
    EXPECT_NE(dumped.find("  42                      00 illegal\n"), dumped.npos) << dumped;
    EXPECT_NE(dumped.find("  43                      31 3f substitute\n"), dumped.npos) << dumped;
    EXPECT_NO_THROW(check_cvo(path));
    std::string bad = text;
    bad.replace(bad.find("\n1 2 0"), 4, "\n1 9");
    EXPECT_THROW(check_cvo(at.put("bad.cvo", bad)), tool_error);
}

} // namespace

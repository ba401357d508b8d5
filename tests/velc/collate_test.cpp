// Collations: the order that statements come to, the tables that are made of it, and what does not
// fit.
#include <gtest/gtest.h>

#include <tuple>

#include "record/record.h"
#include "support/scratch.h"
#include "velc/check.h"
#include "velc/collate_order.h"
#include "velc/locale_writer.h"
#include "velc/pack.h"
#include "velc/registry_source.h"
#include "velc/runner.h"
#include "velc/tool_error.h"
#include "vels/collate.h"
#include "vels/locale.h"
#include "vels/registry.h"

namespace {

using namespace velc;
using vel_test::expect_complaint;
using vel_test::scratch_directory;

const codeset_table &codesets() {
    static const codeset_table table(read_recipe({}));
    return table;
}

source_library &standard_sources() {
    static source_library library;
    return library;
}

// A directory of sources with the charmaps that the tests use and the locales that they put there.
class own_sources {
public:
    own_sources() {
        std::filesystem::create_directories(at_ / "charmaps");
        const std::filesystem::path from = std::filesystem::path(default_source_root) / "charmaps";
        for (const char *name : {"UTF-8.gz", "ISO-8859-1.gz", "EUC-JP.gz", "IBM037.gz"})
            std::filesystem::copy_file(from / name, at_ / "charmaps" / name);
    }
    void put(const std::string &name, const std::string &collate) {
        at_.put("locales/" + name, "LC_COLLATE\n" + collate + "END LC_COLLATE\n");
    }
    source_library library() const { return source_library(at_.path()); }

private:
    scratch_directory at_;
};

// A compiled locale in the library's hands, checked before.
class compiled {
public:
    compiled(source_library &sources, const std::string &source, const std::string &charmap,
             const collate_options &options = {})
        : codeset_(sources.charmap(charmap)) {
        static const std::string registry = make_registry(codesets(), standard_sources());
        const scratch_directory at;
        vel_cache_registry(nullptr, at.put("registry", registry).c_str());
        const locale_variant variant{nullptr, options};
        locale_object made = locale_writer(sources, codesets())
                                 .write(source, charmap, codesets().at(charmap).number(), variant);
        warnings = made.collate_warnings;
        // Locales of one name and place are shared while they are loaded.
        static int number = 0;
        const std::string file = fmt::format("{}.lco", ++number);
        const auto path = at.put(file, made.text);
        check_lco(path, [](std::string_view name) { return codesets().names().find(name); });
        EXPECT_EQ(vel_lc_load(&locale_, file.c_str(), -1, path.parent_path().c_str()), 0) << source;
        vel_free_registry_cache();
    }
    ~compiled() { vel_lc_unload(locale_); }
    compiled(const compiled &) = delete;
    compiled &operator=(const compiled &) = delete;

    int compare(std::u32string_view a, std::u32string_view b) const {
        return vel_full_wcscoll(locale_, values(a).data(), values(b).data());
    }
    const vel::collate_category &tables() const { return locale_->collate; }

    std::vector<std::string> warnings;

private:
    std::vector<vel_wchar> values(std::u32string_view of) const {
        std::vector<vel_wchar> values;
        for (char32_t code : of) values.push_back(codeset_->encode(code).value().value);
        values.push_back(0);
        return values;
    }
    std::shared_ptr<const charmap> codeset_;
    vel_locale *locale_ = nullptr;
};

// "a<b=c": how each relates to the one before it.
void expect_order(const compiled &by, std::u32string_view chain) {
    for (size_t at = 0, next; (next = chain.find_first_of(U"<=", at)) != chain.npos;
         at = next + 1) {
        const auto a = chain.substr(at, next - at), rest = chain.substr(next + 1);
        const auto b = rest.substr(0, rest.find_first_of(U"<="));
        const int expected = chain[next] == U'<' ? -1 : 0;
        EXPECT_EQ(by.compare(a, b), expected) << to_utf8(a) << ' ' << to_utf8(b);
        EXPECT_EQ(by.compare(b, a), -expected) << to_utf8(b) << ' ' << to_utf8(a);
    }
}

std::string order_of(own_sources &from, const std::string &body) {
    from.put("one", body);
    source_library library = from.library();
    const auto collate = library.locale("one")->collate;
    const collate_order order = resolve_order(*collate, library.symbols());
    std::string names;
    for (const order_entry &entry : order.entries())
        names += (names.empty() ? "" : " ") + std::string(library.symbols().name(entry.subject));
    return names;
}

TEST(collate_order, follows_the_statements) {
    own_sources from;
    from.put("base", "order_start forward\n<a>\n<b>\n<c>\n<d>\norder_end\n");
    constexpr std::pair<const char *, const char *> cases[] = {
        {"copy \"base\"\n", "a b c d"},
        {"copy \"base\"\nreorder-after <a>\n<d>\n<new>\nreorder-end\n", "a d new b c"},
        {"copy \"base\"\nreorder-after <c>\n<c>\n<a>\nreorder-end\n", "b c a d"},
        {"copy \"base\"\nreorder-after <d>\n<a>\nreorder-after <b>\n<a>\n", "b a c d"},
        {"copy \"base\"\nreorder-after <a>\n<x>\nreorder-end\norder_start forward\n<b>\n<y>\n",
         "a x b c d y"},
        {"collating-symbol <declared>\norder_start <S>;forward\n<b>\n<a>\n<b>\n", "b a"},
        {"order_start forward\n<U0061>\n..\n<U0064>\n<x>\n", "U0061 U0062 U0063 U0064 x"},
        {"copy \"base\"\nsymbol-equivalence <bee> <b>\nreorder-after <d>\n<bee>\n", "a c d b"},
    };
    for (const auto &[body, expected] : cases) EXPECT_EQ(order_of(from, body), expected) << body;
}

TEST(collate_order, refuses_what_has_no_meaning) {
    own_sources from;
    constexpr std::pair<const char *, const char *> cases[] = {
        {"order_start forward\n<a>\nreorder-after <b>\n<c>\n", "one:4: found b"},
        {"order_start forward\n<a>\n..\n<U0064>\n", "one:5: found an ellipsis"},
        {"order_start forward\n<U0064>\n..\n<U0061>\n", "one:5: found an ellipsis"},
        {"order_start forward\n<U0064>\n..\n", "one:4: found an ellipsis at the end"},
        {"reorder-sections-after <A>;<B>\n", "one:2: found sections"},
        {"order_start forward;forward;forward;forward;forward;forward;forward;forward;forward\n",
         "one:2: found 9 passes"},
    };
    for (const auto &[body, complaint] : cases)
        expect_complaint({complaint}, [&] { order_of(from, body); });
}

// Two passes, the second backward; an expansion with a part that no character weighs, elements of
// which one begins another and two weigh the same, a character that is ignored at first.
constexpr const char *small_order =
    "collating-element <ch> from \"ch\"\ncollating-element <chh> from \"chh\"\n"
    "collating-element <cH> from \"cH\"\norder_start forward;backward\n"
    "<PLAIN>\n<ACUTE>\n<GRAVE>\n<LIG>\n<U002D> IGNORE;<U002D>\n<U0061> <U0061>;<PLAIN>\n"
    "<U00E1> <U0061>;<ACUTE>\n<U00E0> <U0061>;<GRAVE>\n<U0063> <U0063>;<PLAIN>\n"
    "<ch> <ch>;<PLAIN>\n<cH> <ch>;<PLAIN>\n<chh> <ch>;<LIG>\n<EPSILON>\n"
    "<U0065> <EPSILON>;<PLAIN>\n<U00E9> <EPSILON>;<ACUTE>\n<U0068> <U0068>;<PLAIN>\n"
    "<U00E6> \"<U0061><EPSILON>\";\"<LIG><PLAIN>\"\n<U00FE> \"<LIG><U0068>\";<PLAIN>\n"
    "<U0078>\n<U0079>\n<U0077>\norder_end\n";

TEST(collate_tables, hold_a_small_order_in_every_kind_of_code_set) {
    own_sources from;
    from.put("small", small_order);
    source_library library = from.library();
    for (const char *charmap : {"UTF-8", "ISO-8859-1", "EUC-JP", "IBM037"}) {
        SCOPED_TRACE(charmap);
        const compiled by(library, "small", charmap);
        EXPECT_EQ(by.tables().pass_count, 2);
        EXPECT_EQ(by.tables().element_count, 3);
        expect_order(by, U"aca<áca<àca<acá<ácà"); // the last accent counts first
        expect_order(by, U"ac<a-c<ae<áe<aé<æ<e<h<x<y<w");
        expect_order(by, U"þ<a");
        expect_order(by, U"cx<ch=cH<chh<cha<e"); // the longest element is taken
        expect_order(by, U"w<z");                // characters without a place come last
        expect_order(by, U"a<a\u0001<az");
        EXPECT_NE(by.compare(U"z", U"Z"), 0);
        EXPECT_EQ(by.compare(U"z", U"Z"), charmap[0] == 'I' && charmap[1] == 'B' ? -1 : 1);
    }
}

TEST(collate_tables, treat_what_has_no_place_as_asked) {
    own_sources from;
    from.put("small", small_order);
    source_library library = from.library();
    for (const char *charmap : {"UTF-8", "ISO-8859-1"}) {
        SCOPED_TRACE(charmap);
        const compiled as_lowest(library, "small", charmap, {undefined_order::as_lowest});
        expect_order(as_lowest, U"a<az=aZ=a-<ac");
        const compiled both(library, "small", charmap, {undefined_order::as_lowest, true});
        EXPECT_EQ(both.tables().pass_count, 3);
        expect_order(both, U"a-<aZ<az<ac");
        EXPECT_NE(both.compare(U"ch", U"cH"), 0);
        EXPECT_NE(both.compare(U"a\u0001", U"az"), 0);
    }
}

TEST(collate_tables, ignore_symbols_without_a_place) {
    own_sources from;
    from.put("one", "order_start forward\n<U0061> <NOWHERE>\n<U0062>\norder_end\n");
    source_library library = from.library();
    const compiled by(library, "one", "ISO-8859-1");
    expect_order(by, U"b=ab<bb");
    EXPECT_EQ(by.warnings,
              std::vector<std::string>{"the symbol <NOWHERE> has no place, it weighs nothing"});
}

std::string entries(char32_t first, char32_t last, const char *weight) {
    std::string body;
    for (char32_t code = last; code >= first; --code)
        body += code_point_name(code) + ' ' + weight + '\n';
    return body;
}

// 9000 characters in falling order need as many weights, twice that is too many.
TEST(collate_limits, put_rare_ideographs_last) {
    own_sources from;
    from.put("strokes", "order_start forward\n" + entries(0x20000, 0x22328, "") +
                            entries(0x4E00, 0x7128, "") + "<U0061>\norder_end\n");
    source_library library = from.library();
    const compiled by(library, "strokes", "UTF-8");
    EXPECT_EQ(by.warnings.size(), 1u);
    expect_order(by, U"\u7128<\u4E01<\u4E00<\U00020000<\U00020001<\U00022328<a");
}

TEST(collate_limits, are_errors) {
    std::string shared = "order_start forward\n", parts = "order_start forward;forward\n";
    for (int i = 0; i < 16384; ++i)
        shared += fmt::format("<S{0}>\n<U{1:04X}> <S{0}>\n<U{2:04X}> <S{0}>\n", i, 0x3000 + i,
                              0x7000 + i);
    for (int i = 0x20; i < 0x7F; ++i)
        parts += fmt::format("<S{0}>\n<T{0}>\n<U{0:04X}> \"<S{0}><T{0}>\"\n", i);
    const std::tuple<std::string, const char *, const char *> cases[] = {
        {shared, "UTF-8", "found 16384 weights in pass 1, expected at most 16379"},
        {parts, "ISO-8859-1", "found 64 bytes to spare"}};
    for (const auto &[body, charmap, complaint] : cases) {
        own_sources from;
        from.put("one", body);
        source_library library = from.library();
        expect_complaint({complaint}, [&] { const compiled by(library, "one", charmap); });
    }
}

TEST(collate_check, finds_faults) {
    own_sources from;
    from.put("small", small_order);
    source_library library = from.library();
    const std::string good = locale_writer(library, codesets()).write("small", "UTF-8", 57372).text;
    const std::string parts = good.substr(good.rfind("2 00fe0000", good.find("### LC_NUM")), 18);
    const std::tuple<std::string, std::string, std::string> cases[] = {
        {parts, "2 0000c3a60000c3a6", "expands again"},
        {"3 000000630000006800000068", "2 0000006300000048", "63 48 behind 63 48"},
        {" 3 3 0\n", " 3 3 1\n", "tables besides order by value"},
    };
    const scratch_directory at;
    const auto check = [&](const std::string &text) {
        check_lco(at.put("one.lco", text), [](std::string_view) { return std::uint16_t{57372}; });
    };
    EXPECT_NO_THROW(check(good));
    for (const auto &[find, replace, complaint] : cases) {
        std::string bad = good;
        ASSERT_NE(bad.find(find), bad.npos) << find;
        bad.replace(bad.find(find), find.size(), replace);
        expect_complaint({complaint}, [&] { check(bad); });
    }
}

TEST(collate_recipe, may_ask_for_the_thai_algorithm) {
    recipe what = read_recipe({});
    what.locales = parse_recipe_file("locales", "default C UTF-8\nth_TH thai_smo TIS-620\n"
                                                "de_DE ISO-8859-1\n");
    std::size_t thai = 0;
    for (const pack_item &item : plan_pack(what, codesets(), standard_sources(), false)) {
        EXPECT_EQ(item.thai, item.source == "th_TH") << item.title();
        thai += item.thai;
    }
    EXPECT_EQ(thai, 1u);
    const compiled made(standard_sources(), "th_TH", "TIS-620",
                        {undefined_order::behind_all, false, true});
    EXPECT_EQ(made.tables().kind, vel::collation_thai);
}

} // namespace

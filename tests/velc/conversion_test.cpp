// Conversion objects against the charmaps that they are made from.
#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

#include "support/scratch.h"
#include "velc/cmo_file.h"
#include "velc/conversion_recipe.h"
#include "velc/conversion_writer.h"
#include "velc/entry_table.h"
#include "velc/output_file.h"
#include "velc/pack.h"
#include "velc/runner.h"

namespace {

using namespace velc;
using vel_test::scratch_directory;

// The sources of the host, and everything that the standard recipe says about conversions.
struct standard {
    recipe from = read_recipe({});
    codeset_table codesets{from};
    conversion_recipe listed{from.conversions, codesets};
    source_library sources;
    conversion_sets sets{sources};

    conversion_side side(const codeset &of) { return {sets.get(of.charmap), of.number()}; }
    conversion_side side(std::string_view name) { return side(codesets.named(name)); }
    cvo_file made(const conversion_side &from_side, const conversion_side &to_side) {
        const scratch_directory at;
        const auto path = at / "one.cvo";
        write_output(path, write_conversion(from_side, to_side).text);
        return read_cvo(path);
    }
    cvo_file made(std::string_view from_name, std::string_view to_name) {
        return made(side(from_name), side(to_name));
    }
};

standard &all() {
    static standard one;
    return one;
}

struct entry {
    int flags;
    std::string bytes;
    bool operator==(const entry &) const = default;
};
std::ostream &operator<<(std::ostream &out, const entry &one) {
    out << std::hex << one.flags << ":";
    for (unsigned char c : one.bytes) out << " " << int(c);
    return out;
}

entry entry_at(const unsigned char *value) {
    return {value[0], {reinterpret_cast<const char *>(value) + 1, value[0] & 7u}};
}
entry entry_of(const vel::vel_trie &table, const byte_sequence &source) {
    const vel::vel_mbkey key = key_of(source);
    const unsigned char *value = vel::vel_trie_built_value(&table, &key);
    return value ? entry_at(value) : entry{0, "none"};
}

// Characters that begin with another one are written all the same.
std::optional<byte_sequence> written(char32_t code, const charmap &to) {
    const auto dropped = std::ranges::find(to.dropped(), code, &charmap_entry::code);
    return to.has(code) || dropped == to.dropped().end() ? to.encode(code) : dropped->bytes;
}

// What the two charmaps say about one code point.
entry expected_entry(char32_t code, const charmap &to, const std::string &substitute) {
    const auto bytes = written(code, to);
    const std::string text = bytes ? bytes->text() : substitute;
    const int flags = (bytes ? 0x10 : 0x30) | (code == 0 ? 8 : 0);
    return {flags | static_cast<int>(text.size()), text};
}

// Counts what disagrees: a whole repertoire of failures would drown the first of them.
void expect_as_charmaps(const cvo_file &file, const charmap &from, const charmap &to) {
    const std::string question = to.encode(U'?') ? to.encode(U'?')->text() : "";
    const std::string substitute = to.every_scalar_value() ? "\xEF\xBF\xBD" : question;
    std::size_t seen = 0, wrong = 0;
    double most = 0;
    if (from.every_scalar_value()) {
        // What the target has, and that nothing else is taken for convertible.
        std::size_t converted = 0;
        for_each_character(*file.table, [&](const byte_sequence &, const unsigned char *value) {
            converted += !(value[0] & entry_substitute);
        });
        const auto begins_with_another =
            std::ranges::count_if(to.dropped(), [&](const auto &one) { return !to.has(one.code); });
        EXPECT_EQ(converted, to.by_code().size() + static_cast<std::size_t>(begins_with_another));
        for (std::uint32_t i : to.by_code()) {
            const char32_t code = to.by_bytes()[i].code;
            wrong += entry_of(*file.table, utf8_bytes(code)) != expected_entry(code, to, "");
        }
        EXPECT_EQ(wrong, 0u);
        return;
    }
    for_each_character(*file.table, [&](const byte_sequence &bytes, const unsigned char *value) {
        const auto code = from.decode(bytes);
        const entry found = entry_at(value);
        most = std::max(most, static_cast<double>(found.bytes.size()) / bytes.length);
        if (std::ranges::count(from.sequences(), bytes, &charmap_sequence::bytes)) return;
        const bool no_question = substitute.empty() && (found.flags & entry_substitute);
        const entry expected = code ? expected_entry(*code, to, substitute) : entry{0, ""};
        seen += code.has_value();
        if (found == expected || no_question) return;
        if (wrong++ == 0)
            ADD_FAILURE() << std::hex << bytes.value << ": " << found << " for " << expected;
    });
    EXPECT_EQ(wrong, 0u);
    EXPECT_EQ(seen, from.by_bytes().size());
    EXPECT_GE(file.expansion, most);
    EXPECT_EQ(static_cast<float>(file.expansion),
              static_cast<double>(static_cast<float>(most)) < most
                  ? std::nextafter(static_cast<float>(most), 5.0f)
                  : static_cast<float>(most));
    EXPECT_FALSE(file.source_max != 1 && file.source_min == file.source_max);
}

TEST(conversion, pairs_of_the_recipe_agree_with_the_charmaps) {
    for (const auto &[from, to] : all().listed.pairs()) {
        const conversion_side source = all().side(*from), target = all().side(*to);
        const auto charmap_for = [](const conversion_set &set) {
            return set.name == "UTF-8" ? all().sources.charmap("UTF-8") : set.initial;
        };
        const auto known = charmap_for(*source.set), other = charmap_for(*target.set);
        if (!known || !other || source.set->has_shifts() || target.set->has_shifts()) continue;
        SCOPED_TRACE(from->charmap + " to " + to->charmap);
        expect_as_charmaps(all().made(source, target), *known, *other);
    }
}

TEST(conversion, shift_states) {
    const cvo_file read = all().made("hz", "utf8"), written = all().made("utf8", "hz");
    EXPECT_TRUE(read.source_shifted && !read.target_shifted && written.target_shifted);
    EXPECT_EQ(written.sequences[0], "~{");
    EXPECT_EQ(written.sequences[1], "~}");
    EXPECT_EQ(entry_of(*read.table, {0x7E7B, 2}), (entry{0x90, ""}));
    EXPECT_EQ(entry_of(*read.table, {0x7E7E, 2}), (entry{0x11, "~"}));
    EXPECT_EQ(entry_of(*read.shift_table, {0x3021, 2}), (entry{0x13, "啊"}));
    EXPECT_EQ(entry_of(*read.shift_table, {0x0A, 1}), (entry{0x91, "\n"}));
    EXPECT_EQ(entry_of(*written.table, {0xE5958A, 3}), (entry{0x52, "\x30\x21"}));
    // Two bytes of e.g. U+00A4, which HZ writes as ~{!h~}.
    EXPECT_EQ(written.expansion, 3.0);
}

TEST(conversion, packs_hold_the_pairs_of_their_recipe_under_all_names) {
    const scratch_directory at;
    at.put("recipe/codesets", "UTF-8 57372\nIBM437 437\nEUC-JP 5050 57351\nNONE 60000\n");
    at.put("recipe/aliases", "");
    at.put("recipe/locales", "default C UTF-8\n");
    at.put("recipe/conversions", "each UTF-8\nnames UTF-8 utf8 utf-8\n");
    const std::string recipe = (at / "recipe").string(), root = (at / "pack").string();
    const vel_test::outcome made = vel_test::run_velc({"pack", "--recipe", recipe, "-o", root});
    EXPECT_EQ(made.code, 0);
    EXPECT_NE(made.out.find(" 4 conversions"), std::string::npos);
    const std::string &warnings = made.err;
    EXPECT_EQ(warnings.find("NONE"), warnings.rfind("NONE")) << warnings;
    EXPECT_NE(warnings.find("NONE"), std::string::npos) << warnings;
    const auto directory = at / "pack" / conversion_directory;
    for (const char *name : {"e01c13ba.cvo", "e01ce007.cvo", "e007e01c.cvo", "utf8_euc-jp.cvo",
                             "ibm437_utf-8.cvo", "utf8_ibm437.cvo"})
        EXPECT_EQ(read_cvo(directory / name).head.kind, object_kind::conversion) << name;
    EXPECT_EQ(read_file(directory / "utf8_ibm437.cvo"),
              write_conversion(all().side("utf8"), all().side("cp437")).text);
}

} // namespace

// Conversion objects against the charmaps that they are made from.
#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

#include "support/scratch.h"
#include "velc/cmo_file.h"
#include "velc/commands.h"
#include "velc/conversion_recipe.h"
#include "velc/conversion_writer.h"
#include "velc/entry_table.h"
#include "velc/output_file.h"
#include "velc/pack.h"

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

TEST(conversion, forms_of_unicode_have_their_byte_order_and_routine) {
    struct row {
        const char *from, *to;
        int source_min, source_max, target_min, target_max;
        byte_sequence source;
        entry expected;
    };
    const row rows[] = {
        // Units stand in the table most significant first, and the library turns them.
        {"utf8", "unicode", 1, 4, 2, 2, {0xE282AC, 3}, {0x12, "\x20\xAC"}},
        {"unicode", "utf8", 2, 2, 1, 3, {0x20AC, 2}, {0x13, "\xE2\x82\xAC"}},
        {"unicode", "ibm037", 2, 2, 1, 1, {0x0041, 2}, {0x11, "\xC1"}},
        {"utf8", "unicode", 1, 4, 2, 2, {0xF09F9880, 4}, {0x32, "\xFF\xFD"}},
        {"utf8", "utf-32", 1, 4, 4, 4, {0xF09F9880, 4}, {0x14, {"\x00\x01\xF6\x00", 4}}},
        // But not both of one conversion.
        {"unicode", "utf-32", 2, 2, 4, 4, {0x20AC, 2}, {0x14, {"\xAC\x20\x00\x00", 4}}},
        // Bytes in the other order stand as they are, with a least length that keeps them so.
        {"utf8", "ucs-2be", 1, 4, 1, 2, {0xE282AC, 3}, {0x12, "\x20\xAC"}},
        {"utf-32be", "utf8", 1, 4, 1, 4, {0x20AC, 4}, {0x13, "\xE2\x82\xAC"}},
        {"8859-1", "utf-16le", 1, 1, 1, 2, {0xE9, 1}, {0x12, {"\xE9\x00", 2}}},
        {"utf8", "utf-16le", 1, 4, 2, 4, {0xF09F9880, 4}, {0x14, {"\x3D\xD8\x00\xDE", 4}}},
        {"utf-16be", "utf8", 2, 4, 1, 4, {0xD83DDE00, 4}, {0x14, "\xF0\x9F\x98\x80"}},
        {"utf-16le", "utf8", 2, 4, 1, 4, {0x0000, 2}, {0x19, {"\x00", 1}}},
    };
    for (const row &one : rows) {
        SCOPED_TRACE(fmt::format("{} to {} {:X}", one.from, one.to, one.source.value));
        const cvo_file file = all().made(one.from, one.to);
        const auto lengths = {file.source_min, file.source_max, file.target_min, file.target_max};
        EXPECT_TRUE(std::ranges::equal(lengths,
                                       std::initializer_list<int>{one.source_min, one.source_max,
                                                                  one.target_min, one.target_max}));
        EXPECT_EQ(entry_of(*file.table, one.source), one.expected);
    }
}

TEST(conversion, keeps_irreversible_characters_and_sequences_one_way) {
    struct row {
        const char *from, *to;
        byte_sequence source;
        entry expected;
    };
    const row rows[] = {
        // Two ways to write the same character; the second can only be read.
        {"windows-31j", "utf8", {0x81E0, 2}, {0x13, "\xE2\x89\x92"}},
        {"windows-31j", "utf8", {0x8790, 2}, {0x13, "\xE2\x89\x92"}},
        {"utf8", "windows-31j", {0xE28992, 3}, {0x12, "\x81\xE0"}},
        // One character of the source, two of the target: in four bytes, and in six.
        {"tscii", "utf-16be", {0xEC, 1}, {0x14, "\x0B\x95\x0B\xCD"}},
        {"tscii", "utf8", {0xEC, 1}, {0x33, "\xEF\xBF\xBD"}},
        // A letter of which the first byte is another: an accent, and a letter of its own.
        {"iso_6937", "utf8", {0xC141, 2}, {0x12, "À"}},
        {"utf8", "iso_6937", {0xC380, 2}, {0x12, "\xC1\x41"}},
        {"utf8", "tcvn5712-1", {0xC391, 2}, {0x12, "N\xB2"}},
        // Assigned after the charmap was made.
        {"utf8", "gb18030", {0xF09F9880, 4}, {0x14, "\x94\x39\xFC\x36"}},
    };
    for (const row &one : rows)
        EXPECT_EQ(entry_of(*all().made(one.from, one.to).table, one.source), one.expected)
            << one.from << " " << one.to;
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

    try {
        const conversion_side host = all().side("ibm930");
        const cvo_file to_host = all().made(all().side("utf8"), host);
        const cvo_file from_host = all().made(host, all().side("utf8"));
        EXPECT_EQ(entry_of(*from_host.table, {0x0E, 1}), (entry{0x90, ""}));
        EXPECT_EQ(entry_of(*from_host.shift_table, {0x0F, 1}), (entry{0x90, ""}));
        EXPECT_EQ(entry_of(*from_host.shift_table, {0x4481, 2}), (entry{0x13, "あ"}));
        EXPECT_EQ(entry_of(*to_host.table, {0xE38182, 3}), (entry{0x52, "\x44\x81"}));
        EXPECT_EQ(entry_of(*to_host.table, {0x41, 1}), (entry{0x11, "\xC1"}));
        std::size_t lost = 0;
        for_each_character(*from_host.shift_table,
                           [&](const byte_sequence &bytes, const unsigned char *value) {
                               const entry one = entry_at(value);
                               const charmap_entry *known = host.set->shifted->find(bytes);
                               if (!known || !known->reversible) return;
                               const entry back = entry_of(*to_host.table, utf8_bytes(known->code));
                               lost += back != entry{0x52, bytes.text()} ||
                                       one.bytes != utf8_bytes(known->code).text();
                           });
        EXPECT_EQ(lost, 0u);
    } catch (const missing_set &) {
        GTEST_SKIP() << "the host's converter has no IBM930";
    }
}

TEST(conversion, packs_hold_the_pairs_of_their_recipe_under_all_names) {
    const scratch_directory at;
    at.put("recipe/codesets", "UTF-8 57372\nIBM437 437\nEUC-JP 5050 57351\nNONE 60000\n");
    at.put("recipe/aliases", "");
    at.put("recipe/locales", "default C UTF-8\n");
    at.put("recipe/conversions", "each UTF-8\nnames UTF-8 utf8 utf-8\n");
    const std::string recipe = (at / "recipe").string(), root = (at / "pack").string();
    const char *const words[] = {"velc", "pack", "--recipe", recipe.c_str(), "-o", root.c_str()};
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    EXPECT_EQ(run(std::size(words), words), 0);
    EXPECT_NE(testing::internal::GetCapturedStdout().find(" 4 conversions"), std::string::npos);
    const std::string warnings = testing::internal::GetCapturedStderr();
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

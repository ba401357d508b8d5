// Looking up in sealed tables, against the tables that they were made from.
#include <gtest/gtest.h>

#include <random>

#include "objfile/lookup.h"
#include "support/make_locale.h"
#include "support/make_object.h"
#include "vels/errors.h"

using namespace vel;
using namespace vel_test;

namespace {

struct sealed_pair {
    sealed_pair(const characters &entries, uint16_t default_value, bool shared)
        : trie(build_table(entries, default_value, shared)), table(seal(trie)) {}
    ~sealed_pair() {
        vel_trie_free(trie);
        release_table(table);
    }
    vel_trie *trie;
    const sealed_table *table;
};

// What the walk by the definition finds: the value, or -1, and the bytes used.
std::pair<int32_t, int32_t> walk(const vel_trie *trie, const std::string &bytes) {
    const vel_trie_node *node = trie->root;
    for (size_t i = 0; i < bytes.size(); ++i) {
        unsigned char b = static_cast<unsigned char>(bytes[i]);
        unsigned char state = node->state ? node->state[b] : 0;
        if (state == byte_terminal) {
            const unsigned char *value = node->page ? node->page + 2 * b : trie->default_value;
            return {value[0] | value[1] << 8, static_cast<int32_t>(i) + 1};
        }
        if (state != byte_more) return {-1, static_cast<int32_t>(i) + 1};
        node = node->children[node->index[b]];
    }
    return {-2, static_cast<int32_t>(bytes.size())}; // more bytes are needed
}

void compare(const sealed_pair &pair, const std::string &bytes) {
    auto [value, used] = walk(pair.trie, bytes);
    int32_t error = 0;
    found bounded =
        vel_trie_find_n(&error, *pair.table, bytes.data(), static_cast<int32_t>(bytes.size()));
    ASSERT_EQ(bounded.ok, value >= 0);
    ASSERT_EQ(bounded.used, used);
    ASSERT_EQ(error, value >= 0 ? 0 : value == -2 ? VEL_EINVAL : VEL_EILSEQ);
    if (value == -2) return;
    found open = vel_trie_find(&error, *pair.table, bytes.data());
    ASSERT_EQ(open.ok, value >= 0);
    ASSERT_EQ(open.used, used);
    ASSERT_EQ(vel_trie_char_length(&error, *pair.table, bytes.data()), value >= 0 ? used : 0);
    vel_mbkey key = key_of(bytes.substr(0, 4));
    ASSERT_EQ(vel_trie_find_key(*pair.table, key).ok, value >= 0 && key.length == used + 0u);
    if (value < 0) return;
    ASSERT_EQ(open.value, value);
    ASSERT_EQ(bounded.value, value);
}

// By code: the bytes that its magnitude asks for.
void compare_code(const sealed_pair &pair, vel_wchar code) {
    const std::string bytes = pack(code, static_cast<size_t>(pair.table->shortest));
    auto [value, used] = walk(pair.trie, bytes);
    int32_t error = 0;
    found by_code = vel_trie_find_code(&error, *pair.table, code);
    ASSERT_EQ(by_code.ok, value >= 0 && used + 0u == bytes.size()) << std::hex << code;
    ASSERT_EQ(error, by_code.ok ? 0 : VEL_EILSEQ);
    if (by_code.ok) {
        ASSERT_EQ(by_code.value, value);
    }
}

TEST(sealed, finds_what_the_trie_holds) {
    std::mt19937 random(17);
    for (bool shared : {false, true}) {
        for (size_t shortest : {1, 2, 3, 4}) {
            characters entries;
            for (int i = 0; i < 2000; ++i) {
                size_t length = shortest + random() % (5 - shortest);
                std::string bytes(1, static_cast<char>(length * 0x38 - 0x30 + random() % 0x30));
                while (bytes.size() < length) bytes += static_cast<char>(0x78 + random() % 12);
                entries[bytes] = static_cast<uint16_t>(random());
            }
            sealed_pair pair(entries, 77, shared);
            ASSERT_NE(pair.table, nullptr);
            for (const auto &[bytes, value] : entries) {
                compare(pair, bytes);
                for (size_t cut = 1; cut < bytes.size(); ++cut) compare(pair, bytes.substr(0, cut));
                compare(pair, bytes + "x");
                vel_mbkey key = key_of(bytes);
                compare_code(pair, vel_mbkey_value(&key));
            }
            for (int i = 0; i < 20000; ++i) {
                std::string bytes;
                for (int b = 0; b < 4; ++b)
                    bytes += static_cast<char>(random() % 3 ? 0x70 + random() % 24 : random());
                compare(pair, bytes);
                compare_code(pair, static_cast<vel_wchar>(random()) >> (8 * (i % 4)));
            }
        }
    }
}

TEST(sealed, tables_and_texts_of_nothing) {
    sealed_pair pair({{"A", 1}}, 0, true);
    int32_t error = 0;
    EXPECT_FALSE(vel_trie_find_n(&error, *pair.table, "A", 0).ok);
    EXPECT_EQ(error, VEL_EINVAL);
    EXPECT_FALSE(vel_trie_find_code(&error, empty_table, 'A').ok);
    release_table(&empty_table);
}

TEST(sealed, shapes_are_told_from_the_table) {
    characters ascii;
    for (vel_wchar c = 0; c < 0x80; ++c) ascii[pack(c)] = 1;
    characters all = ascii;
    for (uint32_t c = 0x80; c < 0x110000; ++c) {
        if (c < 0xD800 || c > 0xDFFF) all[pack(utf8(c))] = static_cast<uint16_t>(c % 300 == 0);
    }
    const auto with = [](characters entries, const char *more) {
        entries[more] = 1;
        return entries;
    };
    const auto without = [](characters entries, uint32_t c) {
        entries.erase(pack(utf8(c)));
        return entries;
    };
    const struct {
        const char *name;
        characters entries;
        table_shape shape;
    } cases[] = {
        {"ASCII", ascii, table_shape::single_byte},
        {"two bytes, ASCII trails", with(ascii, "\x81\x40"), table_shape::ascii_transparent},
        {"a lead byte below 0x80", {{"a", 1}, {"\x1B$", 1}}, table_shape::general},
        {"two bytes only", {{"ab", 1}}, table_shape::general},
        {"UTF-8", all, table_shape::utf8},
        {"without a last character", without(all, 0x10FFFF), table_shape::ascii_transparent},
        {"without one in the middle", without(all, 0x4E00), table_shape::ascii_transparent},
        {"with a surrogate", with(all, "\xED\xA0\x80"), table_shape::ascii_transparent},
        {"with an overlong form", with(all, "\xC0\x80"), table_shape::ascii_transparent},
        {"with a trail byte too low", with(all, "\xE4\x7F\x80"), table_shape::ascii_transparent},
    };
    for (const auto &one : cases) {
        for (bool shared : {false, true}) {
            if (!shared && one.entries.size() > 1000 && one.shape != table_shape::utf8) continue;
            sealed_pair pair(one.entries, 0, shared);
            EXPECT_EQ(pair.table->shape, one.shape) << one.name << (shared ? ", shared" : "");
        }
    }
}

} // namespace

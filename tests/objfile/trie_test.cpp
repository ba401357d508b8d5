// Building, writing, reading and sharing tables.
#include <gtest/gtest.h>

#include <random>

#include "support/make_object.h"
#include "support/text_stream.h"
#include "vels/errors.h"

using namespace vel;
using namespace vel_test;

namespace {

int32_t insert(vel_trie *table, const char *bytes, uint16_t value = 1) {
    vel_mbkey key = key_of(bytes);
    return vel_trie_insert(table, &key, &value);
}

// Reads a table; null with the error number when it is refused.
vel_trie *read(const std::string &text, int32_t *error, int32_t max_key = 4) {
    text_stream stream(text);
    vel_trie *table = vel_trie_create(2, 0, nullptr);
    int32_t result = vel_trie_read(stream.reader(), table, max_key, read_trie_value16);
    *error = vel_trie_error(table);
    EXPECT_EQ(result, *error ? -1 : 0);
    if (result == 0) return table;
    vel_trie_free(table);
    return nullptr;
}

int32_t value_in(const vel_trie *table, const std::string &bytes) {
    vel_mbkey key = key_of(bytes);
    const unsigned char *found = vel_trie_built_value(table, &key);
    return found ? found[0] | found[1] << 8 : -1;
}

std::string written(vel_trie *table) {
    string_sink sink;
    vel_trie_write(sink, table, write_trie_value16);
    return sink.text;
}

// Keys of one to four bytes, none the prefix of another: the first byte tells the length.
characters random_characters(std::mt19937 &random, int count) {
    characters entries;
    for (int i = 0; i < count; ++i) {
        size_t length = 1 + random() % 4;
        std::string bytes(1, static_cast<char>(length * 0x40 - 0x40 + random() % 0x40));
        while (bytes.size() < length) bytes += static_cast<char>(0x30 + random() % 20);
        entries[bytes] = static_cast<uint16_t>(random() % 5);
    }
    return entries;
}

TEST(trie, no_key_is_the_prefix_of_another) {
    vel_trie *table = vel_trie_create(2, 0, nullptr);
    EXPECT_EQ(insert(table, "A"), 0);
    EXPECT_EQ(insert(table, "AB"), -1);
    EXPECT_EQ(insert(table, "BCD"), 0);
    EXPECT_EQ(insert(table, "BC"), -1);
    EXPECT_EQ(insert(table, "B"), -1);
    EXPECT_EQ(insert(table, ""), -1);
    vel_mbkey five{5, {}};
    EXPECT_EQ(vel_trie_insert(table, &five, nullptr), -1);
    EXPECT_EQ(insert(table, "BCE"), 0);
    EXPECT_EQ(table->longest, 3);
    EXPECT_EQ(table->shortest, 1);
    EXPECT_EQ(vel_trie_error(table), 0);
    vel_trie_free(table);
}

TEST(trie, written_and_read_back) {
    std::mt19937 random(5);
    for (bool shared : {false, true}) {
        for (int count : {1, 40, 3000}) {
            characters entries = random_characters(random, count);
            std::string text = table_text(entries, 3, shared);
            int32_t error;
            vel_trie *table = read(text, &error);
            ASSERT_NE(table, nullptr) << error;
            for (const auto &[bytes, value] : entries) ASSERT_EQ(value_in(table, bytes), value);
            EXPECT_EQ(written(table), text) << "the same text again";
            vel_trie_free(table);
        }
    }
    int32_t error;
    vel_trie *single_bytes = read(table_text({{"A", 2}}, 9), &error);
    ASSERT_NE(single_bytes, nullptr);
    EXPECT_EQ(value_in(single_bytes, "\xFF"), 9) << "every byte is accepted";
    vel_trie_free(single_bytes);
}

TEST(trie, equal_blocks_are_shared_once) {
    characters entries;
    for (int lead = 0x80; lead < 0x90; ++lead) {
        for (int trail = 0x40; trail < 0x60; ++trail) {
            entries[{static_cast<char>(lead), static_cast<char>(trail)}] =
                static_cast<uint16_t>(lead % 2 ? trail : 0);
        }
    }
    vel_trie *table = build_table(entries, 0, true);
    EXPECT_EQ(table->state_count, 2);
    EXPECT_EQ(table->page_count, 1);
    EXPECT_EQ(written(table).substr(0, 44), "2 2 3 0000\n2 1\n8000101001\n0000000\n4000102004");
    vel_trie_free(table);
}

// The lines of the page of a table of one-byte characters with these values from 'a' on.
std::string page_lines(const std::vector<uint16_t> &values) {
    characters entries = {{"zz", 0}}; // so that not every byte is made a character
    for (size_t i = 0; i < values.size(); ++i) {
        entries[std::string(1, static_cast<char>('a' + i))] = values[i];
    }
    std::string text = table_text(entries, 0, false);
    size_t page = text.find("0000000\n") + 8;
    return text.substr(page, text.find("0000000\n", page) - page);
}

TEST(trie, how_runs_are_chosen) {
    const std::pair<std::vector<uint16_t>, const char *> cases[] = {
        {{1, 2, 3}, "61003001000100020003\n"},
        {{5, 5, 5, 5, 5}, "610010050005\n"}, // four equal ones repeat
        {{5, 5, 5}, "61003001000500050005\n"},
        // Cut back to the last that is not the default.
        {{1, 0, 2, 0, 0, 0, 0, 3}, "61003001000100000002\n680010010003\n"},
        // The first three of the next stretch stay literal.
        {{1, 5, 5, 5, 5, 5, 5, 5}, "610040010001000500050005\n650010040005\n"},
        {{0, 0, 4}, "630010010004\n"},
    };
    for (const auto &[values, lines] : cases) EXPECT_EQ(page_lines(values), lines);
}

TEST(trie, refused_tables) {
    const std::string plain = "2 1 1 0000\n1 1\n";
    const std::string shared = "2 1 3 0000\n1 1\n4100100104\n0000000\n410010010007\n0000000\n";
    const struct {
        const char *name;
        std::string text;
        int32_t error;
    } cases[] = {
        {"good", plain + "4100100104\n0000000\n410010010007\n0000000\n", 0},
        {"good, shared", shared + "1 1 0 0\n", 0},
        {"long keys", "5 1 1 0000\n", VEL_ELONGKEY},
        {"shortest above longest", "1 2 1 0000\n1 0\n0000000\n", VEL_EBADFILE},
        {"no shortest", "1 0 1 0000\n1 0\n0000000\n", VEL_EBADFILE},
        {"state", plain + "4100100102\n0000000\n", VEL_EBADFILE},
        {"run beyond the end", plain + "ff0020010404\n0000000\n", VEL_EBADFILE},
        {"repeat beyond the end", plain + "0000110104\n0000000\n", VEL_EBADFILE},
        // Fields of odd characters whose product wraps around to 0.
        {"wrapping run", plain + "00\xFF\x0F\x10\xFF\x0F\x10" + std::string(90000, '0'),
         VEL_EBADFILE},
        {"deeper than its keys", "1 1 1 0000\n1 0\n4100100101\n0000000\n1 0\n0000000\n",
         VEL_EBADFILE},
        {"state index", shared + "1 1 1 0\n", VEL_EBADFILE},
        {"page index", shared + "1 1 0 1\n", VEL_EBADFILE},
        {"negative index", shared + "1 1 -1 0\n", VEL_EBADFILE},
        {"more tables than there are", "2 1 3 0000\n2000000000 1\n4100100104\n0000000\n",
         VEL_EBADFILE},
        {"nothing", "", VEL_EBADFILE},
    };
    for (const auto &one : cases) {
        int32_t error;
        vel_trie_free(read(one.text, &error));
        EXPECT_EQ(error, one.error) << one.name;
    }
    int32_t error;
    vel_trie_free(read(plain, &error, 1));
    EXPECT_EQ(error, VEL_ELONGKEY) << "of what the reader allows";
}

TEST(trie, a_table_cut_anywhere_is_refused) {
    std::mt19937 random(9);
    for (bool shared : {false, true}) {
        std::string text = table_text(random_characters(random, 60), 0, shared);
        while (text.back() == '\n') text.pop_back();
        // The end line may lack its last zero, and a last index may lose digits.
        size_t needed = text.size() - (shared ? 2 : 1);
        for (size_t length = 0; length < needed; ++length) {
            int32_t error;
            vel_trie_free(read(text.substr(0, length), &error));
            ASSERT_EQ(error, VEL_EBADFILE) << length << " of " << text.size();
        }
    }
}

TEST(mbkey, sums_carry_and_keep_their_length) {
    const struct {
        vel_mbkey key;
        int32_t delta;
        uint32_t sum;
    } cases[] = {
        {{2, {0x00, 0xFF}}, 1, 0x0100},         {{1, {0xFF}}, 1, 0},
        {{3, {0, 0, 0}}, -256, 0xFFFF00},       {{4, {1, 2, 3, 4}}, 0x01010101, 0x02030405},
        {{2, {0xFF, 0xFF}}, INT32_MAX, 0xFFFE}, {{4, {0, 0, 0, 0}}, INT32_MIN, 0x80000000},
    };
    for (const auto &one : cases) {
        vel_mbkey sum;
        vel_mbkey_add(&one.key, one.delta, &sum);
        EXPECT_EQ(vel_mbkey_value(&sum), one.sum);
        EXPECT_EQ(sum.length, one.key.length);
    }
}

} // namespace

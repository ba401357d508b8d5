// The token readers, over blocks and through hooks.
#include <gtest/gtest.h>

#include <functional>
#include <random>

#include "support/host.h"
#include "support/text_stream.h"

using namespace vel_test;
using vel::text_reader;

namespace {

// Runs a check with streams read in blocks, then with every byte through a hook.
void both_ways(const std::function<void()> &check) {
    test_host host;
    check();
    host.hook_streams();
    SCOPED_TRACE("through hooks");
    check();
}

TEST(text_reader, integers) {
    const struct {
        const char *text;
        int32_t value;
        const char *rest;
    } cases[] = {
        {" \t\n42 x", 42, " x"},
        {"-7\n", -7, "\n"},
        {"+7", 7, ""},
        {"x12 ", 0, " "},
        {"-x", 0, "x"},
        {"1-2", 1, "-2"},
        {"99999999999", INT32_MAX, ""},
        {"-99999999999", INT32_MIN, ""},
        {"007", 7, ""},
        {"0000000000000000000000000000000000000000009", 0, ""}, // the 40th digit was not reached
    };
    both_ways([&] {
        for (const auto &one : cases) {
            text_stream stream(one.text);
            EXPECT_EQ(vel::vel_read_int(stream.reader()), one.value) << one.text;
            EXPECT_FALSE(stream.reader().truncated());
            EXPECT_EQ(stream.rest(), one.rest) << one.text;
        }
        text_stream nothing("  ");
        EXPECT_EQ(vel::vel_read_int(nothing.reader()), 0);
        EXPECT_TRUE(nothing.reader().truncated());
    });
}

TEST(text_reader, floating_numbers) {
    const std::pair<const char *, double> cases[] = {
        {" 2.5\n", 2.5}, {"4", 4}, {"-1.25e2", -125}, {"+1e-2", 0.01},
        {".5", 0.5},     {"", 0},  {"x", 0},
    };
    both_ways([&] {
        for (auto [text, value] : cases) {
            text_stream stream(text);
            EXPECT_DOUBLE_EQ(vel::vel_read_float(stream.reader()), value) << text;
        }
        text_stream stream(std::string(100, '0') + "1");
        vel::vel_read_float(stream.reader());
        EXPECT_EQ(stream.rest().size(), 21u) << "80 characters are taken";
    });
}

TEST(text_reader, hexadecimal_fields) {
    both_ways([] {
        text_stream stream("0aFf0000000\n1G ?q-");
        text_reader &in = stream.reader();
        EXPECT_EQ(vel::vel_read_hex(in, 4), 0x0AFFu);
        // The line that ends a run list: the last field takes the newline, as its code.
        EXPECT_EQ(vel::vel_read_hex(in, 2), 0u);
        EXPECT_EQ(vel::vel_read_hex(in, 3), 0u);
        EXPECT_EQ(vel::vel_read_hex(in, 3), 10u);
        EXPECT_EQ(vel::vel_read_hex(in, 2), 0x10u + 'G');
        EXPECT_EQ(vel::vel_read_hex(in, 2), 0x200u + '?');
        EXPECT_EQ(vel::vel_read_hex_byte(in), 0) << "anything else is 0 here";
        EXPECT_FALSE(in.truncated());
        EXPECT_EQ(vel::vel_read_hex_byte(in), 0);
        EXPECT_TRUE(in.truncated());
    });
}

TEST(text_reader, fields_in_bulk) {
    both_ways([] {
        std::string text;
        std::vector<uint16_t> expected;
        std::mt19937 random(3);
        for (int i = 0; i < 5000; ++i) {
            char field[8];
            uint16_t value = static_cast<uint16_t>(random());
            text.append(random() % 50 ? 1 : random() % 9, random() % 3 ? ' ' : '\n');
            snprintf(field, sizeof field, random() % 2 ? "%04x" : "%04X", value);
            text += field;
            expected.push_back(value);
        }
        text_stream stream(text + " 00g0 1");
        std::vector<uint16_t> values(expected.size());
        vel::read_hex16_fields(stream.reader(), values.data(), 5000);
        EXPECT_EQ(values, expected);
        uint16_t odd[3] = {1, 1, 1};
        vel::read_hex16_fields(stream.reader(), odd, 3);
        EXPECT_EQ(odd[0], 'g' * 16);
        EXPECT_TRUE(stream.reader().truncated());
        EXPECT_EQ(odd[2], 0);
    });
}

// Against the plain loop over lines: markers at every place in lines of every length, and across
// the ends of blocks.
TEST(text_reader, skipping_to_a_line) {
    const char marker[] = "### X\n";
    std::mt19937 random(11);
    int found = 0;
    for (int round = 0; round < 400; ++round) {
        std::string text;
        size_t wanted = random() % 4 ? 300 : 70000;
        while (text.size() < wanted) {
            const std::string pieces[] = {marker, "### X", "#", std::string(random() % 40, '\n')};
            const size_t piece = random() % 8;
            text += piece < 4 ? pieces[piece] : std::string(random() % 70, 'a');
        }
        int32_t size = round % 3 ? 32 : 8;
        text_stream skipped(text), plain(text);
        for (bool more = true; more;) {
            char line[32];
            bool expected = false;
            while (!expected && plain.reader().gets(line, size))
                expected = strcmp(line, marker) == 0;
            more = skipped.reader().skip_to_line(marker, size);
            ASSERT_EQ(more, expected) << round;
            found += more;
        }
    }
    EXPECT_GT(found, 1000);
}

} // namespace

// Text to symbolic names and back.
#include <cstring>

#include "symbols/charmap_fixture.h"
#include "vels/symbols.h"

using namespace vel_test;
using namespace std::string_literals;

namespace {

const std::string small = std::string(header) + lines;

struct outcome {
    int32_t result, error;
    std::string output; // up to its terminator
    ptrdiff_t moved;    // the input position

    bool operator==(const outcome &) const = default;
};
std::ostream &operator<<(std::ostream &out, const outcome &one) {
    return out << one.result << ", error " << one.error << ", \"" << one.output << "\", moved "
               << one.moved;
}

template <typename Text, typename Unit, typename Function, typename... Length>
outcome run(vel_charmap *charmap, Function function, const Text &text, int32_t size,
            Length... length) {
    std::vector<Unit> output(64, 'x');
    auto cursor = text.c_str();
    *reinterpret_cast<int32_t *>(charmap) = 0;
    int32_t result = function(charmap, output.data(), size, &cursor, length...);
    EXPECT_EQ(output[static_cast<size_t>(size)], 'x') << "written beyond the output";
    std::string written;
    for (size_t i = 0; output[i] != 0 && output[i] != 'x'; ++i) {
        for (int shift = 24; shift >= 0; shift -= 8) {
            auto byte = static_cast<uint32_t>(output[i]) >> shift & 0xFF;
            if (byte && (sizeof(Unit) > 1 || shift == 0)) written += static_cast<char>(byte);
        }
    }
    return {result, error_of(charmap), written, cursor - text.c_str()};
}

TEST_F(charmap_test, text_to_names) {
    vel_charmap *charmap = keep(small);
    const struct {
        std::string text;
        int32_t length, size;
        outcome expected;
    } cases[] = {
        {"A", 0, 63, {4, 0, "<A>", 1}}, // of two names the last line
        {"", 0, 63, {1, 0, "", 0}},
        {"<>\\", 0, 63, {30, 0, "<less\\<than><more>than><b\\\\s>", 3}},
        {"\xA1\xA1\xA1\xA2\xA1\xFE\xA2\xA2", 0, 63, {30, 0, "<single><j0102><j0194><j0202>", 8}},
        {"A\0A"s, 3, 63, {12, 0, "<A><NUL><A>", 3}},
        {"AAA", 2, 63, {7, 0, "<A><A>", 2}},
        {"AA", 0, 7, {7, 0, "<A><A>", 2}}, // exactly, and one byte short
        {"AA", 0, 6, {4, 0, "<A>", 2}},
        {"A\xA1\xA1"
         "A",
         0,
         8,
         {4, 0, "<A>", 4}}, // nothing behind what did not fit
        {"A", 0, 0, {0, 0, "", 1}},
        {"Aa", 2, 63, {-1, VEL_EILSEQ, "<A>", 1}},
        {"Aa", 2, 3, {-1, VEL_EILSEQ, "", 1}}, // found though nothing is written any more
        {"A\xA1", 2, 63, {-1, VEL_EINVAL, "<A>", 1}},
        {"Aa", 0, 63, {-1, VEL_ESYMNAME, "<A>", 1}},
    };
    for (const auto &one : cases) {
        SCOPED_TRACE(one.text);
        auto found = run<std::string, char>(charmap, vel_mbstosyms, one.text, one.size, one.length);
        EXPECT_EQ(found, one.expected);
    }
}

TEST_F(charmap_test, wide_text_to_names) {
    vel_charmap *charmap = keep(small);
    using text = std::u32string;
    const struct {
        text values;
        int32_t length, size;
        outcome expected;
    } cases[] = {
        {U"", 0, 63, {0, 0, "", 0}},
        {{0xA1A1, 'A', 0xA1FE}, 0, 63, {19, 0, "<single><A><j0194>", 3}},
        {{'A', 0, 'A'}, 3, 63, {12, 0, "<A><NUL><A>", 3}},
        {{'A', 0xA1A1, 'A'}, 2, 5, {4, 0, "<A>", 2}},
        {{0xA1A1, 'a', 'A'}, 0, 63, {-1, VEL_EILSEQ, "<single>", 1}},
        {{'A', 0xA1}, 0, 63, {-1, VEL_EINVAL, "<A>", 1}},
    };
    const auto convert = [](vel_charmap *map, char *output, int32_t size, const char32_t **input,
                            int32_t length) {
        return vel_wcstosyms(map, output, size, reinterpret_cast<const vel_wchar **>(input),
                             length);
    };
    for (const auto &one : cases) {
        auto found = run<text, char>(charmap, convert, one.values, one.size, one.length);
        EXPECT_EQ(found, one.expected) << "first " << static_cast<uint32_t>(one.values[0]);
    }
    host.fail_allocation(1);
    EXPECT_EQ((run<text, char>(charmap, convert, text(300, 'A'), 63, 0)),
              (outcome{-1, VEL_ENOMEM, "", 0}));
}

TEST_F(charmap_test, names_to_text) {
    vel_charmap *charmap = keep(small);
    const struct {
        std::string names;
        int32_t size;
        outcome expected;
    } cases[] = {
        {"", 1, {1, 0, "", 0}},
        {"", 0, {-1, VEL_EBADLEN, "", 0}},
        {"<A><letter><less\\<than><b\\\\s><\\A>", 63, {6, 0, "AA<\\A", 33}},
        {"<more>than>", 63, {-1, 0, "", 0}},
        {"<more\\>than>", 63, {2, 0, ">", 12}},
        {"<j0107><j0101><j0194><j0201>", 63, {9, 0, "\xA1\xA7\xA1\xA1\xA1\xFE\xA2\xA1", 28}},
        {"<u0000002><k9><twice>",
         63,
         {6, 0,
          "\xA1\xA3\xA1\xA2"
          "C",
          21}},
        {"<k10>", 63, {-1, 0, "", 0}}, // more digits than the range has
        {"<j0195>", 63, {-1, 0, "", 0}},
        {"<j0100>", 63, {-1, 0, "", 0}},
        {"<u99999999999999999999>", 63, {-1, 0, "", 0}},
        {"<A>" + ("<" + std::string(500, 'n') + ">"), 63, {-1, 0, "A", 3}},
        {"<A><A", 63, {-1, 0, "A", 3}},
        {"<A><>", 63, {-1, 0, "A", 3}},
        {"<A><single>", 4, {4, 0, "A\xA1\xA1", 11}},
        {"<A><single>", 3, {-1, VEL_EBADLEN, "A", 3}},
    };
    for (const auto &one : cases) {
        SCOPED_TRACE(one.names);
        EXPECT_EQ((run<std::string, char>(charmap, vel_symstombs, one.names, one.size)),
                  one.expected);
        if (one.expected.error != 0) continue;
        outcome wide = run<std::string, vel_wchar>(charmap, vel_symstowcs, one.names, one.size);
        EXPECT_EQ(wide.output, one.expected.output);
        EXPECT_EQ(wide.moved, one.expected.moved);
        EXPECT_EQ(wide.result < 0, one.expected.result < 0);
    }
    EXPECT_EQ((run<std::string, vel_wchar>(charmap, vel_symstowcs, "<A><single>"s, 3)),
              (outcome{3, 0, "A\xA1\xA1", 11}));
    EXPECT_EQ((run<std::string, vel_wchar>(charmap, vel_symstowcs, "<A><single>"s, 2)),
              (outcome{-1, VEL_EBADLEN, "A", 3}));
}

TEST_F(charmap_test, all_names_of_a_character) {
    const std::string tall(126, '<'), fits(69, '\\');
    vel_charmap *charmap = keep(small + "s 0 " + tall + " 2 a1 a2\ns 0 " + fits + " 2 a1 a2\n");
    char slots[8][VEL_SYMBOL_SLOT];
    const auto list = [&](const char *bytes, int32_t length, int32_t count) {
        for (auto &slot : slots) strcpy(slot, "-");
        int32_t found = vel_mbtosymlist(charmap, slots, count, bytes, length);
        std::string text = std::to_string(found);
        for (int32_t i = 0; i < found && i < 8; ++i) text += " "s + slots[i];
        return text;
    };
    EXPECT_EQ(list("A", 1, 8), "2 <A> <letter>");
    EXPECT_EQ(list("A", 1, 1), "2 <A> -");
    EXPECT_EQ(list("\xA1\xA1", 2, 8), "3 <single> <j0101> <u0000000>");
    EXPECT_EQ(list("\xA1\xA2", 2, 8),
              "5 <" + std::string(138, '\\') + "> - <j0102> <k9> <u0000001>");
    EXPECT_EQ(list("\xA1\xA4", 2, 8), "2 <j0104> <k11>");
    EXPECT_EQ(vel_mbtosymlist(charmap, nullptr, 0, "\xA1\xA1", 2), 3);
    EXPECT_EQ(vel_mbtosymlist(charmap, nullptr, 1, "A", 1), -1);
    EXPECT_EQ(error_of(charmap), VEL_EBADLEN);
    EXPECT_EQ(list("a", 1, 8), "-1");
    EXPECT_EQ(error_of(charmap), VEL_EILSEQ);
    EXPECT_EQ(list("\xA1", 1, 8), "-1");
    EXPECT_EQ(error_of(charmap), VEL_EINVAL);
}

} // namespace

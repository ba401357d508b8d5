// Every conversion of the standard pack: there and back, directly and by way of UTF-8, in pieces,
// and for input that is no text.
#include <gtest/gtest.h>

#include <random>
#include <unistd.h>

#include "support/pack_conversions.h"
#include "vels/errors.h"

using namespace vel_test;

namespace {

constexpr char32_t code_end = 0x40000;

struct character {
    std::string bytes; // with the marks of its state around them
    std::string text;  // in UTF-8
};

// In how many characters bytes are read that are not what is written. All are marked so in the
// charmaps but those of ARMSCII-8, ISIRI-3342, one of EUC-TW and those of IBM1371, IBM1390, IBM1399
// and IBM937, which are twice in the code set.
struct one_way_bytes {
    std::string_view code_set;
    size_t count;
};
constexpr one_way_bytes one_way[] = {
    {"ARMSCII-8", 5}, {"BIG5", 10},       {"BIG5-HKSCS", 8}, {"EUC-JP-MS", 24},
    {"EUC-TW", 5868}, {"IBM1132", 1},     {"IBM1133", 1},    {"IBM1160", 4},
    {"IBM1161", 4},   {"IBM1371", 190},   {"IBM1390", 28},   {"IBM1399", 28},
    {"IBM937", 189},  {"ISIRI-3342", 52}, {"TSCII", 1},      {"WINDOWS-31J", 398},
};

// A code set, and all characters that it has in UTF-8.
class code_set {
public:
    code_set(const std::vector<pack_conversion> &pack, const std::string &of)
        : name(of), to_utf8(open_from(pack, of, "UTF-8")), from_utf8(open_from(pack, "UTF-8", of)) {
        if (!to_utf8 || !from_utf8) return;
        marks = marks_of(to_utf8);
        if (is_unicode_form(name)) {
            read_form();
        } else {
            read_state("", "");
            if (!marks.begin.empty()) read_state(marks.begin, marks.end);
        }
    }

    const std::string name;
    converter to_utf8, from_utf8;
    shift_marks marks;
    std::vector<character> characters;

private:
    void read_form() {
        for (char32_t code = 0; code < code_end; ++code) {
            if (code >= 0xD800 && code < 0xE000) continue;
            const converted written = from_utf8.convert(utf8_text(code));
            if (written.is_exact()) characters.push_back({written.output, utf8_text(code)});
        }
    }
    void read_state(std::string_view begin, std::string_view end) {
        std::string text(begin);
        const auto step = [&](auto &&again, int length) -> void {
            text.push_back('\0');
            for (int byte = 0; byte < 256; ++byte) {
                text.back() = static_cast<char>(byte);
                const converted read = to_utf8.convert(text);
                if (read.error == VEL_EINVAL && length < 4) again(again, length + 1);
                if (!read.is_exact() || read.output.empty()) continue;
                // What ends the state itself is none of its characters.
                const std::string ended = text + std::string(end);
                if (to_utf8.convert(ended) == converted{0, ended.size(), read.output, false})
                    characters.push_back({ended, read.output});
            }
            text.pop_back();
        };
        step(step, 1);
    }
};

class standard_pack : public testing::Test {
protected:
    void SetUp() override { ASSERT_GT(pack_.size(), 700u) << "in " << VELS_TEST_DATA_ROOT; }

    const std::vector<pack_conversion> pack_ = pack_conversions();
};

// All characters, with few and with many of the first ones, which are ASCII mostly, in between.
template <typename Member> std::string joined(const code_set &of, Member member) {
    std::string all;
    const size_t n = of.characters.size(), first = std::min<size_t>(n, 128);
    for (size_t i = 0; i < n; ++i) {
        all += of.characters[i].*member;
        for (size_t k = i % 64 ? i % 3 : 40; k > 0; --k)
            all += of.characters[(i + 5 * k) % first].*member;
    }
    return all;
}

void expect_there_and_back(const code_set &of) {
    size_t others = 0, lost = 0;
    for (const character &one : of.characters) {
        const converted back = of.from_utf8.convert(one.text);
        others += back.output != one.bytes;
        const converted again = of.to_utf8.convert(back.output);
        if (back.is_exact() && again.is_exact() && again.output == one.text) continue;
        if (lost++ == 0)
            ADD_FAILURE() << testing::PrintToString(one.bytes) << " is "
                          << testing::PrintToString(one.text) << ", written as "
                          << testing::PrintToString(back.output);
    }
    EXPECT_EQ(lost, 0u);
    const auto known = std::ranges::find(one_way, of.name, &one_way_bytes::code_set);
    EXPECT_EQ(others, known == std::end(one_way) ? 0 : known->count);
}

// All characters in one text become what they become one by one.
void expect_whole_text(const code_set &of) {
    const std::string bytes = joined(of, &character::bytes), text = joined(of, &character::text);
    const converted read = of.to_utf8.convert(bytes), written = of.from_utf8.convert(text);
    EXPECT_TRUE(read.is_exact() && read.output == text);
    const converted again = of.to_utf8.convert(written.output);
    EXPECT_TRUE(written.is_exact() && again.is_exact() && again.output == text);
}

// What both have is the same whichever way it goes, and nothing else is passed on.
void expect_as_by_utf8(const code_set &of, const converter &direct, const converter &from_utf8) {
    for (const character &one : of.characters) {
        const converted straight = direct.convert(one.bytes), around = from_utf8.convert(one.text);
        if (straight.error == 0 && around.error == 0 &&
            straight.substituted == around.substituted &&
            (straight.substituted || straight.output == around.output))
            continue;
        ADD_FAILURE() << testing::PrintToString(one.bytes) << " becomes "
                      << testing::PrintToString(straight.output) << ", by way of UTF-8 "
                      << testing::PrintToString(around.output);
        return;
    }
}

TEST_F(standard_pack, characters_go_there_and_back) {
    size_t sets = 0, seen = 0;
    for (const pack_conversion &one : pack_) {
        if (one.to != "UTF-8") continue;
        SCOPED_TRACE(one.from);
        const code_set from(pack_, one.from);
        ASSERT_FALSE(from.characters.empty());
        ++sets;
        seen += from.characters.size();
        expect_there_and_back(from);
        expect_whole_text(from);
        for (const pack_conversion &pair : pack_) {
            if (pair.from != one.from || pair.to == "UTF-8") continue;
            SCOPED_TRACE("to " + pair.to);
            expect_as_by_utf8(from, converter(pair.file), open_from(pack_, "UTF-8", pair.to));
        }
    }
    std::printf("%zu characters of %zu code sets\n", seen, sets);
}

// Text in which the states change, split at every byte, with the state kept.
void expect_pieces(const converter &by, const std::string &text) {
    const converted whole = by.convert(text);
    ASSERT_EQ(whole.error, 0);
    const size_t room = whole.output.size();
    for (size_t split = 1; split < text.size(); ++split) {
        vel_cv_state state{1, 0, 0, 0};
        const converted first = by.convert(text.substr(0, split), room, &state);
        ASSERT_EQ(first.error, first.used == split ? 0 : VEL_EINVAL);
        state.reset = 0;
        state.flush = 1;
        const converted rest = by.convert(text.substr(first.used), room, &state);
        ASSERT_EQ(first.output + rest.output, whole.output) << "split at " << split;
    }
}

TEST_F(standard_pack, pieces_of_text_with_shifts_make_the_whole) {
    std::vector<std::string> shifted;
    for (const pack_conversion &one : pack_)
        if (one.to == "UTF-8" && !marks_of(converter(one.file)).begin.empty())
            shifted.push_back(one.from);
    EXPECT_GT(shifted.size(), 10u);

    const uint32_t seed = 20261121;
    std::mt19937 random(seed);
    for (const pack_conversion &one : pack_) {
        const bool from_shifts = std::ranges::count(shifted, one.from);
        if (!from_shifts && !std::ranges::count(shifted, one.to)) continue;
        SCOPED_TRACE(one.from + " to " + one.to);
        const code_set set(pack_, one.from == "UTF-8" ? one.to : one.from);
        const converter by(one.file);
        for (int round = 0; round < 100; ++round) {
            std::string text;
            for (int i = 0; i < 24; ++i) {
                const size_t most = random() % 2 ? 200 : set.characters.size();
                text += set.characters[random() % most].text;
            }
            expect_pieces(by, one.from == "UTF-8" ? text : set.from_utf8.convert(text).output);
        }
    }
}

// Whatever the bytes and the room: everything is read or there is a reason why not, nothing is read
// that is not written, and less room only means less of the same.
void expect_sound(const converter &by, const std::string &text, size_t room) {
    const converted full = by.convert(text), cut = by.convert(text, room);
    const bool reason = full.error == 0 ? full.used == text.size()
                                        : full.error == VEL_EILSEQ || full.error == VEL_EINVAL;
    const bool expected = full.output.size() <= room
                              ? cut == full
                              : cut.error == VEL_E2BIG && cut.used < text.size() &&
                                    cut.used <= full.used && cut.output.size() <= room &&
                                    full.output.starts_with(cut.output);
    if (reason && expected) return;
    ADD_FAILURE() << testing::PrintToString(text) << " in a room of " << room << ": error "
                  << full.error << " and " << cut.error << ", " << full.used << " and " << cut.used
                  << " bytes read, output " << testing::PrintToString(full.output) << " and "
                  << testing::PrintToString(cut.output);
}

TEST_F(standard_pack, every_input_of_one_and_two_bytes) {
    alarm(300); // for a conversion that does not end
    for (const pack_conversion &one : pack_) {
        SCOPED_TRACE(one.from + " to " + one.to);
        const converter by(one.file);
        ASSERT_TRUE(by);
        // A unit of 4 bytes is begun where there is room for 2.
        const size_t unit = one.to == "UTF-32" ? 4 : 1;
        for (size_t first = 0; first < 256 && !HasFailure(); ++first) {
            std::string text(1, static_cast<char>(first));
            for (size_t room = 0; room <= 8; room += unit) expect_sound(by, text, room);
            for (size_t second = 0; second < 256; ++second)
                expect_sound(by, text + static_cast<char>(second),
                             (first * 7 + second) % 9 / unit * unit);
        }
    }
    alarm(0);
}

} // namespace

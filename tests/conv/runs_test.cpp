// Every rung of the run kernels against a loop that takes one character at a time.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <vector>

#include "charmap/kernels.h"
#include "conv/runs.h"
#include "support/make_conversion.h"
#include "support/utf8_text.h"

namespace vel {

// The name of a rung in the names of its tests.
static void PrintTo(kernel_rung rung, std::ostream *out) {
    static constexpr const char *names[] = {"scalar", "sse", "avx2", "avx512"};
    *out << names[static_cast<int>(rung)];
}

} // namespace vel

namespace {

using namespace vel_test;
using vel::kernel_rung;

constexpr uint32_t seed = 20261121;

struct converter {
    std::string name;
    int32_t unit;                     // of the source, if it stands last byte first
    std::vector<std::string> letters; // characters to draw from, as they stand in texts
    std::shared_ptr<const vel::entry_table> table;
};

std::string bytes_of(uint32_t value, int size) {
    std::string bytes;
    while (size-- > 0) bytes += static_cast<char>(value >> (8 * size));
    return bytes;
}

std::string reversed(std::string text) {
    std::reverse(text.begin(), text.end());
    return text;
}

// Targets in one of these forms, the same for the same number.
enum class form { itself, byte, latin, two, up_to_three, up_to_four, utf16 };

std::string target_of(uint32_t number, form wanted) {
    uint32_t mixed = number * 0x9E3779B1 | 0x01010101; // no byte is zero
    uint32_t longest = wanted == form::latin ? 2 : wanted == form::up_to_three ? 3 : 4;
    switch (wanted) {
    case form::itself:
        return bytes_of(number, 1);
    case form::byte:
        return bytes_of(number * 37 + 3, 1);
    case form::two:
        return bytes_of(number >> 3, 2);
    case form::utf16: // zero bytes and all
        return number % 7 ? reversed(bytes_of(number, 2)) : bytes_of(mixed, 2) + std::string(2, 0);
    default:
        if (number < 0x80) return bytes_of(number, 1);
        return bytes_of(mixed, static_cast<int>(1 + mixed / 0x10000 % longest));
    }
}

class maker {
public:
    // Most characters are plain; one in `odd` is something else.
    maker(std::string name, form wanted, uint32_t odd = 0, int32_t unit = 0)
        : name_(std::move(name)), form_(wanted), odd_(odd), unit_(unit) {}

    maker &add(const std::string &source, uint32_t number) {
        static constexpr uint8_t others[] = {terminator, substitute, 0, 0x70, shifted, toggle};
        bool is_odd = odd_ && number * 2654435761u % odd_ == 0;
        uint8_t flags = is_odd ? others[number % std::size(others)] : plain;
        entries_[source] = {flags, target_of(number, form_)};
        return *this;
    }
    maker &add_range(uint32_t first, uint32_t last, int size) {
        for (uint32_t value = first; value <= last; ++value) add(bytes_of(value, size), value);
        return *this;
    }
    maker &add_pairs(uint32_t first_lead, uint32_t last_lead, uint32_t first, uint32_t last) {
        for (uint32_t lead = first_lead; lead <= last_lead; ++lead)
            add_range(lead << 8 | first, lead << 8 | last, 2);
        return *this;
    }
    maker &add_utf8(uint32_t first, uint32_t last) {
        for (uint32_t code = first; code <= last; ++code) {
            if (code - 0xD800 >= 0x800) add(utf8_text(code), code);
        }
        return *this;
    }

    converter make() const {
        const std::string none(5, '\0');
        vel::vel_trie *trie = vel::vel_trie_create(5, vel::trie_shared, none.data());
        converter made{name_, unit_, {}, nullptr};
        for (const auto &[source, one] : entries_) {
            const vel::vel_mbkey key = key_of(source);
            vel::vel_trie_insert(trie, &key, value_of(one, 5).data());
            made.letters.push_back(unit_ ? reversed(source) : source);
        }
        made.table.reset(vel::seal_entries(trie), vel::release_entries);
        vel::vel_trie_free(trie);
        return made;
    }

private:
    std::string name_;
    form form_;
    uint32_t odd_;
    int32_t unit_;
    targets entries_;
};

const std::vector<converter> &converters() {
    static const std::vector<converter> all = {
        maker("bytes to themselves", form::itself, 60).add_range(0, 255, 1).make(),
        maker("bytes to bytes, all of them", form::byte).add_range(0, 255, 1).make(),
        maker("bytes to bytes", form::byte, 40).add_range(1, 250, 1).make(),
        maker("bytes among pairs", form::byte, 40, 1)
            .add_range(0, 0xA0, 1)
            .add_pairs(0xA1, 0xFE, 0xA1, 0xAF)
            .make(),
        maker("bytes to latin", form::latin, 90).add_range(0, 255, 1).make(),
        maker("bytes to three", form::up_to_three, 90).add_range(0, 255, 1).make(),
        maker("bytes to four", form::up_to_four, 90).add_range(0, 255, 1).make(),
        maker("bytes to two", form::two, 90).add_range(0, 255, 1).make(),
        maker("bytes to utf-16", form::utf16).add_range(0, 255, 1).make(),
        maker("shift", form::up_to_three, 300)
            .add_range(0, 0x7F, 1)
            .add_range(0xA1, 0xDF, 1)
            .add_pairs(0x81, 0x9F, 0x40, 0x7E)
            .add_pairs(0x81, 0x9F, 0x80, 0xFC)
            .add_pairs(0xE0, 0xFC, 0x40, 0xFC)
            .make(),
        maker("extended", form::two, 300)
            .add_range(0, 0x7F, 1)
            .add_pairs(0xA1, 0xFE, 0xA1, 0xFE)
            .add_range(0x8FA1A1, 0x8FA1FE, 3)
            .make(),
        maker("four bytes", form::up_to_four, 300)
            .add_range(0, 0x7F, 1)
            .add_pairs(0x81, 0xFE, 0x80, 0xFE)
            .add_range(0x81308130, 0x81308139, 4)
            .make(),
        maker("all lead", form::up_to_three, 3000).add_pairs(0, 0xFF, 0, 0xDF).make(),
        maker("utf-8 to bytes", form::byte, 200).add_utf8(0, 0x7FF).add_utf8(0x2000, 0x21FF).make(),
        maker("utf-8 to four", form::up_to_four, 500).add_utf8(0, 0xFFFF).make(),
        maker("utf-8 to utf-16", form::utf16).add_utf8(0, 0x4FFF).add_utf8(0x1F600, 0x1F640).make(),
        maker("part of utf-8", form::two, 90).add_utf8(0x41, 0x17F).add_utf8(0x3000, 0x30FF).make(),
        maker("units of two", form::up_to_three, 900, 2).add_range(0, 0xDFFF, 2).make(),
        maker("units of four", form::up_to_four, 900, 4)
            .add_range(0, 0x2FFF, 4)
            .add_range(0x1F600, 0x1F640, 4)
            .make(),
    };
    return all;
}

struct converted {
    size_t read = 0;
    std::string out;

    bool operator==(const converted &) const = default;
    friend void PrintTo(const converted &one, std::ostream *stream) {
        *stream << one.read << " bytes to " << ::testing::PrintToString(one.out);
    }
};

converted convert_slowly(const converter &by, const std::string &text, size_t room) {
    converted done;
    while (done.read < text.size()) {
        const auto *in = reinterpret_cast<const unsigned char *>(text.data()) + done.read;
        auto left = static_cast<int32_t>(text.size() - done.read);
        vel::entry_walk at{0, by.unit};
        if (by.unit == 0) at = by.table->walk(in, left);
        if (by.unit && left >= by.unit) at.cell = by.table->walk_reversed(in, by.unit);
        uint32_t length = vel::entry_flags(at.cell) & vel::entry_length_mask;
        if (!vel::is_plain(at.cell) || length == 0 || done.out.size() + length > room) break;
        for (uint32_t i = 0; i < length; ++i)
            done.out += static_cast<char>(vel::entry_bytes(at.cell) >> (8 * i));
        done.read += static_cast<size_t>(at.used);
    }
    return done;
}

class runs : public ::testing::TestWithParam<kernel_rung> {
protected:
    void SetUp() override {
        if (!vel::use_kernels(GetParam())) GTEST_SKIP() << "the processor has no such rung";
        for (const converter &by : converters())
            choices_.push_back(vel::choose_run(*by.table, by.unit));
    }
    ~runs() override {
        for (const vel::run_choice &choice : choices_)
            vel::vel_free(const_cast<void *>(choice.facts));
        vel::use_kernels(kernel_rung::scalar);
    }

    // Runs of one character, of few and of many, up to about `size` bytes.
    std::string draw(const converter &by, size_t size) {
        std::string text;
        while (text.size() < size) {
            size_t from = random_() % by.letters.size();
            size_t kinds = 1 + random_() % (random_() % 2 ? 4 : by.letters.size());
            if (random_() % 3 == 0 && by.letters.size() > 100) from = 0x41, kinds = 0x1A;
            for (size_t run = random_() % 60; run-- > 0;)
                text += by.letters[(from + random_() % kinds) % by.letters.size()];
        }
        return text;
    }

    // On blocks of exactly the stated size, with a guard behind the room.
    void compare(size_t number, const std::string &text, size_t room) {
        const converter &by = converters()[number];
        std::unique_ptr<unsigned char[]> in(new unsigned char[text.size()]);
        std::copy(text.begin(), text.end(), in.get());
        std::unique_ptr<unsigned char[]> out(new unsigned char[room + 80]);
        std::fill_n(out.get(), room + 80, guard);
        vel::run_progress done = choices_[number].kernel(*by.table, choices_[number].facts,
                                                         in.get(), text.size(), out.get(), room);
        ASSERT_LE(done.written, room);
        const converted got{done.read, {out.get(), out.get() + done.written}};
        ASSERT_EQ(convert_slowly(by, text, room), got)
            << by.name << ", room " << room << ", " << ::testing::PrintToString(text);
        ASSERT_EQ(80, std::count(&out[room], &out[room + 80], guard)) << by.name;
    }

    template <typename Check> void for_each_converter(Check check) {
        for (size_t number = 0; number < converters().size(); ++number) {
            SCOPED_TRACE("seed " + std::to_string(seed));
            ASSERT_NE(nullptr, choices_[number].kernel);
            check(number, converters()[number]);
            if (HasFatalFailure()) return;
        }
    }

    static constexpr unsigned char guard = 0xA5;
    std::vector<vel::run_choice> choices_;
    std::mt19937 random_{seed};
};

TEST_P(runs, take_text_of_every_length_and_cut) {
    for_each_converter([&](size_t number, const converter &by) {
        for (int round = 0; round < 6; ++round) {
            std::string text = draw(by, 220);
            for (size_t size = 0; size <= 200; ++size) compare(number, text.substr(0, size), 900);
        }
    });
}

TEST_P(runs, stop_at_every_limit_of_room) {
    for_each_converter([&](size_t number, const converter &by) {
        for (int round = 0; round < 6; ++round) {
            std::string text = draw(by, 200);
            for (size_t room = 0; room <= 420; ++room) compare(number, text, room);
        }
    });
}

// Bytes of any kind among the characters, and nothing but such bytes.
TEST_P(runs, stop_where_the_text_is_bad) {
    for_each_converter([&](size_t number, const converter &by) {
        for (int round = 0; round < 400; ++round) {
            std::string text = draw(by, random_() % 300);
            for (size_t bad = random_() % 4; bad-- > 0;)
                text.insert(random_() % (text.size() + 1), 1, static_cast<char>(random_()));
            compare(number, text, 1500);
            for (char &byte : text) byte = static_cast<char>(random_());
            compare(number, text, 1500);
        }
    });
}

TEST_P(runs, take_every_character_in_a_long_text) {
    for_each_converter([&](size_t number, const converter &by) {
        std::string text;
        for (const std::string &letter : by.letters) {
            compare(number, letter + letter, 9);
            if (!convert_slowly(by, letter, 9).read) continue;
            text += letter;
            if (random_() % 5 == 0) text += by.letters[random_() % by.letters.size()];
        }
        compare(number, text, text.size() * 4);
        for (size_t from = 0; from < text.size(); from += 1 + text.size() / 50)
            compare(number, text.substr(from), text.size() * 4);
    });
}

INSTANTIATE_TEST_SUITE_P(rungs, runs,
                         ::testing::Values(kernel_rung::scalar, kernel_rung::sse, kernel_rung::avx2,
                                           kernel_rung::avx512));

} // namespace

// Every locale of the pack: comparison, of both forms of text, and keys give one order.
#include <cstring>
#include <random>

#include "collate/pack_locales.h"
#include "differential/words.h"
#include "support/guarded.h"
#include "vels/errors.h"
#include "vels/multibyte.h"

namespace {

using namespace vel_test;

constexpr unsigned seed = 20240615;
constexpr int pairs_of_a_locale = 400;

using wide = std::vector<vel_wchar>;

// Texts of one locale: of any characters, of words, and such as wear on the machinery.
class text_source {
public:
    text_source(vel_locale *locale, const differential::words &words) : locale_(locale) {
        for (int i = 0; i < 200; ++i) characters_.push_back(random_character());
        for (const auto &word : words) words_.push_back(differential::utf8(word));
    }

    std::pair<std::string, std::string> next() {
        switch (below(words_.empty() ? 3 : 5)) {
        case 0:
            return {of_characters(8), of_characters(8)};
        case 1:
            return changed(of_characters(5), of_characters(5));
        case 2: {
            // Few characters again and again, beyond what is kept on the stack.
            std::string unit, run;
            while (unit.empty()) unit = of_characters(3);
            for (size_t left = 40 + below(120); left > 0; --left) run += unit;
            return changed(run, of_characters(2) + run);
        }
        case 3:
            return {of(words_), of(words_)};
        default:
            return changed(of(words_), of(words_));
        }
    }

private:
    size_t below(size_t n) { return std::uniform_int_distribution<size_t>(0, n - 1)(engine_); }
    const std::string &of(const std::vector<std::string> &list) { return list[below(list.size())]; }

    // A character of any length that the code set has: a byte is drawn anew when none fits.
    std::string random_character() {
        for (;;) {
            std::string bytes;
            for (int draws = 0; draws < 40; ++draws) {
                bytes += static_cast<char>(1 + below(255));
                const int32_t size = static_cast<int32_t>(bytes.size());
                *vel_ext_errno(locale_) = 0;
                if (tuk_vel_full_mblen(locale_, bytes.data(), size) == size) return bytes;
                if (*vel_ext_errno(locale_) != VEL_EINVAL) bytes.pop_back();
            }
        }
    }
    std::string of_characters(size_t most) {
        std::string text;
        for (size_t left = below(most + 1); left > 0; --left)
            text += below(4) ? of(characters_) : random_character();
        return text;
    }
    std::pair<std::string, std::string> changed(const std::string &begin, const std::string &end) {
        return {begin + of_characters(2) + end, begin + of_characters(2) + end};
    }

    vel_locale *locale_;
    std::vector<std::string> characters_, words_;
    std::mt19937 engine_{seed};
};

wide values_of(vel_locale *locale, const std::string &text) {
    wide values(text.size() + 1);
    const int32_t room = static_cast<int32_t>(values.size());
    EXPECT_GE(vel_im_mbstowcs(locale, values.data(), text.c_str(), room), 0);
    return values;
}

int sign(int value) {
    return (value > 0) - (value < 0);
}

void check_pair(vel_locale *locale, const std::string &a, const std::string &b, int &unequal) {
    const wide wide_a = values_of(locale, a), wide_b = values_of(locale, b);
    const std::string key_a = sort_key(locale, a), key_b = sort_key(locale, b);
    const int expected = sign(key_a.compare(key_b));
    unequal += expected != 0;
    EXPECT_EQ(sign(vel_im_mbscoll(locale, a.c_str(), b.c_str())), expected);
    EXPECT_EQ(sign(vel_im_mbscoll(locale, b.c_str(), a.c_str())), -expected);
    EXPECT_EQ(sign(vel_full_wcscoll(locale, wide_a.data(), wide_b.data())), expected);
}

TEST(agreement, of_comparison_and_keys) {
    const std::vector<pack_locale> locales = pack_locales();
    ASSERT_GT(locales.size(), 100u) << VELS_TEST_DATA_ROOT;
    for (const pack_locale &one : locales) {
        const loaded_locale locale = load_from_pack(one.specification);
        ASSERT_TRUE(locale) << one.specification;
        const bool utf8 = one.specification.find(".utf-8") != std::string::npos;
        text_source texts(locale.get(),
                          utf8 ? differential::words_of(one.source) : differential::words());
        int unequal = 0;
        for (int i = 0; i < pairs_of_a_locale; ++i) {
            const auto [a, b] = texts.next();
            check_pair(locale.get(), a, b, unequal);
            ASSERT_FALSE(HasFailure()) << one.specification << ", seed " << seed << ", pair " << i
                                       << ": '" << a << "' and '" << b << "'";
        }
        EXPECT_GT(unequal, pairs_of_a_locale / 2) << one.specification;
    }
    printf("%zu locales, %d pairs each, seed %u\n", locales.size(), pairs_of_a_locale, seed);
}

// Texts are read, and keys written, in blocks, of which nothing may lie behind their end.
TEST(agreement, beside_what_cannot_be_read) {
    const loaded_locale locale = load_from_pack("de_de.utf-8");
    ASSERT_TRUE(locale);
    guarded_page left, right, out;
    const std::string units[] = {"a", "ß", "漢", "-", "é"};
    std::string text;
    for (size_t i = 0; text.size() < 300; text += units[i++ % 5]) {
        SCOPED_TRACE(text);
        const std::string longer = text + "b", key = sort_key(locale.get(), text);
        const auto *a = reinterpret_cast<const char *>(left.put(text));
        const auto *b = reinterpret_cast<const char *>(right.put(longer));
        const int32_t in_a = static_cast<int32_t>(text.size()), in_b = in_a + 1;
        EXPECT_EQ(tuk_vel_im_mbfscoll(locale.get(), a, in_a, b, in_b), -1);
        a = reinterpret_cast<const char *>(left.put(text + '\0'));
        b = reinterpret_cast<const char *>(right.put(longer + '\0'));
        EXPECT_EQ(vel_im_mbscoll(locale.get(), b, a), 1);
        const int32_t room = static_cast<int32_t>(key.size() + 1);
        auto *written = reinterpret_cast<char *>(out.last(key.size() + 1));
        EXPECT_EQ(vel_full_mbsxfrm(locale.get(), written, a, room), room - 1);
        EXPECT_EQ(std::string(written), key);
    }
}

} // namespace

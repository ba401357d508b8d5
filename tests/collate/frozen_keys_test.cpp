// Sort keys are stored in indexes: from the same sources they stay the same to the byte.
//
// frozen_keys/keys.txt says with which sources it was made. After a change of the keys that is
// meant, and after each new version of the sources, it is written anew by
//     VELS_RENEW_FROZEN_KEYS=1 build/dev/tests/collate_test --gtest_filter='frozen_keys.*'
// Such a change makes the indexes of users invalid: the changelog has to say so.
#include <gnu/libc-version.h>

#include <map>
#include <ranges>
#include <set>
#include <string_view>

#include "collate/pack_locales.h"

namespace {

using namespace vel_test;

// Parted by bars; the first is empty.
constexpr std::string_view texts =
    "|a|A|Hello, world|co-operate|cooperate|coöperate|coo\u0308perate|résumé|Straße|STRASSE|"
    "Øresund|Ålborg|Aalborg|chata|llama|ljubav|džep|dzsessz|ccs|ığdır|IĞDIR|ñandú|"
    "žluťoučký kůň|Łódź|ÿ\u0301\u0323|съезд|ёлка|Ўзбек|ψυχή|שָׁלוֹם|سَلام|เก้าอี้|ເວລາ|"
    "हिन्दी|東京タワー|とうきょう|中文排序|한국어|x² + 3½ = 14s, 1-4s|\x01\t~\x7F|"
    "naïve 😀 \U0001F1E9\U0001F1EA|\U00020000\uE000\uFFFD\U0010FFFF";

// Their keys are kept whole, so that a change can be read; of the others there is a hash.
const std::set<std::string> kept_whole = {
    "cs_cz.utf-8", "da_dk.utf-8", "de_de.utf-8", "es_es.utf-8", "fr_ca.utf-8", "hu_hu.utf-8",
    "ja_jp.utf-8", "ko_kr.utf-8", "ru_ru.utf-8", "sv_se.utf-8", "th_th.utf-8", "zh_cn.utf-8"};

constexpr const char *file_name = VELS_FROZEN_KEYS;

std::string hexadecimal(const std::string &bytes) {
    static constexpr char digits[] = "0123456789abcdef";
    std::string text;
    for (unsigned char byte : bytes) (text += digits[byte >> 4]) += digits[byte & 15];
    return text;
}

std::string hash_of(const std::string &bytes) {
    uint64_t hash = 0xCBF29CE484222325;
    for (unsigned char byte : bytes) hash = (hash ^ byte) * 0x100000001B3;
    char text[20];
    snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(hash));
    return text;
}

// What the file has of each locale: a line for each of `texts`, or one for all.
using lines_by_locale = std::map<std::string, std::string>;

std::string keys_of(const std::string &specification) {
    const loaded_locale locale = load_from_pack(specification);
    if (!locale) return "not in the pack\n";
    std::string keys;
    for (const auto text : std::views::split(texts, '|'))
        keys += hexadecimal(sort_key(locale.get(), {text.begin(), text.end()})) + '\n';
    return kept_whole.contains(specification) ? keys : hash_of(keys) + '\n';
}

TEST(frozen_keys, are_what_they_were) {
    const std::string version = std::string("sources ") + gnu_get_libc_version();
    lines_by_locale now, expected;
    for (const pack_locale &one : pack_locales())
        if (one.specification.find(".utf-8") != std::string::npos)
            now["locale " + one.specification] = keys_of(one.specification);
    if (getenv("VELS_RENEW_FROZEN_KEYS")) {
        std::ofstream file(file_name);
        file << version << '\n';
        for (const auto &[locale, keys] : now) file << locale << '\n' << keys;
        ASSERT_TRUE(file.flush()) << file_name;
        GTEST_SKIP() << "wrote " << file_name;
    }
    std::ifstream file(file_name);
    std::string made_with, locale;
    ASSERT_TRUE(std::getline(file, made_with)) << file_name;
    if (made_with != version)
        GTEST_SKIP() << "the keys are those of " << made_with << ", here are " << version;
    for (std::string line; std::getline(file, line);)
        (line.starts_with("locale ") ? expected[locale = line] : expected[locale] += line + '\n');
    EXPECT_GT(expected.size(), 90u);
    EXPECT_EQ(expected.size(), now.size()) << "locales have come or gone";
    for (const auto &[name, keys] : expected)
        EXPECT_EQ(keys, now[name])
            << name << "\nif that is meant, renew " << file_name << " as " << __FILE__ << " says";
}

} // namespace

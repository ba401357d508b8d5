// Sort keys are stored in indexes: from the same sources they stay the same to the byte.
//
// frozen_keys/keys.txt says with which sources it was made. After a change of the keys that is
// meant, and after each new version of the sources, it is written anew by
//     VELS_RENEW_FROZEN_KEYS=1 build/dev/tests/collate_test --gtest_filter='frozen_keys.*'
// Such a change makes the indexes of users invalid: the changelog has to say so.
#include <gnu/libc-version.h>

#include <map>
#include <set>

#include "collate/pack_locales.h"

namespace {

using namespace vel_test;

constexpr const char *texts[] = {
    "",
    "a",
    "A",
    "Hello, world",
    "co-operate",
    "cooperate",
    "coöperate",
    "coo\u0308perate",
    "résumé",
    "Straße",
    "STRASSE",
    "Øresund",
    "Ålborg",
    "Aalborg",
    "chata",
    "llama",
    "ljubav",
    "džep",
    "dzsessz",
    "ccs",
    "ığdır",
    "IĞDIR",
    "ñandú",
    "žluťoučký kůň",
    "Łódź",
    "ÿ\u0301\u0323",
    "съезд",
    "ёлка",
    "Ўзбек",
    "ψυχή",
    "שָׁלוֹם",
    "سَلام",
    "เก้าอี้",
    "ເວລາ",
    "हिन्दी",
    "東京タワー",
    "とうきょう",
    "中文排序",
    "한국어",
    "x² + 3½ = 14s, 1-4s",
    "\x01\t~\x7F",
    "naïve 😀 \U0001F1E9\U0001F1EA",
    "\U00020000\uE000\uFFFD\U0010FFFF",
};

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

// What the file has of a locale: a line of its own for each of `texts`, or one for all.
using lines = std::vector<std::string>;

lines keys_of(const std::string &specification) {
    const loaded_locale locale = load_from_pack(specification);
    if (!locale) return {"not in the pack"};
    lines keys;
    for (const char *text : texts) keys.push_back(hexadecimal(sort_key(locale.get(), text)));
    if (kept_whole.contains(specification)) return keys;
    std::string all;
    for (const std::string &key : keys) all += key + '\n';
    return {hash_of(all)};
}

struct frozen {
    std::string sources; // the version of the C library that they belong to
    std::map<std::string, lines> locales;
};

frozen read() {
    frozen all;
    std::ifstream file(file_name);
    std::string locale;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("sources "))
            all.sources = line.substr(8);
        else if (line.starts_with("locale "))
            all.locales[locale = line.substr(7)];
        else
            all.locales[locale].push_back(line);
    }
    return all;
}

frozen make() {
    frozen all{gnu_get_libc_version(), {}};
    for (const pack_locale &one : pack_locales())
        if (one.specification.find(".utf-8") != std::string::npos)
            all.locales[one.specification] = keys_of(one.specification);
    return all;
}

void write(const frozen &all) {
    std::ofstream file(file_name);
    file << "sources " << all.sources << '\n';
    for (const auto &[locale, keys] : all.locales) {
        file << "locale " << locale << '\n';
        for (const std::string &key : keys) file << key << '\n';
    }
    ASSERT_TRUE(file.flush()) << file_name;
}

TEST(frozen_keys, are_what_they_were) {
    if (getenv("VELS_RENEW_FROZEN_KEYS")) {
        write(make());
        GTEST_SKIP() << "wrote " << file_name;
    }
    const frozen expected = read();
    ASSERT_FALSE(expected.locales.empty()) << file_name;
    if (expected.sources != gnu_get_libc_version())
        GTEST_SKIP() << "the keys are those of the locale sources " << expected.sources
                     << ", here are " << gnu_get_libc_version();
    const frozen now = make();
    for (const auto &[locale, keys] : expected.locales) {
        const auto found = now.locales.find(locale);
        if (found == now.locales.end()) {
            ADD_FAILURE() << locale << " is not in the pack any more";
            continue;
        }
        ASSERT_EQ(keys.size(), found->second.size()) << locale;
        for (size_t i = 0; i < keys.size(); ++i)
            EXPECT_EQ(keys[i], found->second[i])
                << locale << (keys.size() > 1 ? std::string(": ") + texts[i] : "")
                << "\nif that is meant, renew " << file_name << " as " << __FILE__ << " says";
    }
    for (const auto &[locale, keys] : now.locales)
        EXPECT_TRUE(expected.locales.contains(locale)) << locale << " has no frozen keys yet";
}

} // namespace

// The locales that are held against the host's C library, and ours of each pair.
#pragma once

#include <algorithm>
#include <cctype>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <vector>

#include "support/pack.h"
#include "vels.h"

namespace differential {

struct locale_case {
    const char *source;
    const char *charmap;

    std::string name() const { return std::string(source) + " in " + charmap; }
    friend void PrintTo(const locale_case &of, std::ostream *out) { *out << of.name(); }
};

// Every code set stands here at least once, all of them in the standard pack.
inline constexpr locale_case all_cases[] = {
    {"C", "UTF-8"},           {"de_DE", "UTF-8"},
    {"tr_TR", "UTF-8"},       {"az_AZ", "UTF-8"},
    {"lt_LT", "UTF-8"},       {"ja_JP", "UTF-8"},
    {"zh_CN", "UTF-8"},       {"zh_TW", "UTF-8"},
    {"ko_KR", "UTF-8"},       {"ru_RU", "UTF-8"},
    {"fa_IR", "UTF-8"},       {"th_TH", "UTF-8"},
    {"hi_IN", "UTF-8"},       {"en_US", "ANSI_X3.4-1968"},
    {"de_DE", "ISO-8859-1"},  {"pl_PL", "ISO-8859-2"},
    {"mt_MT", "ISO-8859-3"},  {"ru_RU", "ISO-8859-5"},
    {"ar_EG", "ISO-8859-6"},  {"el_GR", "ISO-8859-7"},
    {"he_IL", "ISO-8859-8"},  {"tr_TR", "ISO-8859-9"},
    {"lg_UG", "ISO-8859-10"}, {"lt_LT", "ISO-8859-13"},
    {"cy_GB", "ISO-8859-14"}, {"de_DE@euro", "ISO-8859-15"},
    {"hu_HU", "CP1250"},      {"bg_BG", "CP1251"},
    {"de_DE", "CP1252"},      {"yi_US", "CP1255"},
    {"en_US", "IBM437"},      {"de_DE", "IBM850"},
    {"ru_RU", "IBM866"},      {"ru_RU", "KOI8-R"},
    {"uk_UA", "KOI8-U"},      {"tg_TJ", "KOI8-T"},
    {"kk_KZ", "PT154"},       {"kk_KZ", "RK1048"},
    {"th_TH", "TIS-620"},     {"hy_AM", "ARMSCII-8"},
    {"ka_GE", "GEORGIAN-PS"}, {"en_US", "IBM037"},
    {"de_DE", "IBM273"},      {"ja_JP", "EUC-JP"},
    {"ja_JP", "SHIFT_JIS"},   {"ja_JP", "WINDOWS-31J"},
    {"zh_CN", "GB2312"},      {"zh_CN", "GBK"},
    {"zh_CN", "GB18030"},     {"zh_TW", "BIG5"},
    {"zh_TW", "EUC-TW"},      {"zh_HK", "BIG5-HKSCS"},
    {"ko_KR", "EUC-KR"},      {"ko_KR", "CP949"},
};

// "de_DE@euro" in "ISO-8859-15": "de_de.iso-8859-15@euro".
inline std::string specification(const locale_case &of) {
    const std::string source = of.source;
    const size_t at = source.find('@');
    std::string text = source.substr(0, at) + "." + of.charmap;
    if (at != source.npos) {
        const std::string modifier = source.substr(at);
        text += modifier == "@latin"      ? "@latn"
                : modifier == "@cyrillic" ? "@cyrl"
                                          : modifier.substr(0, 5);
    }
    std::ranges::transform(text, text.begin(), [](unsigned char c) { return std::tolower(c); });
    return text;
}

using our_locale = vel_test::loaded_locale;

// Null when the pack does not hold it.
inline our_locale open_ours(const locale_case &of) {
    return vel_test::load_from_pack(specification(of));
}

// Bytes in the order of the text, as a wide value packs them.
inline uint32_t packed(const std::string &bytes) {
    uint32_t value = 0;
    for (unsigned char byte : bytes) value = value << 8 | byte;
    return value;
}

inline std::string parameter_name(const testing::TestParamInfo<locale_case> &info) {
    std::string name = std::string(info.param.source) + "_" + info.param.charmap;
    std::ranges::replace_if(
        name, [](unsigned char c) { return !std::isalnum(c); }, '_');
    return name;
}

} // namespace differential

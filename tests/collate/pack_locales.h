// The locales of the data pack, by the specifications under which they are loaded.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "support/pack.h"
#include "vels/collate.h"
#include "vels/host.h"

namespace vel_test {

struct pack_locale {
    std::string specification;
    std::string source; // the name of the POSIX source
};

// "de_de/039beuro.lco" says ISO-8859-15 in its head and is "de_de.iso-8859-15@euro". Files beside
// the folders are loaded by their own names.
inline pack_locale named_by(const std::filesystem::path &object) {
    std::ifstream file(object);
    std::string set, source;
    for (std::string line; std::getline(file, line) && line != "as_specified";) {
        if (line.starts_with("CODESET=")) set = line.substr(8);
        if (line.starts_with("SOURCE=")) {
            source = line.substr(7);
            break;
        }
    }
    if (object.extension() != ".lco") return {object.filename(), source};
    const std::string modifier = object.stem().string().substr(4);
    std::ranges::transform(set, set.begin(), [](unsigned char c) { return std::tolower(c); });
    return {object.parent_path().filename().string() + "." + set +
                (modifier.empty() ? "" : "@" + modifier),
            source};
}

// In alphabetical order. A code set that a locale has under two numbers is there once.
inline std::vector<pack_locale> pack_locales() {
    const std::filesystem::path folder = std::filesystem::path(VELS_TEST_DATA_ROOT) / "vels/lc11";
    std::vector<pack_locale> all;
    if (!std::filesystem::exists(folder)) return all;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(folder))
        if (entry.is_regular_file() && entry.path().filename() != "default.lco")
            all.push_back(named_by(entry.path()));
    std::ranges::sort(all, {}, &pack_locale::specification);
    const auto twice = std::ranges::unique(all, {}, &pack_locale::specification);
    all.erase(twice.begin(), twice.end());
    return all;
}

inline std::string sort_key(vel_locale *locale, const std::string &text) {
    const int32_t length = vel_full_mbsxfrm(locale, nullptr, text.c_str(), 0);
    EXPECT_GE(length, 0) << "error " << *vel_ext_errno(locale);
    if (length < 0) return {};
    std::string key(static_cast<size_t>(length) + 1, '\xFF');
    EXPECT_EQ(vel_full_mbsxfrm(locale, key.data(), text.c_str(), length + 1), length);
    EXPECT_EQ(key.back(), '\0');
    key.pop_back();
    return key;
}

} // namespace vel_test

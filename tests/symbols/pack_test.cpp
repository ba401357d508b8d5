// The charmaps of the standard pack: their characters are those of the locales, and every one has a
// name that leads back to it.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "vels/charmap.h"
#include "vels/errors.h"
#include "vels/locale.h"
#include "vels/multibyte.h"
#include "vels/symbols.h"

namespace {

namespace fs = std::filesystem;
const fs::path data = fs::path(VELS_TEST_DATA_ROOT) / "vels";

template <typename Handle> int32_t error_of(const Handle *handle) {
    return *reinterpret_cast<const int32_t *>(handle);
}

std::vector<fs::path> charmaps() {
    std::vector<fs::path> paths;
    for (const auto &entry : fs::directory_iterator(data / "cm3")) {
        if (entry.path().extension() == ".cmo") paths.push_back(entry.path());
    }
    return paths;
}

vel_charmap *load(const fs::path &path) {
    vel_charmap *charmap = nullptr;
    std::string directory = path.parent_path().string();
    EXPECT_EQ(vel_cm_load(&charmap, path.filename().c_str(), -1, directory.c_str()), 0)
        << path << ": " << error_of(charmap);
    return charmap;
}

// Every character that a handle has, in order.
template <typename Handle, typename Measure>
void add_characters(std::vector<std::string> &all, Handle *handle, Measure measure,
                    const std::string &lead = "") {
    for (int b = 0; b < 256; ++b) {
        std::string bytes = lead + static_cast<char>(b);
        int32_t length = static_cast<int32_t>(bytes.size());
        if (measure(handle, bytes.data(), length) == length) {
            all.push_back(bytes);
        } else if (error_of(handle) == VEL_EINVAL) {
            add_characters(all, handle, measure, bytes);
        }
    }
}

vel_locale *locale_of(const fs::path &charmap) {
    vel_locale *locale = nullptr;
    for (const auto &entry : fs::recursive_directory_iterator(data / "lc11")) {
        if (!entry.path().filename().string().starts_with(charmap.stem().string())) continue;
        std::string directory = entry.path().parent_path().string();
        std::string name = entry.path().filename().string();
        EXPECT_EQ(vel_lc_load(&locale, name.c_str(), -1, directory.c_str()), 0) << entry.path();
        return locale;
    }
    return locale;
}

TEST(pack_charmaps, have_the_characters_of_their_locales) {
    size_t compared = 0;
    for (const fs::path &path : charmaps()) {
        vel_locale *locale = locale_of(path);
        if (!locale) continue;
        SCOPED_TRACE(path);
        vel_charmap *charmap = load(path);
        std::vector<std::string> own, of_locale;
        add_characters(own, charmap, vel_cm_mblen);
        add_characters(of_locale, locale, tuk_vel_full_mblen);
        // In a locale of a single-byte code set every byte is a character.
        bool same = vel_mb_cm_max(charmap) > 1
                        ? own == of_locale
                        : std::includes(of_locale.begin(), of_locale.end(), own.begin(), own.end());
        EXPECT_TRUE(same) << own.size() << " and " << of_locale.size() << " characters";
        ++compared;
        vel_cm_unload(charmap);
        vel_lc_unload(locale);
    }
    EXPECT_GT(compared, 10u);
}

struct conversion {
    vel_charmap *charmap;

    template <typename Text, typename Convert>
    std::string name_of(Convert convert, const Text &text) const {
        char name[VEL_SYMBOL_SLOT] = "";
        auto input = text.data();
        convert(charmap, name, sizeof name, &input, static_cast<int32_t>(text.size()));
        return name;
    }
    template <typename Unit, typename Convert>
    std::basic_string<Unit> character_of(Convert convert, const std::string &name) const {
        Unit text[8] = {};
        const char *input = name.c_str();
        int32_t size = convert(charmap, text, 8, &input);
        int32_t end = sizeof(Unit) > 1 ? 1 : vel_mb_cm_min(charmap);
        return std::basic_string<Unit>(text, static_cast<size_t>(std::max(size - end, 0)));
    }
    bool has_name(const std::string &bytes, const std::string &name) const {
        char slots[16][VEL_SYMBOL_SLOT];
        int32_t length = static_cast<int32_t>(bytes.size());
        int32_t count = vel_mbtosymlist(charmap, slots, 16, bytes.data(), length);
        return std::find(slots, slots + std::clamp(count, 0, 16), name) != slots + count;
    }
};

using wide = std::basic_string<vel_wchar>;

wide value_of(const std::string &bytes) {
    vel_wchar value = 0;
    for (unsigned char byte : bytes) value = value << 8 | byte;
    return wide(1, value);
}

// Where several bytes stand for one character of Unicode they share its name, which leads to the
// ones that are written; these may be called by another name themselves.
TEST(pack_charmaps, every_character_has_a_name_that_leads_back) {
    for (const fs::path &path : charmaps()) {
        SCOPED_TRACE(path);
        vel_charmap *charmap = load(path);
        conversion with{charmap};
        std::vector<std::string> all;
        add_characters(all, charmap, vel_cm_mblen);
        size_t shared = 0;
        for (const std::string &bytes : all) {
            std::string name = with.name_of(vel_mbstosyms, bytes);
            std::string back = with.character_of<char>(vel_symstombs, name);
            ASSERT_TRUE(with.has_name(back, name)) << name;
            ASSERT_EQ(with.character_of<vel_wchar>(vel_symstowcs, name), value_of(back)) << name;
            ASSERT_EQ(with.name_of(vel_wcstosyms, value_of(bytes)), name);
            shared += back != bytes;
        }
        // EUC-TW has its first plane twice.
        EXPECT_LT(shared, all.size() / 10);
        EXPECT_GE(all.size(), 96u);
        vel_cm_unload(charmap);
    }
}

} // namespace

// Charmap objects: where they are found, what is refused, and that nothing leaks.
#include <cstring>
#include <random>

#include "symbols/charmap_fixture.h"

using namespace vel_test;

namespace {

const std::string good = std::string(header) + lines;

TEST_F(charmap_test, says_what_the_object_says) {
    vel_charmap *charmap = keep(good);
    EXPECT_STREQ(vel_cm_csname(charmap), "a-name-of-twenty-one-");
    EXPECT_EQ(vel_cm_srcver(charmap), -7);
    EXPECT_EQ(vel_cm_cmpver(charmap), 3);
    EXPECT_EQ(vel_mb_cm_min(charmap), 1);
    EXPECT_EQ(vel_mb_cm_max(charmap), 2);
    const struct {
        const char *bytes;
        int32_t n, result, error;
    } cases[] = {
        {nullptr, 5, 0, 0},
        {"A", 1, 1, 0},
        {"\xA1\xA1", 9, 2, 0},
        {"\xA1\xFE", 2, 2, 0},
        {"\xA1\xA0", 2, -1, VEL_EILSEQ},
        {"\xA1\xFF", 2, -1, VEL_EILSEQ},
        {"\xA3\xA1", 2, -1, VEL_EILSEQ},
        {"a", 1, -1, VEL_EILSEQ},
        {"\xA1\xA1", 1, -1, VEL_EINVAL},
        {"A", 0, -1, VEL_EINVAL},
    };
    for (const auto &one : cases) {
        *reinterpret_cast<int32_t *>(charmap) = 0;
        EXPECT_EQ(vel_cm_mblen(charmap, one.bytes, one.n), one.result) << one.bytes;
        EXPECT_EQ(error_of(charmap), one.error) << one.bytes;
    }
}

TEST_F(charmap_test, files_are_found_by_number_or_by_name) {
    host.environment["CORVANEDIR"] = "/root";
    host.files["/root/vels/cm3/registry"] = "small 53\n";
    host.files["/root/vels/cm3/0035.cmo"] = host.files["/d/0035.cmo"] = host.files["/d/own"] = good;
    const struct {
        const char *name;
        int32_t length;
        const char *directory;
        const char *opened;
    } cases[] = {
        {"small", 0, nullptr, "/root/vels/cm3/0035.cmo"},
        {"small.cmo", 5, "/d", "/d/0035.cmo"},
        {"xx_yy.small", -1, "/d", "/d/0035.cmo"},
        {"own", 50, "/d", "/d/own"},
        {"owner", 5, "/d", nullptr},
        {"small", -1, "/nowhere", nullptr},
    };
    for (const auto &one : cases) {
        vel_charmap *charmap = nullptr;
        int32_t result = vel_cm_load(&charmap, one.name, one.length, one.directory);
        EXPECT_EQ(result, one.opened ? 0 : -1) << one.name;
        EXPECT_EQ(error_of(charmap), one.opened ? 0 : VEL_ENOFILE) << one.name;
        if (one.opened) {
            EXPECT_EQ(host.opened.back(), one.opened);
        } else {
            EXPECT_EQ(vel_cm_mblen(charmap, "A", 1), -1) << "harmless";
        }
        vel_cm_unload(charmap);
    }
}

TEST_F(charmap_test, what_is_refused) {
    const std::string type = "FILE_TYPE=charmap_object\n", version = "COMPILER_VERSION=3\n";
    const std::string title = type + version, longest(127, 'n');
    const std::pair<std::string, int32_t> cases[] = {
        {"", VEL_EBADFILE},
        {"FILE_TYPE=locale_object\n" + version, VEL_EBADFILE},
        {type + "COMPILER_VERSION=03\nHEADER_LENGTH=3\n", VEL_EVERSION},
        {title + "HEADER_LENGTH=x\n", VEL_EBADFILE},
        {title + "HEADER_LENGTH=2\n", VEL_EBADFILE},
        {title + "HEADER_LENGTH=2147483647\n### CHARMAP\n", VEL_EBADFILE},
        {title + "HEADER_LENGTH=3\n### CHARMAP\ns 0 x 1 00\n", 0},
        {good + "s 0 " + longest + " 1 61\n", 0},
        {good + "s 0 " + longest + "n 1 61\n", VEL_EBADFILE},
        {good + "s 0 x 1 61 what follows is not looked at\n", 0},
        {good + "s 0 x 1 61" + std::string(300, ' ') + "\n", VEL_EBADFILE},
        {good + "s -1 x 2 8\t1\n", 0},
        {good + "r 2147483647 x 2147483647 1 1 61\n", 0},
        {good + "r 0 x 2147483647 2 1 61\n", VEL_EBADFILE},
        {good + "r 0 x 0 2147483647 4 80 00 00 00\n", VEL_EBADFILE}, // A1 stands among them
        {good + "r 0 x 0 536870912 4 c0 00 00 00\n", 0},
        {good + "r 0 x 0 3 1 fe\n", VEL_EBADFILE},
        {good + "r 0 x 0 3 4 ff ff ff fe\n", VEL_EBADFILE},
        {good + "r 0 x 0 0 1 61\n", VEL_EBADFILE},
        {good + "r 0 x -1 1 1 61\n", VEL_EBADFILE},
        {good + "r 0 x 1 1 61\n", VEL_EBADFILE},
        {good + "s 0 x 0\n", VEL_EBADFILE},
        {good + "s 0 x 5 61 62 63 64 65\n", VEL_EBADFILE},
        {good + "s 0 x 2 61\n", VEL_EBADFILE},
        {good + "s 99999999999 x 1 61\n", VEL_EBADFILE},
        {good + "t 0 x 1 61\n", VEL_EBADFILE},
        {good + "\n", VEL_EBADFILE},
        {good + "s 0 x 1 a1\n", VEL_EBADFILE},    // begins others
        {good + "s 0 x 2 41 41\n", VEL_EBADFILE}, // begins with another
        {good + "s 0 again 1 41\n", 0},
    };
    for (const auto &[text, error] : cases) EXPECT_EQ(load_error(text), error) << text;
}

// Cut between lines there are fewer characters; cut within one there is no charmap.
TEST_F(charmap_test, a_file_cut_anywhere) {
    const size_t last_header_line = good.find("SOURCE=test"), body = strlen(header);
    for (size_t length = 0; length < good.size(); ++length) {
        if (length > last_header_line && length < body) continue;
        bool whole = length >= body && (good[length] == '\n' || good[length - 1] == '\n');
        EXPECT_EQ(load_error(good.substr(0, length)) == 0, whole) << "cut to " << length;
    }
}

TEST_F(charmap_test, damage_does_no_harm_and_hooked_streams_agree) {
    std::mt19937 random(20240229);
    const std::string digits = "0123456789abcdefsr -\n\xFF";
    std::vector<std::pair<std::string, int32_t>> loaded;
    for (int round = 0; round < 3000; ++round) {
        std::string text = good;
        size_t place = random() % text.size();
        text.replace(place, random() % 4, random() % 2, digits[random() % digits.size()]);
        loaded.push_back({text, load_error(text)});
    }
    host.hook_streams();
    for (const auto &[text, error] : loaded) EXPECT_EQ(load_error(text), error) << text;
}

TEST_F(charmap_test, memory_that_runs_out) {
    for (int number = 1;; ++number) {
        ASSERT_LT(number, 500);
        host.fail_allocation(number);
        int32_t error = load_error(good);
        EXPECT_EQ(error, host.failed ? VEL_ENOMEM : 0) << number;
        EXPECT_EQ(host.blocks.size(), 0u) << "leaked at allocation " << number;
        if (!host.failed) break;
    }
}

} // namespace

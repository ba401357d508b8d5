// Charmaps read from objects in memory.
#pragma once

#include <gtest/gtest.h>

#include "support/host.h"
#include "vels/charmap.h"
#include "vels/errors.h"

namespace vel_test {

inline int32_t error_of(const vel_charmap *charmap) {
    return *reinterpret_cast<const int32_t *>(charmap);
}

constexpr char header[] = "FILE_TYPE=charmap_object\n"
                          "COMPILER_VERSION=3\n"
                          "HEADER_LENGTH=6\n"
                          "CODESET=a-name-of-twenty-one-bytes\n"
                          "SOURCE_VERSION=-7\n"
                          "SOURCE=test\n"
                          "### CHARMAP\n";

// One and two bytes, names that need escapes, names for ranges, and several for one character.
constexpr char lines[] = "s 0 NUL 1 00\n"
                         "s 65 letter 1 41\n"
                         "s 65 A 1 41\n"
                         "s 60 less<than 1 3C\n"
                         "s 92 b\\s 1 5c\n"
                         "s 62 more>than 1 3e\n"
                         "r 0 j0101 101 94 2 a1 a1\n"
                         "r 0 j0201 201 94 2 a2 a1\n"
                         "r 0 k9 9 3 2 a1 a2\n"
                         "r 0 u0000000 0 3 2 a1 a1\n"
                         "s 0 single 2 a1 a1\n"
                         "s 0 twice 1 42\n"
                         "s 0 twice 1 43\n";

class charmap_test : public testing::Test {
protected:
    ~charmap_test() override {
        vel_cm_unload(kept_);
        EXPECT_EQ(host.blocks.size(), 0u) << "leaked";
        EXPECT_EQ(host.open_streams, 0);
    }

    vel_charmap *keep(const std::string &text) {
        host.files["/d/kept.cmo"] = text;
        EXPECT_EQ(vel_cm_load(&kept_, "kept.cmo", -1, "/d"), 0) << error_of(kept_);
        return kept_;
    }

    // Loads an object and unloads it again; the error number, 0 when it loaded.
    int32_t load_error(const std::string &text) {
        host.files["/d/x.cmo"] = text;
        vel_charmap *charmap = nullptr;
        int32_t result = vel_cm_load(&charmap, "x.cmo", -1, "/d");
        int32_t error = error_of(charmap);
        EXPECT_EQ(result, error == 0 ? 0 : -1);
        vel_cm_unload(charmap);
        return error;
    }

    test_host host;

private:
    vel_charmap *kept_ = nullptr;
};

} // namespace vel_test

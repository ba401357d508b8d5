// Conversions read from objects in memory.
#pragma once

#include <gtest/gtest.h>

#include "support/host.h"
#include "support/make_conversion.h"
#include "vels/convert.h"
#include "vels/errors.h"

namespace vel_test {

inline int32_t error_of(const vel_cv *cv) {
    return *reinterpret_cast<const int32_t *>(cv);
}

class conv_test : public testing::Test {
protected:
    conv_test() { host.environment["CORVANEDIR"] = "/root"; }
    ~conv_test() override {
        EXPECT_EQ(host.blocks.size(), 0u) << "leaked";
        EXPECT_EQ(host.open_streams, 0);
    }

    void install(const std::string &name, const std::string &text) {
        host.files["/root/vels/cv9/" + name] = text;
    }
    // The caller unloads it.
    vel_cv *open(const conversion_parts &parts) {
        install("x.cvo", parts.text());
        vel_cv *cv = nullptr;
        EXPECT_EQ(vel_iconv_open1(&cv, "x.cvo"), 0);
        EXPECT_EQ(error_of(cv), 0);
        return cv;
    }
    // The error number of an object, -1 when it is refused without one.
    int32_t load_error(const std::string &text) {
        install("x.cvo", text);
        vel_cv *cv = nullptr;
        const int32_t result = vel_iconv_open1(&cv, "x.cvo");
        const int32_t error = error_of(cv);
        EXPECT_TRUE(result == 0 ? error == 0 : result == -1);
        vel_cv_unload(cv);
        return result == 0 ? 0 : error ? error : -1;
    }

    test_host host;
};

// ASCII letters and a few characters of two, three and four bytes, one of them replaced and one
// illegal.
inline conversion_parts general_parts() {
    conversion_parts parts;
    parts.source_max = 4;
    parts.target_max = 3;
    for (int c = 1; c < 0x80; ++c) {
        parts.entries[std::string(1, static_cast<char>(c))] = {
            plain, std::string(1, static_cast<char>(c))};
    }
    parts.entries[std::string(1, '\0')] = {terminator, std::string(1, '\0')};
    parts.entries["\xA4\xA2"] = {plain, "\xE3\x81\x82"};
    parts.entries["\xA4\xA3"] = {substitute, "?"};
    parts.entries["\xA4\xA4"] = {0, ""};
    parts.entries["\xA4\xA5"] = {plain, ""};
    parts.entries["\x8F\xB0\xA1"] = {plain, "\xC3\xA9"};
    parts.entries["\x81\x30\x81\x30"] = {plain, "\xC2\x80"};
    return parts;
}

// The same characters with letters of two states on both sides: SO and SI in the source, < and >
// around the shifted state in the target.
inline conversion_parts stateful_parts() {
    conversion_parts parts = general_parts();
    parts.shifts = "1 1\n";
    parts.sequences = "1"
                      "3c"
                      "2"
                      "3e3E"
                      "00\n";
    parts.entries["\x0E"] = {toggle, ""};
    parts.entries["\x0F"] = {plain, ""};
    parts.entries["z"] = {shifted, "Z"};
    parts.shifted_entries["\x0F"] = {toggle | 0x40, ""};
    parts.shifted_entries["!!"] = {shifted, "\xE3\x82"};
    parts.shifted_entries["!a"] = {plain, "a"};
    parts.shifted_entries[std::string(1, '\0')] = {0x58, "0"};
    return parts;
}

inline conversion_parts single_byte_parts() {
    conversion_parts parts;
    for (int c = 0; c < 256; ++c) {
        const std::string turned(1, static_cast<char>(255 - c));
        parts.entries[std::string(1, static_cast<char>(c))] = {c == 0     ? terminator
                                                               : c == 7   ? uint8_t{0}
                                                               : c == 200 ? substitute
                                                                          : plain,
                                                               turned};
    }
    return parts;
}

// Units of this size as the source, or as the target of single bytes.
inline conversion_parts wide_parts(int unit, bool source) {
    conversion_parts parts;
    const int target_unit = source ? 1 : unit;
    parts.source_min = parts.source_max = source ? unit : 1;
    parts.target_min = parts.target_max = target_unit;
    if (source) parts.target_max = 3;
    if (source) parts.target_min = 1;
    for (int c = 0; c < 256; ++c) {
        const std::string byte(1, static_cast<char>(c));
        std::string wide(static_cast<size_t>(unit), '\0');
        wide[static_cast<size_t>(unit) - 1] = static_cast<char>(c);
        wide[static_cast<size_t>(unit) - 2] = static_cast<char>(c % 3);
        const uint8_t flags = c == 0 ? terminator : c == 9 ? substitute : plain;
        if (c != 100) parts.entries[source ? wide : byte] = {flags, source ? byte + byte : wide};
    }
    return parts;
}

} // namespace vel_test

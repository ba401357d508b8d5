// Formatting in real locales, with every call made by both faces and in every size of buffer.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "record/portable.h"
#include "record/record.h"
#include "support/make_locale.h"
#include "support/pack.h"
#include "vels.h"

using wide_text = std::vector<vel_wchar>; // with its terminator

class formatting : public testing::Test {
protected:
    // A locale of the pack by its name; the null locale without one.
    vel_locale *load(const std::string &name) {
        vel_test::loaded_locale &locale = loaded_[name];
        if (locale) return locale.get();
        vel_locale *made = nullptr;
        if (name.empty() && vel_create_null_locale_4(&made) == 0) locale.reset(made);
        if (!name.empty()) locale = vel_test::load_from_pack(name);
        EXPECT_TRUE(locale) << name;
        return locale.get();
    }

    static int32_t error_of(const vel_locale *locale) { return locale->error; }

    // The characters of UTF-8 text in the code set: portable ones anywhere, others in UTF-8 only.
    static wide_text widen(const vel_locale *locale, const std::string &text) {
        wide_text wide;
        for (size_t i = 0; i < text.size();) {
            unsigned char lead = static_cast<unsigned char>(text[i]);
            size_t n = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
            vel_wchar value = 0;
            for (size_t k = 0; k < n; ++k)
                value = value << 8 | static_cast<unsigned char>(text[i + k]);
            wide.push_back(n == 1 ? vel::value_of(locale, text[i]) : value);
            i += n;
        }
        wide.push_back(0);
        return wide;
    }
    static std::string narrow(const wide_text &wide) {
        std::string bytes;
        for (size_t i = 0; i + 1 < wide.size(); ++i) bytes += vel_test::pack(wide[i]);
        return bytes;
    }
    // UTF-8 or ASCII again.
    static std::string read_back(const vel_locale *locale, const std::string &bytes) {
        std::string text;
        for (char c : bytes) {
            char ascii = static_cast<char>(vel::portable_of(locale, static_cast<uint8_t>(c)));
            text += ascii ? ascii : c;
        }
        return text;
    }

    // A value, and what a format makes of it.
    template <typename Value> struct format_row {
        const char *format;
        Value value;
        std::string expected;
        const char *locale = "en_us.utf8";
    };
    template <typename Value, size_t count>
    void check_formats(const format_row<Value> (&rows)[count]) {
        for (const format_row<Value> &each : rows)
            EXPECT_EQ(format(each.locale, each.format, each.value), each.expected)
                << each.locale << " " << each.format;
    }

    // What a format makes of its arguments, "error N" for a failure. A null locale has no multibyte
    // text.
    template <typename... Arguments>
    std::string format(const std::string &locale_name, const std::string &text,
                       Arguments... arguments) {
        return run(vel_mbsfnum, vel_wcsfnum, locale_name, text, arguments...);
    }
    template <typename... Arguments>
    std::string money(const std::string &locale_name, const std::string &text,
                      Arguments... arguments) {
        return run(vel_mbsfmon, vel_wcsfmon, locale_name, text, arguments...);
    }

private:
    template <typename Multibyte, typename Wide, typename... Arguments>
    std::string run(Multibyte multibyte, Wide wide, const std::string &locale_name,
                    const std::string &text, Arguments... arguments) {
        vel_locale *locale = load(locale_name);
        const wide_text wide_format = widen(locale, text);
        wide_text values(2000);
        int32_t count = wide(locale, values.data(), 1999, wide_format.data(), arguments...);
        const int32_t wide_error = count < 0 ? error_of(locale) : 0;
        values.resize(static_cast<size_t>(count < 0 ? 0 : count) + 1);
        std::string result = narrow(values);
        if (!locale_name.empty()) {
            const std::string bytes_format = narrow(wide_format);
            std::string bytes(4000, '#');
            int32_t n = multibyte(locale, bytes.data(), 4000, bytes_format.c_str(), arguments...);
            EXPECT_EQ(n < 0 ? error_of(locale) : 0, wide_error) << text;
            bytes.resize(static_cast<size_t>(n < 0 ? 0 : n));
            EXPECT_EQ(bytes, result) << text;
            for (int32_t size = -1; size <= n; ++size) {
                std::string small(static_cast<size_t>(n) + 8, '#');
                EXPECT_EQ(multibyte(locale, small.data(), size, bytes_format.c_str(), arguments...),
                          -1)
                    << text << " in " << size;
                EXPECT_EQ(error_of(locale), VEL_E2BIG);
                const size_t begin = static_cast<size_t>(size < 0 ? 0 : size);
                EXPECT_EQ(small.find_first_not_of('#', begin), std::string::npos) << text;
            }
        }
        for (int32_t limit = -1; limit < count; ++limit) {
            wide_text small(values.size() + 8, '#');
            EXPECT_EQ(wide(locale, small.data(), limit, wide_format.data(), arguments...), -1);
            for (size_t i = static_cast<size_t>(limit < 0 ? 0 : limit); i < small.size(); ++i)
                EXPECT_EQ(small[i], vel_wchar{'#'}) << text << " in " << limit;
        }
        return wide_error ? "error " + std::to_string(wide_error) : read_back(locale, result);
    }

    std::map<std::string, vel_test::loaded_locale> loaded_;
};

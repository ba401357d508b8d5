// Texts written once for several code sets: X and Y stand for characters that share bytes with
// others and with 'a'; everything else is itself.
#pragma once

#include <gtest/gtest.h>

#include <cstring>

#include "support/make_locale.h"

namespace vel_test {

using wide_text = std::vector<vel_wchar>;

struct code_set {
    const char *name;
    locale_ptr (*make)();
    vel_wchar x, y;
    size_t least = 1; // bytes of the shortest character

    wide_text wide(const std::string &text) const {
        wide_text values;
        for (char c : text) {
            values.push_back(c == 'X' ? x : c == 'Y' ? y : static_cast<unsigned char>(c));
        }
        return values;
    }
    std::string bytes(const wide_text &values) const {
        std::string packed;
        for (vel_wchar value : values) packed += pack(value, least);
        return packed;
    }
    std::string bytes(const std::string &text) const { return bytes(wide(text)); }
    int32_t size(const std::string &text) const { return static_cast<int32_t>(bytes(text).size()); }
};

// One or two bytes, with ASCII bytes that trail and with blanks.
inline locale_ptr make_mixed() {
    auto made = std::make_unique<test_locale>();
    made->add_ascii();
    made->add_rows(0x81, 0x85, 0x20, 0xFC);
    made->add_blanks();
    made->finish();
    return made;
}

inline const code_set code_sets[] = {
    {"single byte", make_single_byte, 0xE9, 0xE1}, {"utf8", make_utf8, 0xE38182, 0xE38181},
    {"sjis", make_sjis, 0x8361, 0x8261},           {"two bytes", make_two_byte, 0x6100, 0x0161, 2},
    {"euc", make_euc, 0x8F00A1, 0x8FB0A1},         {"mixed", make_mixed, 0x8120, 0x8161},
};

// A block of exactly these units, for the sanitizer to watch.
template <typename Unit> class block {
public:
    template <typename Text> explicit block(const Text &text) : units_(new Unit[text.size()]) {
        std::copy(text.begin(), text.end(), units_.get());
    }
    Unit *get() const { return units_.get(); }
    operator Unit *() const { return get(); }

private:
    std::unique_ptr<Unit[]> units_;
};

inline std::string terminated(const code_set &set, std::string bytes) {
    return bytes + std::string(set.least, '\0');
}
inline wide_text terminated(wide_text values) {
    values.push_back(0);
    return values;
}

template <typename Check> void for_each_set(Check check) {
    for (const code_set &set : code_sets) {
        SCOPED_TRACE(set.name);
        locale_ptr made = set.make();
        check(set, made->get());
        if (::testing::Test::HasFailure()) return;
    }
}

} // namespace vel_test

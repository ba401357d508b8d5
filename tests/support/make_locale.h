// Small locales made in memory: a code set, a few classes and case pairs.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ctype/complete.h"
#include "ext/memory.h"
#include "objfile/trie.h"
#include "record/record.h"
#include "vels/ctype.h"

namespace vel_test {

// The bytes of a packed value, `least` of them at the least.
inline std::string pack(vel_wchar value, size_t least = 1) {
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8) {
        if (!bytes.empty() || value >> shift || static_cast<size_t>(shift / 8) < least) {
            bytes += static_cast<char>(value >> shift & 0xFF);
        }
    }
    return bytes;
}

// The packed UTF-8 character of a code point.
inline vel_wchar utf8(uint32_t code) {
    if (code < 0x80) return code;
    if (code < 0x800) return 0xC080 | (code >> 6 << 8) | (code & 0x3F);
    if (code < 0x10000) {
        return 0xE08080 | (code >> 12 << 16) | ((code >> 6 & 0x3F) << 8) | (code & 0x3F);
    }
    return 0xF0808080 | (code >> 18 << 24) | ((code >> 12 & 0x3F) << 16) |
           ((code >> 6 & 0x3F) << 8) | (code & 0x3F);
}

struct case_rule {
    vel_wchar upper, lower; // 0: the character maps to itself
};

class test_locale {
public:
    // `least` is the shortest character of the code set, to which values are padded.
    explicit test_locale(size_t least = 1) : least_(least) {
        classes_ = vel::vel_trie_create(2, 0, nullptr);
        cases_ = vel::vel_trie_create(2, 0, nullptr);
    }
    ~test_locale() {
        vel::release_table(record_.ctype.characters);
        vel::release_table(record_.ctype.cases);
        vel::vel_free(record_.byte_upper);
        vel::vel_free(record_.byte_lower);
        vel::vel_free(record_.byte_classes);
    }
    test_locale(const test_locale &) = delete;
    test_locale &operator=(const test_locale &) = delete;

    void add(vel_wchar value, int32_t mask = 0) { insert(value, static_cast<uint16_t>(mask), 0); }
    void add_range(vel_wchar first, vel_wchar last) {
        for (vel_wchar value = first; value <= last; ++value) add(value);
    }
    // Rows of two-byte characters: every lead with every trail.
    void add_rows(vel_wchar first_lead, vel_wchar last_lead, vel_wchar first, vel_wchar last) {
        for (vel_wchar lead = first_lead; lead <= last_lead; ++lead) {
            add_range(lead << 8 | first, lead << 8 | last);
        }
    }
    // A pair of letters; either can be listed again, or map elsewhere by `rule`.
    void add_case(vel_wchar upper, vel_wchar lower) {
        add_mapped(upper, VEL_CLASS_UPPER | VEL_CLASS_ALPHA, {upper, lower});
        add_mapped(lower, VEL_CLASS_LOWER | VEL_CLASS_ALPHA, {upper, lower});
    }
    void add_mapped(vel_wchar value, int32_t mask, case_rule rule) {
        pairs_.push_back({rule.upper, rule.lower});
        insert(value, static_cast<uint16_t>(mask), static_cast<uint16_t>(pairs_.size() - 1));
    }
    void add_ascii_letters() {
        for (vel_wchar c = 'a'; c <= 'z'; ++c) add_case(c - 32, c);
    }
    void add_blanks() {
        add(' ', VEL_CLASS_SPACE | VEL_CLASS_BLANK);
        add('\t', VEL_CLASS_SPACE | VEL_CLASS_BLANK | VEL_CLASS_CNTRL);
    }
    void add_ascii() {
        add_range(0, 0x7F);
        add_ascii_letters();
    }

    // To be called once, when all characters are in.
    vel_locale *finish() {
        vel::trie_accept_every_byte(classes_);
        vel::trie_accept_every_byte(cases_);
        record_.ctype.characters = vel::seal(classes_);
        record_.ctype.cases = vel::seal(cases_);
        vel::vel_trie_free(classes_);
        vel::vel_trie_free(cases_);
        record_.ctype.pair_count = static_cast<int32_t>(pairs_.size()) - 1;
        record_.ctype.pairs = pairs_.data();
        record_.collate.characters = record_.ctype.characters;
        record_.case_growth = 4.0;
        vel::complete_ctype(&record_);
        return &record_;
    }
    vel_locale *get() { return &record_; }

private:
    void insert(vel_wchar value, uint16_t mask, uint16_t index) {
        vel::vel_mbkey key{};
        std::string bytes = pack(value, least_);
        key.length = static_cast<uint32_t>(bytes.size());
        bytes.copy(reinterpret_cast<char *>(key.bytes), 4);
        vel::vel_trie_insert(classes_, &key, mask ? &mask : nullptr);
        vel::vel_trie_insert(cases_, &key, index ? &index : nullptr);
    }

    size_t least_;
    vel::vel_trie *classes_, *cases_;
    std::vector<vel::case_pair> pairs_{{0, 0}}; // addressed from 1
    vel_locale record_{};
};

using locale_ptr = std::unique_ptr<test_locale>;

inline locale_ptr make_utf8_base() {
    auto made = std::make_unique<test_locale>();
    for (uint32_t code = 0; code < 0x110000; ++code) {
        if (code - 0xD800 >= 0x800) made->add(utf8(code));
    }
    return made;
}

// All scalar values, ASCII, Latin-1 and Cyrillic letters.
inline locale_ptr make_utf8() {
    auto made = make_utf8_base();
    made->add_ascii_letters();
    for (uint32_t code = 0xC0; code < 0xDF; ++code) {
        if (code != 0xD7) made->add_case(utf8(code), utf8(code + 32));
    }
    for (uint32_t code = 0x410; code < 0x430; ++code) made->add_case(utf8(code), utf8(code + 32));
    made->add_blanks();
    made->add(utf8(0x3000), VEL_CLASS_SPACE | VEL_CLASS_BLANK);
    made->finish();
    return made;
}

// ASCII letters and those of Latin-1; E9 is a letter without an upper case.
inline locale_ptr make_single_byte() {
    auto made = std::make_unique<test_locale>();
    made->add_range(0, 0xFF);
    made->add_ascii_letters();
    for (vel_wchar c = 0xC0; c < 0xDF; ++c) {
        if (c != 0xC9) made->add_case(c, c + 32);
    }
    made->add_blanks();
    made->finish();
    return made;
}

// Characters of one to three bytes.
inline locale_ptr make_euc_base() {
    auto made = std::make_unique<test_locale>();
    made->add_ascii();
    made->add_rows(0x8E, 0x8E, 0xA1, 0xDF);
    made->add_rows(0xA1, 0xA7, 0xA1, 0xF3);
    made->add_range(0x8FB0A1, 0x8FB0FE);
    return made;
}

// With gaps in the rows, and a character with a zero byte inside.
inline locale_ptr make_euc() {
    auto made = make_euc_base();
    made->add_rows(0xB0, 0xCE, 0xA1, 0xFE);
    made->add_rows(0xCF, 0xCF, 0xA1, 0xD3);
    for (vel_wchar lead = 0x8FB1; lead <= 0x8FB8; ++lead) {
        made->add_range(lead << 8 | 0xA1, lead << 8 | 0xFE);
    }
    made->add(0x8F00A1);
    made->finish();
    return made;
}

// One or two bytes; ASCII bytes and single bytes are also trailing bytes.
inline locale_ptr make_sjis() {
    auto made = std::make_unique<test_locale>();
    made->add_ascii();
    made->add_range(0xA1, 0xDF);
    for (auto [first, last] : {std::pair{0x81, 0x84}, {0x88, 0x9F}, {0xE0, 0xEA}}) {
        made->add_rows(static_cast<vel_wchar>(first), static_cast<vel_wchar>(last), 0x40, 0x7E);
        made->add_rows(static_cast<vel_wchar>(first), static_cast<vel_wchar>(last), 0x80, 0xFC);
    }
    made->finish();
    return made;
}

// One, two and four bytes.
inline locale_ptr make_gb() {
    auto made = std::make_unique<test_locale>();
    made->add_ascii();
    made->add_rows(0x85, 0xFE, 0x40, 0x7E);
    made->add_rows(0x85, 0xFE, 0x80, 0xFE);
    for (vel_wchar pair = 0x8130; pair <= 0x8139; ++pair) {
        for (vel_wchar third = 0x81; third <= 0xFE; ++third) {
            vel_wchar row = pair << 16 | third << 8;
            made->add_range(row | 0x30, row | 0x39);
        }
    }
    made->finish();
    return made;
}

// Always two bytes; the rows D8 to DF are missing. Zero bytes are everywhere.
inline locale_ptr make_two_byte() {
    auto made = std::make_unique<test_locale>(2);
    made->add_range(0, 0xD7FF);
    made->add_range(0xE000, 0xFFFF);
    made->add_ascii_letters();
    made->finish();
    return made;
}

// The error number left by an operation, which starts from none.
template <typename Operation> int32_t error_of(vel_locale *locale, Operation operation) {
    locale->error = 0;
    operation();
    return locale->error;
}

// A result and the error number that goes with it.
#define EXPECT_RESULT(result, number, locale, call)                                                \
    do {                                                                                           \
        (locale)->error = 0;                                                                       \
        EXPECT_EQ((result), (call));                                                               \
        EXPECT_EQ((number), (locale)->error) << #call;                                             \
    } while (0)

} // namespace vel_test

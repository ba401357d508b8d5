// Every routine against the rules of conversion, followed character by character.
#include <algorithm>
#include <random>

#include "conv/conv_fixture.h"
#include "support/guarded.h"

using namespace vel_test;

namespace {

struct result {
    int32_t status, error;
    size_t used;
    std::string output;
    int32_t room, substituted, in_shifted, out_shifted;

    bool operator==(const result &) const = default;
};

std::ostream &operator<<(std::ostream &out, const result &one) {
    out << one.status << " error " << one.error << ", used " << one.used << ", room " << one.room
        << ", substituted " << one.substituted << ", states " << one.in_shifted << one.out_shifted
        << ", output";
    for (unsigned char c : one.output) out << " " << std::hex << int{c} << std::dec;
    return out;
}

struct rules {
    const char *name;
    conversion_parts parts;
    size_t source_unit, target_unit; // 0 for characters in the order of their bytes

    // The character at a place: its source bytes as in the table, empty with an error number.
    std::string find(const targets &table, const std::string &text, size_t at,
                     int32_t *error) const {
        for (size_t n = 1; n <= 4; ++n) {
            *error = VEL_EINVAL;
            if (source_unit) n = source_unit;
            if (at + n > text.size()) return "";
            std::string key = text.substr(at, n);
            if (source_unit) std::reverse(key.begin(), key.end());
            if (table.count(key)) return key;
            *error = VEL_EILSEQ;
            auto next = table.lower_bound(key);
            if (source_unit || next == table.end() || next->first.compare(0, n, key) != 0) break;
        }
        return "";
    }

    result convert(const std::string &text, bool terminated, int32_t room,
                   vel_cv_state state) const {
        const bool shifts = parts.shifts[0] != '0';
        if (shifts && state.reset) state.in_shifted = state.out_shifted = 0;
        result r{0, 0, 0, "", room, 0, state.in_shifted, state.out_shifted};
        for (bool ended = false; !ended && r.used < text.size() && !r.error;) {
            const targets &table = shifts && r.in_shifted ? parts.shifted_entries : parts.entries;
            const std::string key = find(table, text, r.used, &r.error);
            if (key.empty()) break;
            r.error = 0;
            const target &entry = table.at(key);
            if (!(entry.flags & 0xF8)) {
                r.error = VEL_EILSEQ;
                break;
            }
            r.substituted |= (entry.flags & 0x20) != 0;
            ended = terminated && (entry.flags & 0x08);
            if (entry.flags & 0x80) r.in_shifted = !r.in_shifted;
            std::string bytes = entry.bytes;
            if (target_unit) std::reverse(bytes.begin(), bytes.end());
            const bool last = ended || (!terminated && r.used + key.size() == text.size());
            if (shifts && r.out_shifted != ((entry.flags & 0x40) != 0)) {
                r.out_shifted = !r.out_shifted;
                bytes = (r.out_shifted ? "<" : ">>") + bytes;
            }
            if (shifts && state.flush && r.out_shifted && last) bytes += ">>";
            const int32_t length = static_cast<int32_t>(bytes.size());
            if (r.room < (target_unit ? 2 : length)) {
                r.error = VEL_E2BIG;
                break;
            }
            r.output += bytes;
            r.room -= length;
            r.used += key.size();
        }
        r.status = r.error ? -1 : 0;
        return r;
    }
};

std::vector<rules> all_rules() {
    return {
        {"general", general_parts(), 0, 0},           {"single byte", single_byte_parts(), 0, 0},
        {"two states", stateful_parts(), 0, 0},       {"units of 2", wide_parts(2, true), 2, 0},
        {"units of 4", wide_parts(4, true), 4, 0},    {"to units of 2", wide_parts(2, false), 0, 2},
        {"to units of 4", wide_parts(4, false), 0, 4}};
}

class engine : public conv_test {
protected:
    enum class mode { counted, terminated, measured };

    // Text and room end where nothing can be read or written.
    result run(vel_cv *cv, const std::string &text, mode how, int32_t room, vel_cv_state state,
               int32_t spill) {
        const unsigned char *start = input.put(text);
        const unsigned char *in = start;
        unsigned char *const out_start = output.last(static_cast<size_t>(room + spill));
        unsigned char *out = out_start;
        int32_t length = static_cast<int32_t>(text.size()), space = room, substituted = 77;
        *reinterpret_cast<int32_t *>(cv) = 0;
        const int32_t status =
            how == mode::measured
                ? vel_mconvlen(cv, &state, &in, &length, &space, &substituted)
                : vel_cv_mconv(cv, &state, &in, how == mode::counted ? &length : nullptr, &out,
                               &space, &substituted);
        result r{status,
                 error_of(cv),
                 static_cast<size_t>(in - start),
                 "",
                 space,
                 substituted,
                 state.in_shifted,
                 state.out_shifted};
        if (how != mode::terminated) {
            EXPECT_EQ(length + r.used, text.size());
        }
        r.output.assign(out_start, out);
        return r;
    }

    void compare(const rules &rule, vel_cv *cv, const std::string &text, int32_t room,
                 vel_cv_state state = {1, 1, 0, 0}) {
        const int32_t spill = rule.target_unit == 4 ? 2 : 0;
        const result expected = rule.convert(text, false, room, state);
        result got = run(cv, text, mode::counted, room, state, spill);
        ASSERT_EQ(got, expected) << rule.name << ", " << text.size() << " bytes";
        got = run(cv, text, mode::measured, room, state, spill);
        got.output = expected.output;
        ASSERT_EQ(got, expected) << rule.name << ", measured";
        const result whole = rule.convert(text, true, 1 << 20, state);
        const size_t unit = rule.source_unit ? rule.source_unit : 1;
        // Text without its terminator may be read on.
        const bool ends =
            text.find('\0') != std::string::npos &&
            (whole.error || (whole.used >= unit &&
                             text.substr(whole.used - unit, unit) == std::string(unit, '\0')));
        if (!ends || whole.error == VEL_EINVAL) return;
        got = run(cv, text, mode::terminated, room, state, spill);
        ASSERT_EQ(got, rule.convert(text, true, room, state)) << rule.name << ", terminated";
    }

    guarded_page input, output;
};

TEST_F(engine, all_inputs_of_one_and_two_bytes) {
    for (const rules &rule : all_rules()) {
        vel_cv *cv = open(rule.parts);
        for (int first = 0; first < 256; ++first) {
            compare(rule, cv, std::string(1, static_cast<char>(first)), 16);
            for (int second = 0; second < 256; ++second) {
                compare(rule, cv, {static_cast<char>(first), static_cast<char>(second)}, 16);
                if (HasFatalFailure()) break;
            }
        }
        vel_cv_unload(cv);
    }
}

TEST_F(engine, random_texts_in_every_room) {
    const uint32_t seed = 20261121;
    std::mt19937 random(seed);
    for (const rules &rule : all_rules()) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        vel_cv *cv = open(rule.parts);
        std::vector<std::string> characters;
        for (const targets *table : {&rule.parts.entries, &rule.parts.shifted_entries}) {
            for (const auto &[key, entry] : *table) {
                characters.push_back(key);
                if (rule.source_unit)
                    std::reverse(characters.back().begin(), characters.back().end());
                // The rare ones more often, errors and ends less often than every other time.
                if (entry.flags & 0xE0 || key.size() > 1) characters.push_back(characters.back());
            }
        }
        for (int round = 0; round < 400 && !HasFatalFailure(); ++round) {
            std::string text;
            for (size_t i = 0, n = random() % 60; i < n; ++i) {
                text += characters[random() % characters.size()];
            }
            if (round % 4 == 0 && !text.empty()) text[random() % text.size()] = '\xFF';
            if (round % 4 == 1) text += std::string(4, '\0');
            const vel_cv_state state{random() % 2 == 0, random() % 2 == 0, random() % 3 == 0,
                                     random() % 3 == 0};
            for (int32_t room = 0; room < 40; ++room) compare(rule, cv, text, room, state);
            compare(rule, cv, text, 1000, state);
        }
        vel_cv_unload(cv);
    }
}

} // namespace

// Classes, columns and case of every character, against the host.
#include "differential/against_host.h"

namespace differential {
namespace {

constexpr const char *standard_names[] = {"upper", "lower", "alpha", "digit",  "space", "cntrl",
                                          "punct", "graph", "print", "xdigit", "blank"};
// Classes of our own that some source defines; each fits one bit above the standard ones.
constexpr const char *own_names[] = {"combining", "combining_level3", "jspace", "jhira", "jkata",
                                     "jkanji",    "jdigit",           "hangul", "hanja", "hanzi"};

class classes : public against_host {
protected:
    struct compared_class {
        const char *name;
        int32_t ours;
        wctype_t host;
    };

    void SetUp() override {
        against_host::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        for (const char *name : standard_names) both_.push_back(look_up(name));
        for (uint32_t i = 0; i < std::size(own_names); ++i) {
            const compared_class one = look_up(own_names[i]);
            if (one.ours && one.host)
                both_.push_back(one);
            else if (one.ours || one.host)
                found().add("class left out", i, [&] {
                    return std::string(one.name) + ": only " + (one.ours ? "ours" : "the host") +
                           " has it";
                });
        }
    }

    compared_class look_up(const char *name) const {
        return {name, vel_ctype(ours(), name), host().class_named(name)};
    }

    int32_t host_mask(char32_t code) const {
        int32_t mask = 0;
        for (const compared_class &one : both_)
            if (host().in_class(code, one.host)) mask |= one.ours;
        return mask;
    }
    int32_t compared_bits() const {
        int32_t bits = 0;
        for (const compared_class &one : both_) bits |= one.ours;
        return bits;
    }
    std::string names_of(int32_t mask) const {
        std::string names;
        for (const compared_class &one : both_)
            if (mask & one.ours) names += std::string(names.empty() ? "" : " ") + one.name;
        return names.empty() ? "none" : names;
    }

    // The value that the host's counterpart has here: the character itself where it has none, or
    // none that the code set can write.
    uint32_t value_of(char32_t counterpart, char32_t code, uint32_t itself) const {
        if (counterpart == code) return itself;
        const std::string bytes = host().write(counterpart);
        return bytes.empty() ? itself : packed(bytes);
    }

    void compare_case(std::string_view aspect, const std::string &bytes, char32_t code,
                      char32_t host_code, vel_wchar by_value,
                      int32_t (*by_bytes)(vel_locale *, char *, const char *)) {
        const uint32_t value = packed(bytes), expected = value_of(host_code, code, value);
        char out[4];
        const int32_t lengths = by_bytes(ours(), out, bytes.c_str());
        const std::string written(out, lengths & 0xFF);
        if (by_value == expected && packed(written) == expected &&
            lengths >> 8 == static_cast<int32_t>(bytes.size()))
            return;
        found().add(aspect, value, [&] {
            return "U+" + findings::hex(code) + ": ours " + findings::hex(by_value) +
                   " by value, " + findings::hex(packed(written)) + " by bytes, the host " +
                   findings::hex(expected) + " (U+" + findings::hex(host_code) + ")";
        });
    }

private:
    std::vector<compared_class> both_;
};

TEST_P(classes, every_character_is_in_the_same_classes) {
    const int32_t bits = compared_bits();
    for_each_common_character([&](const std::string &bytes, const probe &theirs) {
        const int32_t expected = host_mask(theirs.code);
        const int32_t by_value = vel_im_iswctype(ours(), packed(bytes), bits);
        const int32_t by_bytes = vel_im_ismctype(ours(), bytes.c_str(), bits);
        if (by_value == expected && by_bytes == expected) return;
        found().add("class", packed(bytes), [&] {
            return "U+" + findings::hex(theirs.code) + ": ours " + names_of(by_value) +
                   " by value, " + names_of(by_bytes) + " by bytes, the host " + names_of(expected);
        });
    });
    EXPECT_EQ(vel_ctype(ours(), "alnum"), VEL_CLASS_ALPHA | VEL_CLASS_DIGIT);
    found().settle({"class", "class left out"});
}

TEST_P(classes, every_character_is_as_wide) {
    const int32_t full_width = vel_ctype(ours(), "full_width");
    ASSERT_NE(full_width, 0);
    for_each_common_character([&](const std::string &bytes, const probe &theirs) {
        const int columns = host().columns(theirs.code);
        const bool wide = vel_im_iswctype(ours(), packed(bytes), full_width) != 0;
        if (wide == (columns == 2)) return;
        found().add("columns", packed(bytes), [&] {
            return "U+" + findings::hex(theirs.code) +
                   (wide ? ": two for us, " : ": one for us, ") + std::to_string(columns) +
                   " for the host";
        });
    });
    found().settle({"columns"});
}

TEST_P(classes, every_character_has_the_same_case) {
    for_each_common_character([&](const std::string &bytes, const probe &theirs) {
        const uint32_t value = packed(bytes);
        compare_case("upper", bytes, theirs.code, host().upper(theirs.code),
                     vel_im_towupper(ours(), value), vel_im_tomupper);
        compare_case("lower", bytes, theirs.code, host().lower(theirs.code),
                     vel_im_towlower(ours(), value), vel_im_tomlower);
    });
    found().settle({"upper", "lower"});
}

INSTANTIATE_TEST_SUITE_P(locales, classes, testing::ValuesIn(all_cases), parameter_name);

} // namespace
} // namespace differential

// What the commands need to know about the code set of a loaded locale.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "vels.h"

namespace vel_tool {

// Where the newlines of a code set stand.
struct newline_search {
    std::string unit;

    // The place, at a multiple of the unit's length, of the first one from `from` on, or npos. Text
    // must begin with a whole character.
    size_t find(std::string_view text, size_t from) const;
};

class code_set {
public:
    explicit code_set(vel_locale *locale);

    vel_locale *locale() const { return locale_; }
    const std::string &name() const { return name_; }
    size_t shortest() const { return shortest_; } // bytes of a character
    size_t longest() const { return longest_; }
    bool is_utf8() const { return utf8_; }
    bool has_ascii() const { return ascii_; } // bytes 0x20 to 0x7E mean what they mean in ASCII
    bool is_fixed() const { return shortest_ == longest_; }

    // True when bytes of a single-byte code set are not assigned. The library takes every byte of
    // such a code set for a character; those that are none stand out by having no class at all.
    bool has_holes() const { return has_holes_; }
    bool any_hole(std::string_view text) const;

    static constexpr int invalid = -1;
    static constexpr int incomplete = 0;
    // Bytes of the first character of a text that is not empty, or one of the above.
    int character(std::string_view text) const;
    // Bytes of the invalid sequence that the text begins with: all bytes up to the one that cannot
    // go on, or the least length of a character.
    size_t invalid_bytes(std::string_view text) const;

    // The ASCII form of one character, 0 when it has none or is no letter, digit or common sign.
    char ascii(std::string_view character) const;

    const std::string &newline() const { return newline_.unit; }
    const newline_search &newline_places() const { return newline_; }
    // The number of newlines. Text must begin with a whole character.
    size_t newlines(std::string_view text) const;

    // The place of the first null character, or npos. Text must begin with a whole character.
    size_t find_null(std::string_view text) const;

private:
    vel_locale *locale_;
    std::string name_;
    size_t shortest_;
    size_t longest_;
    bool utf8_;
    bool ascii_;
    bool has_holes_ = false;
    std::array<bool, 256> holes_{};
    newline_search newline_;
};

} // namespace vel_tool

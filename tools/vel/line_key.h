// What a line is sorted by: the sort key of the line, or of one of its fields.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "vel/code_set.h"

namespace vel_tool {

struct field_choice {
    uint32_t number = 0;   // from 1; 0 for the whole line
    std::string separator; // one character; empty for blanks
};

class key_maker {
public:
    // The choice has to outlive the maker.
    key_maker(const code_set &codes, const field_choice &field);

    // The key, which is there until the next call. Nothing when the line holds invalid text.
    //
    // A null character ends what the library makes a key of, so the key of text that holds some is
    // the keys of the parts with a zero byte between them, which no key holds.
    std::optional<std::string_view> key_of(std::string_view line);

private:
    bool is_invalid(std::string_view line) const;
    std::string_view field_of(std::string_view line) const;
    std::string_view separated_field(std::string_view line) const;
    std::string_view blank_field(std::string_view line) const;
    size_t skip(std::string_view line, size_t at, bool blanks) const;
    bool is_blank(std::string_view character) const;
    bool add_key(const char *text);

    const code_set &codes_;
    const field_choice &field_;
    int32_t blank_mask_;
    size_t longest_key_;
    std::string text_; // terminated
    std::vector<char> key_;
    size_t used_ = 0; // bytes of it
};

// The place of the first invalid sequence, the size of the text when it has none.
size_t first_invalid(const code_set &codes, std::string_view text);

} // namespace vel_tool

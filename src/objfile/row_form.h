// The forms that rows of a sealed table can have, from which sealing tells the shape of a code set.
#pragma once

#include <cstdint>

namespace vel {

// What the rows of a UTF-8 table look like.
enum row_form : uint8_t {
    form_other,
    form_tail1, // 80..BF end a character
    form_tail2, // 80..BF lead to tail1
    form_e0,    // A0..BF lead to tail1
    form_ed,    // 80..9F lead to tail1
    form_tail3, // 80..BF lead to tail2
    form_f0,    // 90..BF lead to tail2
    form_f4,    // 80..8F lead to tail2
};

struct row_form_rule {
    row_form form;
    unsigned char first, last; // bytes that are valid
    row_form below;            // form of the rows they lead to; form_other: they end a character
};

inline constexpr row_form_rule row_form_rules[] = {
    {form_tail1, 0x80, 0xBF, form_other}, {form_tail2, 0x80, 0xBF, form_tail1},
    {form_e0, 0xA0, 0xBF, form_tail1},    {form_ed, 0x80, 0x9F, form_tail1},
    {form_tail3, 0x80, 0xBF, form_tail2}, {form_f0, 0x90, 0xBF, form_tail2},
    {form_f4, 0x80, 0x8F, form_tail2},
};

struct lead_rule {
    unsigned char first, last;
    row_form below; // form_other: ends a character
};

inline constexpr lead_rule utf8_leads[] = {
    {0x00, 0x7F, form_other}, {0xC2, 0xDF, form_tail1}, {0xE0, 0xE0, form_e0},
    {0xE1, 0xEC, form_tail2}, {0xED, 0xED, form_ed},    {0xEE, 0xEF, form_tail2},
    {0xF0, 0xF0, form_f0},    {0xF1, 0xF3, form_tail3}, {0xF4, 0xF4, form_f4},
};

} // namespace vel

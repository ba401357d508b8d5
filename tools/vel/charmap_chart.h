// The characters of a code set as grids of 256, by their last byte.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "vel/charmap_handle.h"
#include "vel/conversion_chain.h"

namespace vel_tool {

struct chart_cell {
    enum { none, lead, character } kind = none; // a lead begins longer characters
    character_names what;
};

struct chart_grid {
    std::string lead; // the bytes in front of the last one
    std::array<chart_cell, 256> cells;

    bool has_row(size_t row) const; // any character or lead among its 16
};

class code_chart {
public:
    explicit code_chart(const std::string &name);

    const named_code_set &code_set() const { return code_set_; }
    std::string title() const; // what the charmap calls the code set
    size_t shortest() const;
    size_t longest() const;

    // Byte sequences of up to `most` bytes that begin longer characters, in order; the empty one,
    // which begins all of them, comes first.
    std::vector<std::string> leads(size_t most) const;
    bool is_lead(std::string_view bytes) const;
    chart_grid grid(const std::string &lead);

private:
    int32_t length_of(std::string_view bytes) const;
    void add_leads(const std::string &lead, size_t most, std::vector<std::string> &found) const;
    chart_cell character(std::string_view bytes);
    std::u32string converted_to_utf8(std::string_view bytes);

    named_code_set code_set_;
    charmap_handle charmap_;
    std::optional<conversion_step> to_utf8_; // for a charmap whose names tell no code points
    bool conversion_was_tried_ = false;
};

// "NUL", "NBSP": what stands for a character that cannot be seen; null for others.
struct abbreviation {
    uint32_t code_point;
    const char *text;
};
std::span<const abbreviation> abbreviations();
const char *abbreviation_of(uint32_t code_point);

std::string utf8_text(std::u32string_view code_points);

} // namespace vel_tool

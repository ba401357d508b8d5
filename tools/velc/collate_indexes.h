#pragma once

// Collation indexes: each is one row of weights, and characters that weigh the same share one.

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "velc/collate_order.h"

namespace velc {

using weight_row = std::array<std::uint16_t, most_passes>; // unused passes are 0

class weight_rows {
public:
    // The index of a row. Throws tool_error when there are too many.
    std::uint16_t index_of(const weight_row &row);
    const weight_row &operator[](std::uint16_t index) const { return rows_[index]; }
    std::size_t size() const { return rows_.size(); }
    // The column of a pass, four hexadecimal digits each.
    void append_pass(std::string &text, std::size_t pass) const;

private:
    std::vector<weight_row> rows_;
    std::map<weight_row, std::uint16_t> known_;
};

} // namespace velc

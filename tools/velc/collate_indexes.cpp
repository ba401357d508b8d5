#include "velc/collate_indexes.h"

#include "velc/object_text.h"
#include "velc/tool_error.h"

namespace velc {

namespace {

constexpr std::size_t index_limit = 0x10000;
constexpr std::size_t weights_on_a_line = 16;

} // namespace

std::uint16_t weight_rows::index_of(const weight_row &row) {
    const auto [entry, is_new] = known_.emplace(row, static_cast<std::uint16_t>(rows_.size()));
    if (!is_new) return entry->second;
    if (rows_.size() == index_limit)
        throw tool_error("LC_COLLATE: found more than {} different rows of weights, expected at "
                         "most that",
                         index_limit);
    rows_.push_back(row);
    return entry->second;
}

void weight_rows::append_pass(std::string &text, std::size_t pass) const {
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        append_hex16(text, rows_[i][pass]);
        if ((i + 1) % weights_on_a_line == 0 || i + 1 == rows_.size()) text += '\n';
    }
}

} // namespace velc

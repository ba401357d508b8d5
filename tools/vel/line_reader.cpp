#include "vel/line_reader.h"

#include <algorithm>
#include <cstring>

namespace vel_tool {
namespace {

constexpr size_t block_bytes = 256 << 10;

} // namespace

bool line_reader::next(std::string_view &line) {
    const size_t newline_size = newline_.unit.size();
    size_t searched = 0;
    for (;;) {
        std::string_view rest(buffer_.data() + begin_, end_ - begin_);
        size_t length = newline_.find(rest, searched);
        bool ended = length != std::string_view::npos;
        if (!ended && !at_end_) {
            searched = rest.size() / newline_size * newline_size;
            read_more();
            continue;
        }
        if (rest.empty()) return false;
        line = rest.substr(0, length);
        size_t step = line.size() + (ended ? newline_size : 0);
        begin_ += step;
        offset_ = next_offset_;
        next_offset_ += step;
        ++number_;
        return true;
    }
}

void line_reader::read_more() {
    if (begin_ > 0) memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
    end_ -= begin_;
    begin_ = 0;
    if (end_ + block_bytes > buffer_.size()) {
        buffer_.resize(std::max(2 * buffer_.size(), end_ + block_bytes));
    }
    size_t got = source_.read(buffer_.data() + end_, block_bytes);
    end_ += got;
    at_end_ = got == 0;
}

} // namespace vel_tool

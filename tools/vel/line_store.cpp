#include "vel/line_store.h"

#include <algorithm>
#include <cstring>

namespace vel_tool {
namespace {

constexpr size_t block_bytes = 1 << 20;
// Records grow by doubling, and a stable sort takes half as many again.
constexpr size_t record_room = 2;

uint64_t first_bytes_of(std::string_view key) {
    uint64_t number = 0;
    size_t size = std::min(key.size(), sizeof number);
    for (size_t i = 0; i < size; ++i) number = number << 8 | static_cast<unsigned char>(key[i]);
    return size == 0 ? 0 : number << 8 * (sizeof number - size);
}

} // namespace

void line_store::add(std::string_view key, std::string_view line) {
    char *data = take_room(key.size() + line.size());
    std::copy(key.begin(), key.end(), data);
    std::copy(line.begin(), line.end(), data + key.size());
    records_.push_back({first_bytes_of(key), data, static_cast<uint32_t>(key.size()),
                        static_cast<uint32_t>(line.size())});
    bytes_ += key.size() + line.size() + record_room * sizeof(record);
}

char *line_store::take_room(size_t size) {
    if (size > free_bytes_) {
        free_bytes_ = std::max(size, block_bytes);
        blocks_.emplace_back(new char[free_bytes_]);
        free_ = blocks_.back().get();
    }
    char *room = free_;
    free_ += size;
    free_bytes_ -= size;
    return room;
}

bool line_store::is_less(const record &a, const record &b) {
    if (a.first_bytes != b.first_bytes) return a.first_bytes < b.first_bytes;
    return a.key() < b.key();
}

void line_store::sort(bool reverse) {
    std::stable_sort(records_.begin(), records_.end(), reverse ? is_greater : is_less);
}

void line_store::for_each(const line_consumer &take) const {
    for (const record &one : records_) take(one.key(), one.line());
}

} // namespace vel_tool

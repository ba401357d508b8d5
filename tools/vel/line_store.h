// Lines in memory with their keys, and their order.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

namespace vel_tool {

using line_consumer = std::function<void(std::string_view key, std::string_view line)>;

class line_store {
public:
    void add(std::string_view key, std::string_view line);
    uint64_t bytes() const { return bytes_; } // of memory, also of what sorting takes

    // By the bytes of the keys; lines of equal keys stay in their order.
    void sort(bool reverse);
    void for_each(const line_consumer &take) const;

private:
    // The line stands behind its key. The first bytes of the key decide most comparisons without a
    // look at the others.
    struct record {
        uint64_t first_bytes;
        const char *data;
        uint32_t key_size, line_size;

        std::string_view key() const { return {data, key_size}; }
        std::string_view line() const { return {data + key_size, line_size}; }
    };
    static bool is_less(const record &a, const record &b);
    static bool is_greater(const record &a, const record &b) { return is_less(b, a); }
    char *take_room(size_t size);

    std::vector<record> records_;
    std::vector<std::unique_ptr<char[]>> blocks_;
    char *free_ = nullptr;
    size_t free_bytes_ = 0;
    uint64_t bytes_ = 0;
};

} // namespace vel_tool

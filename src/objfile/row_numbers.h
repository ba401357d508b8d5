// A hash table of numbers into an array beside it; grows with it.
#pragma once

#include <cstring>

#include "ext/memory.h"

namespace vel {

class row_numbers {
public:
    bool reserve(size_t capacity) {
        slots_.reset(vel_alloc_array<uint32_t>(capacity));
        if (!slots_) return false;
        memset(slots_.get(), 0xFF, capacity * sizeof(uint32_t));
        mask_ = capacity - 1;
        count_ = 0;
        return true;
    }
    static constexpr uint32_t none = 0xFFFFFFFF;
    size_t first(uint64_t hash) const { return static_cast<size_t>(hash ^ hash >> 29) & mask_; }
    size_t next(size_t slot) const { return (slot + 1) & mask_; }
    uint32_t at(size_t slot) const { return slots_[slot]; }
    void put(size_t slot, uint32_t number) {
        slots_[slot] = number;
        ++count_;
    }
    bool crowded() const { return count_ * 2 > mask_; }
    size_t capacity() const { return mask_ + 1; }

private:
    host_ptr<uint32_t> slots_;
    size_t mask_ = 0;
    size_t count_ = 0;
};

} // namespace vel

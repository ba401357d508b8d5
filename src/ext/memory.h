// Memory of the host, owned by scope. Nothing here throws: a failed allocation is a null pointer,
// and an array remembers that it failed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <type_traits>
#include <utility>

#include "vels/host.h"

namespace vel {

// A block from the malloc hook; null for size 0, without a call. The caller reports the failure.
void *vel_alloc(size_t size);
// Gives a block back to the free hook; null is ignored.
void vel_free(void *block);

// `count` values of T, or null, also when the size does not fit.
template <typename T> T *vel_alloc_array(size_t count) {
    if (count > SIZE_MAX / 2 / sizeof(T)) return nullptr;
    return static_cast<T *>(vel_alloc(count * sizeof(T)));
}

// Owns one block that holds trivially destructible values.
template <typename T> class host_ptr {
    static_assert(std::is_trivially_destructible_v<T>);

public:
    host_ptr() = default;
    explicit host_ptr(T *block) : block_(block) {}
    host_ptr(host_ptr &&other) noexcept : block_(other.release()) {}
    host_ptr &operator=(host_ptr &&other) noexcept {
        reset(other.release());
        return *this;
    }
    ~host_ptr() { vel_free(block_); }

    T *get() const { return block_; }
    T *operator->() const { return block_; }
    T &operator*() const { return *block_; }
    T &operator[](size_t index) const { return block_[index]; }
    explicit operator bool() const { return block_ != nullptr; }

    T *release() { return std::exchange(block_, nullptr); }
    void reset(T *block = nullptr) { vel_free(std::exchange(block_, block)); }

private:
    T *block_ = nullptr;
};

// A value-initialised T, or null.
template <typename T> host_ptr<T> make_host() {
    void *block = vel_alloc(sizeof(T));
    return host_ptr<T>(block ? new (block) T() : nullptr);
}

// `count` uninitialised values of T, or null.
template <typename T> host_ptr<T> make_host_array(size_t count) {
    return host_ptr<T>(vel_alloc_array<T>(count));
}

// A growing array. After one failed growth it stays failed: later pushes are dropped, so a builder
// checks once, at its end.
template <typename T> class host_array {
    static_assert(std::is_trivially_copyable_v<T>);

public:
    host_array() = default;
    host_array(const host_array &) = delete;
    host_array &operator=(const host_array &) = delete;
    ~host_array() { vel_free(data_); }

    bool failed() const { return failed_; }
    size_t size() const { return size_; }
    T *data() { return data_; }
    const T *data() const { return data_; }
    T &operator[](size_t index) { return data_[index]; }
    const T &operator[](size_t index) const { return data_[index]; }
    T *begin() { return data_; }
    T *end() { return data_ + size_; }

    bool reserve(size_t capacity) {
        if (failed_) return false;
        if (capacity <= capacity_) return true;
        T *grown = vel_alloc_array<T>(capacity);
        if (!grown) {
            failed_ = true;
            return false;
        }
        if (size_) memcpy(grown, data_, size_ * sizeof(T));
        vel_free(data_);
        data_ = grown;
        capacity_ = capacity;
        return true;
    }

    bool push(const T &value) {
        if (size_ == capacity_ && !reserve(capacity_ ? capacity_ * 2 : 16)) return false;
        data_[size_++] = value;
        return true;
    }

    // Room for `count` more values, uninitialised; null when it cannot be had.
    T *extend(size_t count) {
        size_t wanted = size_ + count;
        if (wanted > capacity_ && !reserve(wanted > capacity_ * 2 ? wanted : capacity_ * 2)) {
            return nullptr;
        }
        T *added = data_ + size_;
        size_ = wanted;
        return added;
    }

    void clear() { size_ = 0; }

    // Hands the block over; the array is empty afterwards.
    T *release() {
        size_ = capacity_ = 0;
        return std::exchange(data_, nullptr);
    }

private:
    T *data_ = nullptr;
    size_t size_ = 0;
    size_t capacity_ = 0;
    bool failed_ = false;
};

// A work buffer that lives on the stack up to N values and in a host block beyond.
template <typename T, size_t N> class stack_or_heap {
    static_assert(std::is_trivially_copyable_v<T>);

public:
    explicit stack_or_heap(size_t count) {
        if (count > N) {
            heap_ = vel_alloc_array<T>(count);
            data_ = heap_;
        }
    }
    stack_or_heap(const stack_or_heap &) = delete;
    stack_or_heap &operator=(const stack_or_heap &) = delete;
    ~stack_or_heap() { vel_free(heap_); }

    explicit operator bool() const { return data_ != nullptr; }
    T *data() { return data_; }
    T &operator[](size_t index) { return data_[index]; }

private:
    T stack_[N];
    T *heap_ = nullptr;
    T *data_ = stack_;
};

} // namespace vel

// Many small blocks that die together.
#pragma once

#include "ext/memory.h"

namespace vel {

// Hands out zeroed blocks from larger ones and frees them all at once.
class arena {
public:
    arena() = default;
    arena(const arena &) = delete;
    arena &operator=(const arena &) = delete;
    ~arena() { clear(); }

    // `size` zeroed bytes, aligned for any object; null when memory cannot be had.
    void *take(size_t size) {
        size = (size + alignment - 1) / alignment * alignment;
        if (size > room_ && !grow(size)) return nullptr;
        unsigned char *block = next_;
        next_ += size;
        room_ -= size;
        memset(block, 0, size);
        return block;
    }

    template <typename T> T *take_array(size_t count) {
        static_assert(std::is_trivially_destructible_v<T>);
        if (count > SIZE_MAX / 2 / sizeof(T)) return nullptr;
        return static_cast<T *>(take(count * sizeof(T)));
    }

    void clear() {
        while (chunk *head = chunks_) {
            chunks_ = head->next;
            vel_free(head);
        }
        room_ = 0;
    }

private:
    static constexpr size_t alignment = alignof(std::max_align_t);
    static constexpr size_t chunk_room = 32 * 1024;

    struct alignas(std::max_align_t) chunk {
        chunk *next;
    };

    bool grow(size_t size) {
        size_t room = size > chunk_room ? size : chunk_room;
        void *block = vel_alloc(sizeof(chunk) + room);
        if (!block) return false;
        chunks_ = new (block) chunk{chunks_};
        next_ = static_cast<unsigned char *>(block) + sizeof(chunk);
        room_ = room;
        return true;
    }

    chunk *chunks_ = nullptr;
    unsigned char *next_ = nullptr;
    size_t room_ = 0;
};

} // namespace vel

// Memory that ends where nothing can be read or written.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstring>
#include <string>

namespace vel_test {

class guarded_page {
public:
    guarded_page() : page_(static_cast<size_t>(sysconf(_SC_PAGESIZE))) {
        void *pages =
            mmap(nullptr, 2 * page_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        start_ = static_cast<unsigned char *>(pages);
        mprotect(start_ + page_, page_, PROT_NONE);
    }
    ~guarded_page() { munmap(start_, 2 * page_); }
    guarded_page(const guarded_page &) = delete;
    guarded_page &operator=(const guarded_page &) = delete;

    // The last `size` bytes.
    unsigned char *last(size_t size) { return start_ + page_ - size; }
    const unsigned char *put(const std::string &text) {
        return static_cast<unsigned char *>(memcpy(last(text.size()), text.data(), text.size()));
    }

private:
    size_t page_;
    unsigned char *start_;
};

} // namespace vel_test

// Sorting more lines than memory holds: the system's sort program does it, with temporary files in
// TMPDIR that it removes itself, however it ends.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>

#include "vel/line_store.h"
#include "vel/output.h"

namespace vel_tool {

class sort_program {
public:
    // `memory` is the bytes that it may use for itself.
    sort_program(bool reverse, uint64_t memory);
    sort_program(const sort_program &) = delete;
    sort_program &operator=(const sort_program &) = delete;
    ~sort_program();

    void add(std::string_view key, std::string_view line);
    // Gives all lines by the bytes of their keys, those of equal keys in the order they came. The
    // keys come as the program has them: other bytes, but equal where they were.
    void for_each(const line_consumer &take);

private:
    void start(bool reverse, uint64_t memory);
    void end_input();
    void feed(const std::function<void()> &write);
    void check_end();
    int wait_for_end();

    pid_t process_ = -1;
    int to_ = -1, from_ = -1; // pipes
    std::optional<output> stream_;
    std::string text_;
};

} // namespace vel_tool

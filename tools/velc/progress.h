#pragma once

#include <cstddef>
#include <mutex>
#include <string_view>

namespace velc {

// A bar on standard error while work goes on, when somebody sits there to see it. Safe to use from
// many threads.
class progress {
public:
    progress(std::size_t total, bool wanted);
    ~progress();
    progress(const progress &) = delete;
    progress &operator=(const progress &) = delete;

    void done(std::string_view title);

private:
    std::mutex mutex_;
    std::size_t total_, done_ = 0;
    bool shown_;
};

} // namespace velc

// A host stream closed by scope.
#pragma once

#include "vels/host.h"

namespace vel {

class host_stream {
public:
    explicit host_stream(void *stream) : stream_(stream) {}
    host_stream(const host_stream &) = delete;
    host_stream &operator=(const host_stream &) = delete;
    ~host_stream() {
        if (stream_) _vel_ext_fclose(stream_);
    }
    explicit operator bool() const { return stream_ != nullptr; }
    void *get() const { return stream_; }

private:
    void *stream_;
};

} // namespace vel

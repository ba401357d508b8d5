#include "ext/host_errno.h"

#include <cerrno>

namespace vel {

void set_host_errno(host_error error) {
    constexpr int numbers[] = {0, ERANGE, EINVAL};
    errno = numbers[static_cast<int>(error)];
}

} // namespace vel

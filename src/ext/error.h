// Error numbers: how every operation reports a failure.
#pragma once

#include <cstddef>

#include "vels/errors.h"
#include "vels/host.h"

namespace vel {

inline void set_error(void *context, int32_t number) {
    *_vel_ext_errno(context) = number;
}

inline int32_t get_error(void *context) {
    return *_vel_ext_errno(context);
}

// Stores the number and gives -1, the failure value of counts, lengths and statuses.
inline int32_t fail(void *context, int32_t number) {
    set_error(context, number);
    return -1;
}

// Stores the number and gives 0, the failure value of classification and time formatting.
inline int32_t fail_zero(void *context, int32_t number) {
    set_error(context, number);
    return 0;
}

// Stores the number and gives null, the failure value of pointers.
inline std::nullptr_t fail_null(void *context, int32_t number) {
    set_error(context, number);
    return nullptr;
}

} // namespace vel

// The error number of the host's C library, which conversions of numbers set as strtol does.
#pragma once

namespace vel {

enum class host_error { none, out_of_range, invalid };

void set_host_errno(host_error error);

} // namespace vel

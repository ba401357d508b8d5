#include "velc/host_converter.h"

#include <array>
#include <utility>

#if defined(__GLIBC__)
#include <gnu/libc-version.h>
#include <iconv.h>
#endif

namespace velc {

#if defined(__GLIBC__)

host_converter::host_converter(const char *to, const char *from) : handle_(iconv_open(to, from)) {
    if (handle_ == reinterpret_cast<void *>(-1)) handle_ = nullptr;
}

host_converter::~host_converter() {
    if (handle_) iconv_close(handle_);
}

std::optional<std::string> host_converter::convert(std::string_view text) {
    iconv(handle_, nullptr, nullptr, nullptr, nullptr);
    std::array<char, 64> space;
    char *in = const_cast<char *>(text.data()), *out = space.data();
    std::size_t in_left = text.size(), out_left = space.size();
    if (iconv(handle_, &in, &in_left, &out, &out_left) != 0) return std::nullopt;
    return std::string(space.data(), out);
}

std::string host_converter_name() {
    return std::string("glibc ") + gnu_get_libc_version();
}

#else

host_converter::host_converter(const char *, const char *) : handle_(nullptr) {}
host_converter::~host_converter() = default;
std::optional<std::string> host_converter::convert(std::string_view) {
    return std::nullopt;
}
std::string host_converter_name() {
    return "none";
}

#endif

host_converter::host_converter(host_converter &&other) noexcept
    : handle_(std::exchange(other.handle_, nullptr)) {}

} // namespace velc

#pragma once

// The converter of the host's C library, which knows code sets with shift states that no source
// describes.

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace velc {

class host_converter {
public:
    // Not open when the host has no converter, or not this one.
    host_converter(const char *to, const char *from);
    host_converter(host_converter &&) noexcept;
    ~host_converter();

    bool is_open() const { return handle_ != nullptr; }
    // A whole text from the initial state on; nothing when the converter refuses or replaces any
    // of it. The text is not led back to the initial state.
    std::optional<std::string> convert(std::string_view text);

private:
    void *handle_;
};

// "glibc 2.36"; what it writes differs with its version.
std::string host_converter_name();

} // namespace velc

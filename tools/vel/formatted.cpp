#include "vel/formatted.h"

#include <fmt/format.h>

#include "vel/display.h"
#include "vel/failure.h"
#include "vel/locale_handle.h"

namespace vel_tool {
namespace {

constexpr size_t first_size = 256;
constexpr size_t largest_size = 16 * 1024 * 1024;

} // namespace

std::string formatted(const code_set &codes, const std::string &format,
                      const std::function<int32_t(char *buffer, int32_t size)> &write) {
    vel_locale *locale = codes.locale();
    std::string text;
    for (size_t size = first_size; size <= largest_size; size *= 4) {
        text.resize(size);
        clear_error(locale);
        int32_t length = write(text.data(), static_cast<int32_t>(size));
        // An empty date is 0 as a failed one is: the error cell tells them apart.
        if (length > 0 || (length == 0 && error_of(locale) == 0)) {
            text.resize(static_cast<size_t>(length));
            return text;
        }
        if (error_of(locale) != VEL_E2BIG) break;
    }
    throw failure(
        fmt::format("cannot write by '{}': {}", printable(codes, format), error_text(locale)));
}

std::string error_text(const vel_locale *locale) {
    int32_t error = error_of(locale);
    return fmt::format("{} (error {})", vel_strerror(error), error);
}

} // namespace vel_tool

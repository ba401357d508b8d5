// Conversions of ours and of the host, asked in the same way.
#pragma once

#include <cerrno>
#include <iconv.h>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "support/pack_conversions.h"
#include "vels/errors.h"

namespace differential {

// What bytes are: text, or the beginning of a character, or neither. Text in which a character is
// replaced is none.
struct meaning {
    bool more = false;
    std::optional<std::string> text = {};
};

class our_conversion {
public:
    explicit our_conversion(vel_test::converter opened) : converter_(std::move(opened)) {}
    explicit operator bool() const { return static_cast<bool>(converter_); }

    meaning convert(std::string_view text) const {
        const vel_test::converted result = converter_.convert(text);
        if (result.is_exact()) return {false, result.output};
        return {result.error == VEL_EINVAL};
    }

    // Of any of so many characters there is something that does not stand for a lacking one.
    bool has_any_of(std::string_view text, size_t characters, std::string_view lacking) const {
        const vel_test::converted result = converter_.convert(text),
                                  none = converter_.convert(lacking);
        if (result.error != 0 || !result.substituted || !none.substituted) return true;
        std::string expected;
        for (size_t i = 0; i < characters; ++i) expected += none.output;
        return result.output != expected;
    }

    const vel_test::converter &plain() const { return converter_; }

private:
    vel_test::converter converter_;
};

class host_conversion {
public:
    host_conversion(const std::string &to, const std::string &from)
        : handle_(iconv_open(to.c_str(), from.c_str())) {}
    host_conversion(const host_conversion &) = delete;
    host_conversion &operator=(const host_conversion &) = delete;
    ~host_conversion() {
        if (*this) iconv_close(handle_);
    }
    explicit operator bool() const { return handle_ != reinterpret_cast<iconv_t>(-1); }

    meaning convert(std::string_view text) const {
        char *out = space_;
        const bool converted = run(text, out);
        if (!converted) return {errno == EINVAL};
        return {false, std::string(space_, static_cast<size_t>(out - space_))};
    }

    // By a converter that passes over what it cannot write.
    bool has_any_of(std::string_view text) const {
        char *out = space_;
        run(text, out);
        return out != space_;
    }

private:
    // The whole text, with what the converter holds back until it ends.
    bool run(std::string_view text, char *&out) const {
        constexpr size_t failed = static_cast<size_t>(-1);
        iconv(handle_, nullptr, nullptr, nullptr, nullptr);
        char *in = const_cast<char *>(text.data());
        size_t in_left = text.size(), out_left = sizeof space_;
        const bool converted = iconv(handle_, &in, &in_left, &out, &out_left) != failed;
        const int why = errno;
        const bool ended = iconv(handle_, nullptr, nullptr, &out, &out_left) != failed;
        errno = why;
        return converted && ended;
    }

    iconv_t handle_;
    mutable char space_[1 << 12];
};

} // namespace differential

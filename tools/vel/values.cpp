#include "vel/values.h"

#include <charconv>

#include <fmt/format.h>

#include "vel/failure.h"

namespace vel_tool {
namespace {

constexpr size_t block_size = 64 * 1024;

// from_chars takes no plus sign.
std::string_view without_plus(std::string_view text) {
    if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
    return text;
}

struct magnitude {
    std::string_view digits;
    int base;
    bool negative;
};

magnitude take_apart(std::string_view text) {
    magnitude result{without_plus(text), 10, false};
    if (!result.digits.empty() && result.digits[0] == '-') {
        result.negative = true;
        result.digits.remove_prefix(1);
    }
    if (result.digits.size() > 2 && result.digits[0] == '0' && (result.digits[1] | 0x20) == 'x') {
        result.base = 16;
        result.digits.remove_prefix(2);
    }
    return result;
}

[[noreturn]] void out_of_range(const std::string &text, int64_t least, int64_t most) {
    throw failure(fmt::format("'{}' is out of range: {} to {}", text, least, most));
}

} // namespace

value_source::value_source(const std::vector<std::string> &given, std::string newline)
    : given_(given), newline_(std::move(newline)) {
    if (given_.empty()) lines_.emplace("-");
}

bool value_source::next(std::string &value) {
    if (lines_) return next_line(value);
    if (used_ == given_.size()) return false;
    value = given_[used_++];
    return true;
}

bool value_source::next_line(std::string &line) {
    for (;;) {
        size_t end = buffer_.find(newline_);
        while (end != std::string::npos && end % newline_.size() != 0) {
            end = buffer_.find(newline_, end + 1);
        }
        if (end != std::string::npos || (at_end_ && !buffer_.empty())) {
            line = buffer_.substr(0, end);
            buffer_.erase(0, end == std::string::npos ? end : end + newline_.size());
            return true;
        }
        if (at_end_) return false;
        size_t used = buffer_.size();
        buffer_.resize(used + block_size);
        size_t got = lines_->read(buffer_.data() + used, block_size);
        buffer_.resize(used + got);
        at_end_ = got == 0;
    }
}

int for_each_value(invocation &run, value_source &values,
                   const std::function<void(const std::string &)> &work) {
    int status = exit_success;
    std::string value;
    while (values.next(value)) {
        try {
            work(value);
        } catch (const failure &error) {
            run.out.flush();
            run.warn(error.what());
            status = exit_failure;
        }
    }
    return status;
}

int64_t integer_value(const std::string &text, int64_t least, int64_t most) {
    magnitude parts = take_apart(text);
    uint64_t value = 0;
    const char *end = parts.digits.data() + parts.digits.size();
    auto [stop, error] = std::from_chars(parts.digits.data(), end, value, parts.base);
    if (stop != end || error == std::errc::invalid_argument) {
        throw failure(fmt::format("'{}' is no whole number", text));
    }
    if (error != std::errc() || value > uint64_t{1} << 62) out_of_range(text, least, most);
    auto result = static_cast<int64_t>(value);
    if (parts.negative) result = -result;
    if (result < least || result > most) out_of_range(text, least, most);
    return result;
}

double double_value(const std::string &text) {
    std::string_view number = without_plus(text);
    const char *end = number.data() + number.size();
    double value = 0;
    auto [stop, error] = std::from_chars(number.data(), end, value);
    if (stop != end || error == std::errc::invalid_argument) {
        throw failure(fmt::format("'{}' is no number: write it as in 1234.5 or 1e-3", text));
    }
    if (error != std::errc()) throw failure(fmt::format("'{}' is out of range", text));
    return value;
}

std::string terminated(std::string_view text) {
    constexpr size_t longest_character = 4;
    return std::string(text) + std::string(2 * longest_character, '\0');
}

} // namespace vel_tool

// utf8proc. It has no functions for strings that do just this, so a program writes the loops.
#include "library.h"
#include "scratch.h"
#include "walk.h"

#include <utf8proc.h>

namespace bench {
namespace {

const utf8proc_uint8_t *bytes_of(const std::string &text) {
    return reinterpret_cast<const utf8proc_uint8_t *>(text.data());
}

call decode(const sample_ptr &in) {
    if (in->set != code_set::utf8) return {};
    auto *out = scratch_for<utf8proc_int32_t>();
    auto size = static_cast<utf8proc_ssize_t>(in->text.size());
    constexpr utf8proc_ssize_t room = scratch_bytes / sizeof *out;
    constexpr auto plain = static_cast<utf8proc_option_t>(0);
    return {[=] { return utf8proc_decompose(bytes_of(in->text), size, out, room, plain); },
            [=](std::int64_t count) { return separated_code_points(out, count); }};
}

call encode(const sample_ptr &in) {
    if (in->set != code_set::utf8) return {};
    auto *out = scratch_for<utf8proc_uint8_t>();
    auto values = code_points_of(in);
    return {
        [=] {
            auto *at = out;
            for (char32_t value : *values)
                at += utf8proc_encode_char(static_cast<utf8proc_int32_t>(value), at);
            return at - out;
        },
        [=](std::int64_t count) { return bytes_written(reinterpret_cast<char *>(out), count); }};
}

call count(const sample_ptr &in) {
    if (in->set != code_set::utf8) return {};
    auto size = static_cast<utf8proc_ssize_t>(in->text.size());
    constexpr auto plain = static_cast<utf8proc_option_t>(0);
    return {[=] { return utf8proc_decompose(bytes_of(in->text), size, nullptr, 0, plain); },
            [](std::int64_t counted) { return std::to_string(counted); }};
}

call value(const sample_ptr &in) {
    if (in->set != code_set::utf8) return {};
    auto step = [](const char *at, std::size_t left, utf8proc_int32_t &value) {
        return utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t *>(at),
                                static_cast<utf8proc_ssize_t>(left), &value);
    };
    return walking_values<utf8proc_int32_t>(in, code_set::utf8, step, append_utf8);
}

constexpr std::uint32_t bit(int category) {
    return std::uint32_t{1} << category;
}

constexpr std::uint32_t bits(int first, int last) {
    return bit(last + 1) - bit(first);
}

bool in_categories(char32_t value, std::uint32_t mask) {
    return (bit(utf8proc_category(static_cast<utf8proc_int32_t>(value))) & mask) != 0;
}

constexpr std::uint32_t letters = bits(UTF8PROC_CATEGORY_LU, UTF8PROC_CATEGORY_LO);

call alpha(const sample_ptr &in) {
    return testing(code_points_of(in),
                   [](char32_t value, std::size_t) { return in_categories(value, letters); });
}

call five_classes(const sample_ptr &in) {
    static constexpr std::uint32_t masks[class_count] = {
        letters, bit(UTF8PROC_CATEGORY_LU), bit(UTF8PROC_CATEGORY_ND),
        bits(UTF8PROC_CATEGORY_ZS, UTF8PROC_CATEGORY_ZP),
        bits(UTF8PROC_CATEGORY_PC, UTF8PROC_CATEGORY_SO)};
    return testing(code_points_of(in), [](char32_t value, std::size_t i) {
        return in_categories(value, masks[i % class_count]);
    });
}

call upper_text(const sample_ptr &in) {
    if (in->set != code_set::utf8) return {};
    auto *out = scratch_for<utf8proc_uint8_t>();
    return {
        [=] {
            const utf8proc_uint8_t *from = bytes_of(in->text);
            auto left = static_cast<utf8proc_ssize_t>(in->text.size());
            auto *at = out;
            for (utf8proc_ssize_t used; left > 0; from += used, left -= used) {
                utf8proc_int32_t value;
                used = utf8proc_iterate(from, left, &value);
                if (used < 0) return std::int64_t{-1};
                at += utf8proc_encode_char(utf8proc_toupper(value), at);
            }
            return static_cast<std::int64_t>(at - out);
        },
        [=](std::int64_t count) { return bytes_written(reinterpret_cast<char *>(out), count); }};
}

call upper_wide(const sample_ptr &in) {
    auto *out = scratch_for<utf8proc_int32_t>();
    auto values = code_points_of(in);
    return {[=] {
                for (std::size_t i = 0; i < values->size(); ++i)
                    out[i] = utf8proc_toupper(static_cast<utf8proc_int32_t>((*values)[i]));
                return static_cast<std::int64_t>(values->size());
            },
            [=](std::int64_t count) { return separated_code_points(out, count); }};
}

} // namespace

library utf8proc() {
    return {.name = "utf8proc",
            .decode = decode,
            .encode = encode,
            .count = count,
            .value = value,
            .alpha = alpha,
            .five_classes = five_classes,
            .upper_text = upper_text,
            .upper_wide = upper_wide,
            .upper_sharp_s = U"ẞ"};
}

} // namespace bench

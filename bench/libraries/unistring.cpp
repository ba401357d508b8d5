// libunistring. Its other code sets are the host's iconv, so it takes part in UTF-8 alone.
#include "library.h"
#include "scratch.h"
#include "walk.h"

#include <unicase.h>
#include <unictype.h>
#include <unistr.h>

namespace bench {
namespace {

const uint8_t *bytes_of(const std::string &text) {
    return reinterpret_cast<const uint8_t *>(text.data());
}

const uint32_t *values_of(const std::u32string &text) {
    return reinterpret_cast<const uint32_t *>(text.data());
}

// All write to memory of the caller unless it is too small.
template <typename T> int64_t checked(const T *result, const T *out, const size_t &count) {
    return result == out ? static_cast<int64_t>(count) : -1;
}

call decode(const sample_ptr &in) {
    if (in->set != code_set::utf8) return {};
    auto *out = scratch_for<uint32_t>();
    return {[=] {
                size_t n = scratch_bytes / sizeof *out;
                return checked(u8_to_u32(bytes_of(in->text), in->text.size(), out, &n), out, n);
            },
            [=](int64_t count) { return separated_code_points(out, count); }};
}

call encode(const sample_ptr &in) {
    if (in->set != code_set::utf8) return {};
    auto *out = scratch_for<uint8_t>();
    auto values = code_points_of(in);
    return {[=] {
                size_t n = scratch_bytes;
                return checked(u32_to_u8(values_of(*values), values->size(), out, &n), out, n);
            },
            [=](int64_t count) { return bytes_written(reinterpret_cast<char *>(out), count); }};
}

call count(const sample_ptr &in) {
    if (in->set != code_set::utf8) return {};
    return {[=] {
                const uint8_t *text = bytes_of(in->text);
                if (u8_check(text, in->text.size())) return int64_t{-1};
                return static_cast<int64_t>(u8_mbsnlen(text, in->text.size()));
            },
            [](int64_t counted) { return std::to_string(counted); }};
}

call length(const sample_ptr &in) {
    if (in->set != code_set::utf8) return {};
    return walking_lengths(in, [](const char *at, size_t left) {
        return u8_mblen(reinterpret_cast<const uint8_t *>(at), left);
    });
}

call value(const sample_ptr &in) {
    if (in->set != code_set::utf8) return {};
    auto step = [](const char *at, size_t left, ucs4_t &value) {
        return u8_mbtouc(&value, reinterpret_cast<const uint8_t *>(at), left);
    };
    return walking_values<ucs4_t>(in, code_set::utf8, step, append_utf8);
}

call next(const sample_ptr &in) {
    if (in->set != code_set::utf8) return {};
    return walking_lengths(in, [](const char *at, size_t) {
        ucs4_t value;
        const auto *here = reinterpret_cast<const uint8_t *>(at);
        return u8_next(&value, here) - here;
    });
}

call alpha(const sample_ptr &in) {
    return testing(code_points_of(in), [](char32_t value, size_t) { return uc_is_alpha(value); });
}

call five_classes(const sample_ptr &in) {
    static constexpr uint32_t masks[class_count] = {UC_CATEGORY_MASK_L, UC_CATEGORY_MASK_Lu,
                                                    UC_CATEGORY_MASK_Nd, UC_CATEGORY_MASK_Z,
                                                    UC_CATEGORY_MASK_P | UC_CATEGORY_MASK_S};
    return testing(code_points_of(in), [](char32_t value, size_t i) {
        return uc_is_general_category_withtable(value, masks[i % class_count]);
    });
}

call upper_text(const sample_ptr &in) {
    if (in->set != code_set::utf8) return {};
    auto *out = scratch_for<uint8_t>();
    return {[=] {
                size_t n = scratch_bytes;
                const uint8_t *text = bytes_of(in->text);
                return checked(u8_toupper(text, in->text.size(), "", nullptr, out, &n), out, n);
            },
            [=](int64_t count) { return bytes_written(reinterpret_cast<char *>(out), count); }};
}

call upper_wide(const sample_ptr &in) {
    auto *out = scratch_for<uint32_t>();
    auto values = code_points_of(in);
    return {[=] {
                size_t n = scratch_bytes / sizeof *out;
                const uint32_t *text = values_of(*values);
                return checked(u32_toupper(text, values->size(), "", nullptr, out, &n), out, n);
            },
            [=](int64_t count) { return separated_code_points(out, count); }};
}

} // namespace

library unistring() {
    return {.name = "unistring",
            .decode = decode,
            .encode = encode,
            .count = count,
            .length = length,
            .value = value,
            .next = next,
            .alpha = alpha,
            .five_classes = five_classes,
            .upper_text = upper_text,
            .upper_wide = upper_wide,
            .upper_sharp_s = U"SS"};
}

} // namespace bench

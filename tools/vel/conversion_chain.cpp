#include "vel/conversion_chain.h"

#include <algorithm>

#include <fmt/format.h>

#include "vel/failure.h"

namespace vel_tool {
namespace {

constexpr std::string_view replacement_character = "\xEF\xBF\xBD";
// Switching sequences that the ratio of the lengths says nothing about in a short piece.
constexpr size_t spare_room = 32;

const unsigned char *bytes_of(std::string_view text) {
    return reinterpret_cast<const unsigned char *>(text.data());
}

std::string_view zeros(size_t size) {
    static constexpr char bytes[4] = {};
    return {bytes, size};
}

// The null character is as long as the shortest one.
size_t measure_null(vel_cv *cv) {
    for (size_t size : {1, 2, 4}) {
        const unsigned char *input = bytes_of(zeros(size));
        auto left = static_cast<int32_t>(size);
        int32_t space = spare_room, substituted = 0;
        if (vel_mconvlen(cv, nullptr, &input, &left, &space, &substituted) == 0) return size;
    }
    return 1;
}

} // namespace

conversion_step::conversion_step(conversion_handle cv)
    : cv_(std::move(cv)), null_bytes_(measure_null(cv_.get())) {}

converted conversion_step::convert(std::string_view text) {
    auto left = static_cast<int32_t>(text.size());
    size_t size = static_cast<size_t>(vel_cv_outbuflen(cv_.get(), left)) + spare_room;
    if (room_.size() < size) room_.resize(size);
    const unsigned char *input = bytes_of(text);
    unsigned char *output = room_.data();
    auto space = static_cast<int32_t>(room_.size() / 4 * 4);
    int32_t substituted = 0;
    int32_t status = vel_cv_mconv(cv_.get(), &state, &input, &left, &output, &space, &substituted);
    converted result{
        text.size() - static_cast<size_t>(left),
        {reinterpret_cast<const char *>(room_.data()), static_cast<size_t>(output - room_.data())},
        status == 0 ? 0 : error_of(cv_.get()),
        substituted != 0};
    if (result.error != 0 && result.error != VEL_EILSEQ && result.error != VEL_EINVAL) {
        throw failure(fmt::format("the conversion is damaged: {} (error {}) with {} bytes for {}",
                                  vel_strerror(result.error), result.error, size, text.size()));
    }
    return result;
}

// The library's flush goes with a last character, but that a character was the last one is known
// only when no more text comes. Hence a null character is converted, and the sequence in front of
// it taken.
std::string_view conversion_step::ending() {
    if (!state.out_shifted) return {};
    vel_cv_state initial{};
    std::swap(state, initial);
    size_t plain = convert(zeros(null_bytes_)).output.size();
    state = {0, 0, 0, 1};
    std::string_view led_back = convert(zeros(null_bytes_)).output;
    state = {};
    return led_back.substr(0, led_back.size() - std::min(plain, led_back.size()));
}

conversion_chain::conversion_chain(conversion_route route)
    : from_(std::move(route.from)), to_(std::move(route.to)), is_copy_(route.steps.empty()) {
    for (conversion_handle &cv : route.steps) steps_.emplace_back(std::move(cv));
    if (is_copy_) prepare_copy();
    if (!steps_.empty()) shortest_ = steps_[0].null_bytes();
}

void conversion_chain::prepare_copy() {
    conversion_handle checker = from_.is_utf8() ? nullptr : open_conversion(from_, utf8_code_set());
    if (checker) {
        steps_.emplace_back(std::move(checker));
        return;
    }
    charmap_ = try_load_charmap(from_.number);
    if (charmap_) shortest_ = static_cast<size_t>(std::max(vel_mb_cm_min(charmap_.get()), 1));
}

converted conversion_chain::convert(std::string_view text) {
    if (is_copy_) return copy(text);
    converted first = steps_[0].convert(text);
    if (steps_.size() == 1) return first;
    converted second = steps_[1].convert(first.output);
    // What the second conversion does not take is a character that the target lacks.
    bool is_lacking = first.is_lacking || second.is_lacking || second.error != 0;
    return {first.consumed, second.output, first.error, is_lacking};
}

converted conversion_chain::copy(std::string_view text) {
    if (steps_.empty()) return check_by_charmap(text);
    converted result = steps_[0].convert(text);
    return {result.consumed, text.substr(0, result.consumed), result.error, false};
}

converted conversion_chain::check_by_charmap(std::string_view text) const {
    converted result{text.size(), text, 0, false};
    if (!charmap_) return result;
    vel_charmap *charmap = charmap_.get();
    size_t at = 0;
    while (at < text.size()) {
        int32_t length =
            vel_cm_mblen(charmap, text.data() + at, static_cast<int32_t>(text.size() - at));
        if (length < 1) return {at, text.substr(0, at), error_of(charmap), false};
        at += static_cast<size_t>(length);
    }
    return result;
}

conversion_chain::state conversion_chain::save() const {
    state saved{};
    for (size_t i = 0; i < steps_.size(); ++i) saved[i] = steps_[i].state;
    return saved;
}

void conversion_chain::restore(const state &saved) {
    for (size_t i = 0; i < steps_.size(); ++i) steps_[i].state = saved[i];
}

conversion_step &conversion_chain::step_from_utf8() {
    bool is_last_step = steps_.size() == 2 || (steps_.size() == 1 && from_.is_utf8());
    if (is_last_step) return steps_.back();
    if (!from_utf8_) {
        conversion_handle cv = open_conversion(utf8_code_set(), to_);
        if (!cv) {
            throw failure(fmt::format("there is no conversion from UTF-8 to {0} to take the "
                                      "substitute of {0} from; 'velc conversion UTF-8 {0}' makes "
                                      "it",
                                      to_.name));
        }
        from_utf8_.emplace(std::move(cv));
    }
    return *from_utf8_;
}

std::string_view conversion_chain::substitute() {
    if (to_.is_utf8()) return replacement_character;
    // Copied characters in front and behind stay shifted: nothing else can stand between them.
    if (is_copy_ && source_is_shifted()) return {};
    conversion_step &step = step_from_utf8();
    if (!is_copy_) step.state.out_shifted = steps_.back().state.out_shifted;
    std::string_view output = step.convert(replacement_character).output;
    if (!is_copy_) steps_.back().state.out_shifted = step.state.out_shifted;
    return output;
}

std::string_view conversion_chain::ending() {
    std::string_view sequence;
    if (!is_copy_) sequence = steps_.back().ending();
    restore({});
    return sequence;
}

} // namespace vel_tool

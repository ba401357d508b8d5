// Loops that the libraries share: a call for each character of a text.
#pragma once

#include "library.h"

#include <stdexcept>

namespace bench {

// `step(position, bytes left)` gives the bytes of the character at the position.
template <typename Step> std::int64_t walk(const std::string &text, Step &step) {
    const char *at = text.data();
    const char *end = at + text.size();
    std::int64_t count = 0;
    for (; at < end; ++count) at += step(at, static_cast<std::size_t>(end - at));
    return count;
}

// The same with what each step gave, and with a look at whether it moved.
template <typename Step, typename Note>
std::string walk_noting(const std::string &text, Step &step, Note note) {
    std::string noted;
    for (std::size_t at = 0; at < text.size();) {
        std::int64_t bytes = step(text.data() + at, text.size() - at);
        if (bytes < 1 || bytes > 4) throw std::runtime_error("a step that does not move");
        note(noted, bytes);
        at += static_cast<std::size_t>(bytes);
    }
    return noted;
}

template <typename Step> call walking_lengths(const sample_ptr &in, Step step) {
    auto note = [](std::string &noted, std::int64_t bytes) { noted += std::to_string(bytes); };
    return {[=]() mutable { return walk(in->text, step); },
            [=](std::int64_t) mutable { return walk_noting(in->text, step, note); }};
}

// Here the step also stores a value, and `append` writes it as bytes of the code set or as UTF-8.
// `set` says which.
template <typename Value, typename Step, typename Append>
call walking_values(const sample_ptr &in, code_set set, Step step, Append append) {
    auto pass = [=]() mutable {
        Value value{};
        auto stepping = [&](const char *at, std::size_t left) { return step(at, left, value); };
        return walk(in->text, stepping);
    };
    auto result = [=](std::int64_t) mutable {
        Value value{};
        auto stepping = [&](const char *at, std::size_t left) { return step(at, left, value); };
        auto note = [&](std::string &noted, std::int64_t) {
            append(noted, value);
            noted += separator;
        };
        return to_utf8(walk_noting(in->text, stepping, note), set);
    };
    return {pass, result};
}

// `is(value, position)` for each wide character. The pass counts, the result has a digit for each.
template <typename Values, typename Test> call testing(Values values, Test is) {
    auto pass = [=] {
        std::int64_t count = 0;
        for (std::size_t i = 0; i < values->size(); ++i) count += is((*values)[i], i);
        return count;
    };
    auto result = [=](std::int64_t) {
        std::string digits;
        for (std::size_t i = 0; i < values->size(); ++i) digits += is((*values)[i], i) ? '1' : '0';
        return digits;
    };
    return {pass, result};
}

// The code points of a text, as long as the text lives.
inline std::shared_ptr<const std::u32string> code_points_of(const sample_ptr &in) {
    return {in, &in->code_points};
}

// Code points in the comparable form.
template <typename T> std::string separated_code_points(const T *values, std::int64_t count) {
    std::string out;
    for (std::int64_t i = 0; i < count; ++i) {
        append_utf8(out, static_cast<char32_t>(values[i]));
        out += separator;
    }
    return out;
}

// The bytes that a pass left in the scratch memory.
inline std::string bytes_written(const char *out, std::int64_t count) {
    return count < 0 ? "failed" : std::string(out, static_cast<std::size_t>(count));
}

} // namespace bench

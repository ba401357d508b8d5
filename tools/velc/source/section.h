#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include <fmt/format.h>

#include "velc/source/lexer.h"

namespace velc {

// One category of one file before its copies are followed.
template <typename T> struct section {
    std::uint32_t line = 0; // of the section's head; 0 when the file has no such section
    std::string copy_from;  // the last `copy`, which replaces everything before it
    std::uint32_t copy_line = 0;
    std::shared_ptr<const T> own; // what the file says itself; null when it only copies
    std::map<std::string_view, std::uint32_t> lines; // of the keywords that it gives
    bool present() const { return line != 0; }
};

// Steps to the next statement of a section; false at its END line.
inline bool next_in_section(lexer &in, std::string_view category) {
    if (!in.next())
        in.fail_at(in.line(), fmt::format("found the end of the file, expected END {}", category));
    if (in.peek().kind != token_kind::word || in.peek().text != "END") return true;
    in.take();
    if (in.peek().text != category) in.fail(in.peek(), category);
    in.take();
    in.expect_end();
    return false;
}

// copy := 'copy' string
inline std::string take_copy(lexer &in) {
    in.take();
    const token name = in.expect(token_kind::string, "the name of a locale source in quotes");
    in.expect_end();
    return to_utf8(in.text(name));
}

inline bool is_copy(const lexer &in) {
    return in.peek().kind == token_kind::word && in.peek().text == "copy";
}

template <typename T> struct keyword {
    std::string_view name;
    void (*read)(lexer &in, T &to);
    bool repeatable = false;
};

// section := { copy | keyword values } 'END' category
// What it does not say stays as it is in `start`.
template <typename T, std::size_t N>
section<T> read_keyword_section(lexer &in, std::string_view category,
                                const std::array<keyword<T>, N> &keywords, const T &start = {}) {
    section<T> found;
    found.line = in.line();
    auto own = std::make_shared<T>(start);
    while (next_in_section(in, category)) {
        if (is_copy(in)) {
            found.copy_line = in.line();
            found.copy_from = take_copy(in);
            *own = T();
            found.lines.clear();
            continue;
        }
        const token head = in.expect(token_kind::word, "a keyword");
        std::size_t which = 0;
        while (which < N && keywords[which].name != head.text) ++which;
        if (which == N) in.fail(head, fmt::format("a keyword of {}", category));
        if (found.copy_line != 0) in.fail(head, "nothing else in a section that copies another");
        T spare;
        const bool is_new = found.lines.emplace(keywords[which].name, head.line).second;
        const bool again = !is_new && !keywords[which].repeatable;
        keywords[which].read(in, again ? spare : *own);
        in.expect_end();
        if (again)
            in.warn(warning_kind::duplicate, head.line,
                    fmt::format("{} is given again, the first one is kept", head.text));
    }
    if (found.copy_line == 0) found.own = std::move(own);
    return found;
}

// Readers of single values, made from the member that they fill.
template <typename T, auto Member> void take_text(lexer &in, T &to) {
    to.*Member = in.text(in.take());
}

template <typename T, auto Member> void take_loose_text(lexer &in, T &to) {
    to.*Member = in.loose_text(in.take());
}

inline int take_number_between(lexer &in, int least, int most) {
    const token t = in.take();
    const int value = in.number(t);
    if (value < least || value > most)
        in.fail(t, fmt::format("a number from {} to {}", least, most));
    return value;
}

template <typename T, auto Member, int Least, int Most> void take_number(lexer &in, T &to) {
    to.*Member = take_number_between(in, Least, Most);
}

// list := item { ';' item } [ ';' ]
template <typename F> void take_list(lexer &in, F &&take_item) {
    do {
        take_item();
        if (!in.accept(token_kind::semicolon)) return;
    } while (!in.at_end());
    in.warn(warning_kind::syntax, in.line(), "the list ends with ';'");
}

} // namespace velc

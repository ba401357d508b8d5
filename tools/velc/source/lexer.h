#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "velc/source/code_points.h"
#include "velc/source/diagnostics.h"

namespace velc {

enum class token_kind : std::uint8_t {
    word,   // keyword, number, literal character
    symbol, // <...>
    string, // "..."
    semicolon,
    comma,
    open,     // (
    close,    // )
    ellipsis, // two dots or more
    end,      // behind the last token of a statement
};

// The text of symbols and strings is what stands between the delimiters, escapes still in place.
struct token {
    token_kind kind = token_kind::end;
    std::uint32_t line = 0;
    std::string_view text;
};

// Splits a locale source into statements and those into tokens. A statement is a line together with
// the lines that continue it. The lexer points into the text that it is given.
class lexer {
public:
    lexer(std::string file, std::string_view text);

    // Steps to the next statement; false at the end of the file.
    bool next();

    // The current statement, token by token.
    const token &peek(std::size_t ahead = 0) const;
    token take();
    bool at_end() const { return peek().kind == token_kind::end; }
    bool accept(token_kind kind);
    token expect(token_kind kind, std::string_view expected);
    void expect_end();
    // Whether a symbol follows that one directly, without a blank.
    bool touches_next(const token &symbol) const;
    std::uint32_t line() const { return statement_line_; }

    // Values. A character is <Uxxxx>, a portable name or one literal character.
    std::string name(const token &t) const; // word or symbol without escapes
    char32_t character(const token &t) const;
    std::u32string text(const token &t) const;       // string
    std::u32string loose_text(const token &t) const; // string whose <...> may be no character
    int number(const token &t) const;

    // Walks a string: on_character(char32_t) for literal ones, on_name(std::string) for <...>.
    template <typename C, typename N>
    void walk_string(const token &t, C &&on_character, N &&on_name) const;

    [[noreturn]] void fail(const token &found, std::string_view expected) const;
    [[noreturn]] void fail_at(std::uint32_t line, std::string_view text) const;
    void warn(warning_kind kind, std::uint32_t line, std::string text);

    const std::string &file() const { return file_; }
    warning_list &warnings() { return warnings_; }

private:
    struct string_item {
        bool is_name = false;
        char32_t code = 0;
        std::string name;
    };

    bool header_line();
    bool scan_line();
    bool skip_comment();
    bool at_continuation(std::size_t at) const;
    void skip_filler_lines();
    void scan_token();
    void scan_string();
    void scan_symbol();
    void scan_ellipsis();
    void scan_word();
    void push(token_kind kind, std::size_t first, std::size_t last);
    std::optional<char32_t> named_character(const token &t, std::string_view plain) const;
    char32_t known_character(const token &t, std::string_view plain) const;
    bool next_string_item(const token &t, std::size_t &at, string_item &item) const;

    std::string file_;
    std::string_view text_;
    std::size_t at_ = 0;
    std::uint32_t line_ = 1;
    std::uint32_t statement_line_ = 0;
    char comment_ = '#';
    char escape_ = '\\';
    std::vector<token> tokens_;
    std::size_t cursor_ = 0;
    token end_;
    warning_list warnings_;
};

template <typename C, typename N>
void lexer::walk_string(const token &t, C &&on_character, N &&on_name) const {
    string_item item;
    for (std::size_t at = 0; next_string_item(t, at, item);) {
        if (item.is_name)
            on_name(item.name);
        else
            on_character(item.code);
    }
}

} // namespace velc

#include "velc/source/lexer.h"

#include <fmt/format.h>

namespace velc {

namespace {

constexpr bool is_blank(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

constexpr std::string_view punctuation = ";,()";
constexpr token_kind punctuation_kinds[] = {token_kind::semicolon, token_kind::comma,
                                            token_kind::open, token_kind::close};

} // namespace

lexer::lexer(std::string file, std::string_view text) : file_(std::move(file)), text_(text) {
    if (text_.starts_with("\xEF\xBB\xBF")) at_ = 3;
}

bool lexer::next() {
    tokens_.clear();
    cursor_ = 0;
    while (at_ < text_.size()) {
        if (tokens_.empty() && header_line()) continue;
        const bool continued = scan_line();
        if (continued)
            skip_filler_lines();
        else if (!tokens_.empty())
            break;
    }
    if (tokens_.empty()) return false;
    statement_line_ = tokens_.front().line;
    end_ = {token_kind::end, tokens_.back().line, {}};
    return true;
}

// header := ('comment_char' | 'escape_char') blank+ character
bool lexer::header_line() {
    static constexpr std::string_view keywords[] = {"comment_char", "escape_char"};
    char *const cells[] = {&comment_, &escape_};
    for (int i = 0; i < 2; ++i) {
        if (!text_.substr(at_).starts_with(keywords[i])) continue;
        std::size_t value = at_ + keywords[i].size();
        if (value >= text_.size() || !is_blank(text_[value])) return false;
        while (value < text_.size() && is_blank(text_[value])) ++value;
        if (value >= text_.size() || text_[value] == '\n')
            fail_at(line_, fmt::format("found no character after {}, expected one", keywords[i]));
        *cells[i] = text_[value];
        const std::size_t end = text_.find('\n', value);
        at_ = end == text_.npos ? text_.size() : end + 1;
        ++line_;
        return true;
    }
    return false;
}

// Tokens up to the end of the line; true when the statement goes on in the next one.
bool lexer::scan_line() {
    while (at_ < text_.size()) {
        const char c = text_[at_];
        if (c == '\n') {
            ++at_;
            ++line_;
            return false;
        }
        if (is_blank(c)) {
            ++at_;
        } else if (c == comment_) {
            return skip_comment();
        } else if (c == escape_ && at_continuation(at_)) {
            at_ = text_.find('\n', at_) + 1;
            ++line_;
            return true;
        } else {
            scan_token();
        }
    }
    return false;
}

// An escape character that ends the line counts even when a comment stands before it.
bool lexer::skip_comment() {
    std::size_t end = text_.find('\n', at_);
    if (end == text_.npos) end = text_.size();
    std::size_t last = end;
    while (last > at_ && is_blank(text_[last - 1])) --last;
    std::size_t escapes = 0;
    while (last - escapes > at_ && text_[last - escapes - 1] == escape_) ++escapes;
    at_ = end < text_.size() ? end + 1 : end;
    ++line_;
    return escapes % 2 == 1;
}

// The escape at `at` with nothing but blanks up to the end of its line.
bool lexer::at_continuation(std::size_t at) const {
    for (++at; at < text_.size() && is_blank(text_[at]);) ++at;
    return at < text_.size() && text_[at] == '\n';
}

// Blank lines and comment lines do not end a statement that waits for its continuation.
void lexer::skip_filler_lines() {
    while (at_ < text_.size()) {
        std::size_t first = at_;
        while (first < text_.size() && is_blank(text_[first])) ++first;
        if (first < text_.size() && text_[first] != '\n' && text_[first] != comment_) return;
        const std::size_t end = text_.find('\n', first);
        at_ = end == text_.npos ? text_.size() : end + 1;
        ++line_;
    }
}

void lexer::scan_token() {
    const char c = text_[at_];
    if (c == '"') return scan_string();
    if (c == '<') return scan_symbol();
    if (auto which = punctuation.find(c); which != punctuation.npos) {
        push(punctuation_kinds[which], at_, at_ + 1);
        ++at_;
        return;
    }
    if (text_.substr(at_).starts_with("..")) return scan_ellipsis();
    scan_word();
}

// string := '"' { character | escape character | escape newline } '"'
void lexer::scan_string() {
    const std::uint32_t start = line_;
    std::size_t end = at_ + 1;
    for (; end < text_.size() && text_[end] != '"'; ++end) {
        const bool escaped = text_[end] == escape_;
        if (escaped && at_continuation(end))
            end = text_.find('\n', end);
        else if (escaped && end + 1 < text_.size())
            ++end;
        else if (text_[end] == '\n')
            fail_at(start, "found the end of the line inside a string, expected '\"'");
        if (text_[end] == '\n') ++line_;
    }
    if (end >= text_.size())
        fail_at(start, "found the end of the file inside a string, expected '\"'");
    push(token_kind::string, at_ + 1, end);
    tokens_.back().line = start;
    at_ = end + 1;
}

// symbol := '<' { character | escape character } '>'
void lexer::scan_symbol() {
    std::size_t end = at_ + 1;
    while (end < text_.size() && text_[end] != '>' && text_[end] != '\n')
        end += text_[end] == escape_ && end + 1 < text_.size() ? 2 : 1;
    if (end >= text_.size() || text_[end] != '>')
        fail_at(line_, fmt::format("found '{}' up to the end of the line, expected '>'",
                                   text_.substr(at_, std::min<std::size_t>(end - at_, 40))));
    push(token_kind::symbol, at_ + 1, end);
    at_ = end + 1;
}

void lexer::scan_ellipsis() {
    std::size_t end = at_;
    while (end < text_.size() && text_[end] == '.') ++end;
    push(token_kind::ellipsis, at_, end);
    at_ = end;
}

void lexer::scan_word() {
    std::size_t end = at_;
    while (end < text_.size()) {
        const char c = text_[end];
        const bool stops = is_blank(c) || c == '\n' || c == '"' || c == '<' || c == comment_ ||
                           punctuation.find(c) != punctuation.npos;
        if (stops || (c == escape_ && at_continuation(end))) break;
        end += c == escape_ && end + 1 < text_.size() ? 2 : 1;
    }
    push(token_kind::word, at_, end);
    at_ = end;
}

void lexer::push(token_kind kind, std::size_t first, std::size_t last) {
    tokens_.push_back({kind, line_, text_.substr(first, last - first)});
}

} // namespace velc

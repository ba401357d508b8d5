#include <charconv>

#include <fmt/format.h>

#include "velc/source/lexer.h"
#include "velc/source/portable_names.h"

namespace velc {

namespace {

std::string shown(const token &t) {
    switch (t.kind) {
    case token_kind::end:
        return "the end of the statement";
    case token_kind::symbol:
        return fmt::format("<{}>", t.text);
    case token_kind::string:
        return fmt::format("\"{}\"", t.text.substr(0, 60));
    default:
        return fmt::format("'{}'", t.text.substr(0, 60));
    }
}

constexpr bool is_hex(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}
constexpr bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

// \xHH, \dDD and \OO name a byte of some code set, which a locale source does not know.
bool is_byte_constant(std::string_view escaped) {
    if (escaped.size() < 2) return false;
    if (escaped[0] == 'x' || escaped[0] == 'd')
        return escaped.size() > 2 && (escaped[0] == 'x' ? is_hex : is_digit)(escaped[1]) &&
               (escaped[0] == 'x' ? is_hex : is_digit)(escaped[2]);
    return is_digit(escaped[0]) && is_digit(escaped[1]);
}

} // namespace

const token &lexer::peek(std::size_t ahead) const {
    return cursor_ + ahead < tokens_.size() ? tokens_[cursor_ + ahead] : end_;
}

token lexer::take() {
    const token t = peek();
    if (cursor_ < tokens_.size()) ++cursor_;
    return t;
}

bool lexer::accept(token_kind kind) {
    if (peek().kind != kind) return false;
    take();
    return true;
}

token lexer::expect(token_kind kind, std::string_view expected) {
    if (peek().kind != kind) fail(peek(), expected);
    return take();
}

void lexer::expect_end() {
    if (!at_end()) fail(peek(), "the end of the statement");
}

bool lexer::touches_next(const token &symbol) const {
    const token &next = peek();
    return symbol.kind == token_kind::symbol && next.kind == token_kind::symbol &&
           next.text.data() == symbol.text.data() + symbol.text.size() + 2;
}

std::string lexer::name(const token &t) const {
    std::string plain;
    for (std::size_t i = 0; i < t.text.size(); ++i) {
        if (t.text[i] == escape_ && i + 1 < t.text.size()) ++i;
        plain += t.text[i];
    }
    return plain;
}

char32_t lexer::character(const token &t) const {
    if (t.kind != token_kind::symbol && t.kind != token_kind::word) fail(t, "a character");
    const std::string plain = name(t);
    if (t.kind == token_kind::word) {
        std::size_t at = 0;
        auto code = decode_utf8(plain, at);
        if (!code || at != plain.size()) fail(t, "a single character");
        return *code;
    }
    return known_character(t, plain);
}

std::optional<char32_t> lexer::named_character(const token &t, std::string_view plain) const {
    const auto code = code_point_of_name(plain);
    if (!code) return portable_character(plain);
    if (!is_scalar_value(*code)) fail(t, "a code point up to <U0010FFFF>, no surrogate");
    return code;
}

char32_t lexer::known_character(const token &t, std::string_view plain) const {
    if (auto code = named_character(t, plain)) return *code;
    fail(t, fmt::format("<Uxxxx> or the name of a portable character instead of <{}>", plain));
}

bool lexer::next_string_item(const token &t, std::size_t &at, string_item &item) const {
    const std::string_view s = t.text;
    while (at < s.size() && s[at] == escape_) {
        const std::size_t end = s.find_first_not_of(" \t\r", at + 1);
        if (end == s.npos || s[end] != '\n') break;
        at = end + 1;
    }
    if (at >= s.size()) return false;
    item.is_name = s[at] == '<';
    if (item.is_name) {
        std::size_t end = at + 1;
        while (end < s.size() && s[end] != '>') end += s[end] == escape_ ? 2 : 1;
        if (end >= s.size()) fail(t, "'>' after '<'");
        item.name = name({token_kind::symbol, t.line, s.substr(at + 1, end - at - 1)});
        at = end + 1;
        return true;
    }
    if (s[at] == escape_ && at + 1 < s.size()) {
        ++at;
        if (is_byte_constant(s.substr(at))) fail(t, "<Uxxxx> instead of a byte of some code set");
    }
    auto code = decode_utf8(s, at);
    if (!code) fail(t, "well-formed UTF-8");
    item.code = *code;
    return true;
}

std::u32string lexer::text(const token &t) const {
    if (t.kind != token_kind::string) fail(t, "a string");
    std::u32string out;
    walk_string(
        t, [&](char32_t code) { out += code; },
        [&](const std::string &plain) { out += known_character(t, plain); });
    return out;
}

std::u32string lexer::loose_text(const token &t) const {
    if (t.kind != token_kind::string) fail(t, "a string");
    std::u32string out;
    walk_string(
        t, [&](char32_t code) { out += code; },
        [&](const std::string &plain) {
            if (auto code = named_character(t, plain)) {
                out += *code;
                return;
            }
            out += U'<';
            for (std::size_t at = 0; at < plain.size();) {
                auto literal = decode_utf8(plain, at);
                if (!literal) fail(t, "well-formed UTF-8");
                out += *literal;
            }
            out += U'>';
        });
    return out;
}

int lexer::number(const token &t) const {
    int value = 0;
    const char *const end = t.text.data() + t.text.size();
    const auto [stop, error] = std::from_chars(t.text.data(), end, value);
    if (t.kind != token_kind::word || error != std::errc() || stop != end) fail(t, "a number");
    return value;
}

void lexer::fail(const token &found, std::string_view expected) const {
    fail_at(found.line, fmt::format("found {}, expected {}", shown(found), expected));
}

void lexer::fail_at(std::uint32_t line, std::string_view text) const {
    throw source_error({file_, line}, text);
}

void lexer::warn(warning_kind kind, std::uint32_t line, std::string text) {
    warnings_.push_back({kind, {file_, line}, std::move(text)});
}

} // namespace velc

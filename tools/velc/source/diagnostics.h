#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace velc {

// A place in a source file, lines counted from 1; line 0 means the file as a whole.
struct source_place {
    std::string file;
    std::uint32_t line = 0;
};

// "file:line", or "file" when the line is 0.
std::string to_string(const source_place &place);

// Thrown for all that makes a source unusable. what() is "file:line: found ..., expected ...".
class source_error : public std::runtime_error {
public:
    source_error(source_place place, std::string_view text);
    const source_place &place() const { return place_; }
    const std::string &text() const { return text_; }

private:
    source_place place_;
    std::string text_;
};

enum class warning_kind : std::uint8_t {
    syntax,         // tolerated slip: missing CHARMAP line, section never closed, ...
    duplicate,      // a second definition of the same thing; the first is kept
    unknown_name,   // a name that no declaration introduces
    prefix_dropped, // characters whose bytes begin with another whole character
    unmapped,       // charmap names that stand for no code point
    not_kept,       // understood, but the model has no place for it
};

std::string_view to_string(warning_kind kind);

struct warning {
    warning_kind kind;
    source_place place;
    std::string text;
};

using warning_list = std::vector<warning>;

// "file:line: warning: text"
std::string to_string(const warning &one);

} // namespace velc

#include "velc/source/portable_names.h"

#include <algorithm>
#include <array>

namespace velc {

namespace {

struct named_character {
    std::string_view name;
    char32_t code;
};

// Rising by name, in byte order.
constexpr auto named_characters = std::to_array<named_character>({
    {"ACK", 0x06},
    {"BEL", 0x07},
    {"BS", 0x08},
    {"CAN", 0x18},
    {"CR", 0x0D},
    {"DC1", 0x11},
    {"DC2", 0x12},
    {"DC3", 0x13},
    {"DC4", 0x14},
    {"DEL", 0x7F},
    {"DLE", 0x10},
    {"EM", 0x19},
    {"ENQ", 0x05},
    {"EOT", 0x04},
    {"ESC", 0x1B},
    {"ETB", 0x17},
    {"ETX", 0x03},
    {"FF", 0x0C},
    {"HT", 0x09},
    {"IS1", 0x1F},
    {"IS2", 0x1E},
    {"IS3", 0x1D},
    {"IS4", 0x1C},
    {"LF", 0x0A},
    {"NAK", 0x15},
    {"NUL", 0x00},
    {"SI", 0x0F},
    {"SO", 0x0E},
    {"SOH", 0x01},
    {"STX", 0x02},
    {"SUB", 0x1A},
    {"SYN", 0x16},
    {"VT", 0x0B},
    {"alert", 0x07},
    {"ampersand", '&'},
    {"apostrophe", '\''},
    {"asterisk", '*'},
    {"backslash", '\\'},
    {"backspace", 0x08},
    {"carriage-return", 0x0D},
    {"circumflex", '^'},
    {"circumflex-accent", '^'},
    {"colon", ':'},
    {"comma", ','},
    {"commercial-at", '@'},
    {"dollar-sign", '$'},
    {"eight", '8'},
    {"equals-sign", '='},
    {"exclamation-mark", '!'},
    {"five", '5'},
    {"form-feed", 0x0C},
    {"four", '4'},
    {"full-stop", '.'},
    {"grave-accent", '`'},
    {"greater-than-sign", '>'},
    {"hyphen", '-'},
    {"hyphen-minus", '-'},
    {"left-brace", '{'},
    {"left-curly-bracket", '{'},
    {"left-parenthesis", '('},
    {"left-square-bracket", '['},
    {"less-than-sign", '<'},
    {"low-line", '_'},
    {"newline", 0x0A},
    {"nine", '9'},
    {"number-sign", '#'},
    {"one", '1'},
    {"percent-sign", '%'},
    {"period", '.'},
    {"plus-sign", '+'},
    {"question-mark", '?'},
    {"quotation-mark", '"'},
    {"reverse-solidus", '\\'},
    {"right-brace", '}'},
    {"right-curly-bracket", '}'},
    {"right-parenthesis", ')'},
    {"right-square-bracket", ']'},
    {"semicolon", ';'},
    {"seven", '7'},
    {"six", '6'},
    {"slash", '/'},
    {"solidus", '/'},
    {"space", ' '},
    {"tab", 0x09},
    {"three", '3'},
    {"tilde", '~'},
    {"two", '2'},
    {"underscore", '_'},
    {"vertical-line", '|'},
    {"vertical-tab", 0x0B},
    {"zero", '0'},
});

static_assert(std::ranges::is_sorted(named_characters, {}, &named_character::name));

constexpr bool is_letter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

} // namespace

std::optional<char32_t> portable_character(std::string_view name) {
    if (name.size() == 1 && is_letter(name[0])) return name[0];
    auto found = std::ranges::lower_bound(named_characters, name, {}, &named_character::name);
    if (found == named_characters.end() || found->name != name) return std::nullopt;
    return found->code;
}

} // namespace velc

#include "velc/portable_symbols.h"

#include <array>

#include "velc/source/portable_names.h"

namespace velc {

namespace {

// Of several names for one character the usual one stands last.
constexpr std::string_view names[] = {
    "NUL",
    "SOH",
    "STX",
    "ETX",
    "EOT",
    "ENQ",
    "ACK",
    "BEL",
    "alert",
    "BS",
    "backspace",
    "HT",
    "tab",
    "LF",
    "newline",
    "VT",
    "vertical-tab",
    "FF",
    "form-feed",
    "CR",
    "carriage-return",
    "SO",
    "SI",
    "DLE",
    "DC1",
    "DC2",
    "DC3",
    "DC4",
    "NAK",
    "SYN",
    "ETB",
    "CAN",
    "EM",
    "SUB",
    "ESC",
    "IS4",
    "IS3",
    "IS2",
    "IS1",
    "space",
    "exclamation-mark",
    "quotation-mark",
    "number-sign",
    "dollar-sign",
    "percent-sign",
    "ampersand",
    "apostrophe",
    "left-parenthesis",
    "right-parenthesis",
    "asterisk",
    "plus-sign",
    "comma",
    "hyphen-minus",
    "hyphen",
    "full-stop",
    "period",
    "solidus",
    "slash",
    "zero",
    "one",
    "two",
    "three",
    "four",
    "five",
    "six",
    "seven",
    "eight",
    "nine",
    "colon",
    "semicolon",
    "less-than-sign",
    "equals-sign",
    "greater-than-sign",
    "question-mark",
    "commercial-at",
    "left-square-bracket",
    "reverse-solidus",
    "backslash",
    "right-square-bracket",
    "circumflex-accent",
    "circumflex",
    "low-line",
    "underscore",
    "grave-accent",
    "left-curly-bracket",
    "left-brace",
    "vertical-line",
    "right-curly-bracket",
    "right-brace",
    "tilde",
    "DEL",
};
constexpr std::string_view letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";

using name_lists = std::array<std::vector<std::string_view>, 0x80>;

name_lists lists_by_code() {
    name_lists lists;
    const auto add = [&](std::string_view name) {
        if (const auto code = portable_character(name); code && *code < lists.size())
            lists[*code].push_back(name);
    };
    for (const std::string_view name : names) add(name);
    for (std::size_t i = 0; i < letters.size(); ++i) add(letters.substr(i, 1));
    return lists;
}

} // namespace

std::vector<std::string_view> names_of_portable_character(char32_t code) {
    static const name_lists lists = lists_by_code();
    return code < lists.size() ? lists[code] : std::vector<std::string_view>();
}

} // namespace velc

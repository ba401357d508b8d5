#include "velc/source/symbol_range.h"

#include <algorithm>
#include <charconv>

#include <fmt/format.h>

namespace velc {

namespace {

// The part of a name that counts: the hexadecimal digits at its end, at most eight.
std::size_t digits_from(std::string_view name) {
    std::size_t from = name.size();
    while (from > 0 && name.size() - from < 8 &&
           std::string_view("0123456789ABCDEFabcdef").find(name[from - 1]) != name.npos)
        --from;
    return from;
}

std::uint32_t hex_number(std::string_view digits) {
    std::uint32_t value = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    return value;
}

} // namespace

// range := symbol '..' symbol
std::vector<std::string> take_symbol_range(lexer &in, const token &first) {
    const token dots = in.take();
    if (dots.text != "..") in.fail(dots, "'..'; only hexadecimal ranges are known");
    const token end = in.expect(token_kind::symbol, "the last symbol of the range");
    const std::string from = in.name(first), to = in.name(end);
    const std::size_t stem = std::max(digits_from(from), digits_from(to));
    const bool alike =
        from.size() == to.size() && stem < from.size() && from.compare(0, stem, to, 0, stem) == 0;
    if (!alike)
        in.fail(end, fmt::format("a symbol spelled as <{}> but for hexadecimal digits", from));
    const std::uint32_t low = hex_number(std::string_view(from).substr(stem));
    const std::uint32_t high = hex_number(std::string_view(to).substr(stem));
    if (high < low || high - low > 0x10FFFF) in.fail(end, "a symbol behind the first one");
    std::vector<std::string> names;
    for (std::uint32_t n = low; n <= high; ++n)
        names.push_back(fmt::format("{}{:0{}X}", from.substr(0, stem), n, from.size() - stem));
    return names;
}

} // namespace velc

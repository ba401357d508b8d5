#include "vel/number_directive.h"

#include <algorithm>
#include <optional>

#include <fmt/format.h>

#include "vel/failure.h"

namespace vel_tool {
namespace {

struct conversion {
    char letter;
    value_kind kind;
};

constexpr conversion conversions[] = {
    {'d', value_kind::integer}, {'i', value_kind::integer}, {'o', value_kind::integer},
    {'q', value_kind::integer}, {'b', value_kind::integer}, {'x', value_kind::integer},
    {'X', value_kind::integer}, {'u', value_kind::natural}, {'e', value_kind::real},
    {'E', value_kind::real},    {'f', value_kind::real},    {'g', value_kind::real},
    {'G', value_kind::real},    {'s', value_kind::text},    {'c', value_kind::character},
};

constexpr std::string_view flags = " #'+-0";
constexpr std::string_view digits = "0123456789";

// Text with a byte for each character: its ASCII form, or 0.
std::string in_ascii(const code_set &codes, std::string_view text) {
    std::string result;
    while (!text.empty()) {
        int length = codes.character(text);
        size_t bytes = length < 1 ? 1 : static_cast<size_t>(length);
        result += codes.ascii(text.substr(0, bytes));
        text.remove_prefix(bytes);
    }
    return result;
}

void skip(std::string_view &text, std::string_view any_of) {
    text.remove_prefix(std::min(text.find_first_not_of(any_of), text.size()));
}

bool skip_one(std::string_view &text, std::string_view any_of) {
    if (text.empty() || any_of.find(text[0]) == any_of.npos) return false;
    text.remove_prefix(1);
    return true;
}

// Takes the directive that the text begins with, behind its '%'.
number_directive take_directive(std::string_view &text) {
    skip(text, flags);
    skip(text, digits);
    if (skip_one(text, ".")) skip(text, digits);
    if (!text.empty() && text[0] == '*') {
        throw failure("'*' in a directive takes an argument of its own: write the number instead",
                      exit_usage);
    }
    bool is_long = skip_one(text, "lL");
    bool is_short = !is_long && skip_one(text, "hH");
    if (text.empty()) throw failure("the format ends inside a directive", exit_usage);
    char letter = text[0];
    text.remove_prefix(1);
    for (const conversion &row : conversions) {
        if (row.letter != letter) continue;
        if (is_long && row.kind >= value_kind::text) {
            throw failure(fmt::format("%l{0} is for wide text: write %{0}", letter), exit_usage);
        }
        return {row.kind, is_short};
    }
    std::string shown = letter > 0x20 && letter < 0x7F ? std::string(1, letter) : "?";
    throw failure(fmt::format("%{} is no conversion of numbers: they are d i u o q b x X, e E f g "
                              "G, s and c",
                              shown),
                  exit_usage);
}

} // namespace

number_directive only_directive(const code_set &codes, const std::string &format) {
    std::string ascii = in_ascii(codes, format);
    std::string_view rest = ascii;
    std::optional<number_directive> found;
    for (size_t at; (at = rest.find('%')) != rest.npos;) {
        rest.remove_prefix(at + 1);
        if (skip_one(rest, "%")) continue;
        if (found) {
            throw failure(fmt::format("'{}' has more than one directive: give one", format),
                          exit_usage);
        }
        found = take_directive(rest);
    }
    if (!found) {
        throw failure(fmt::format("'{}' has no directive: give one, as in '%d'", format),
                      exit_usage);
    }
    return *found;
}

size_t count_percent_signs(const code_set &codes, const std::string &text) {
    std::string ascii = in_ascii(codes, text);
    return static_cast<size_t>(std::count(ascii.begin(), ascii.end(), '%'));
}

} // namespace vel_tool

#include "velc/time_formats.h"

#include <algorithm>

#include "velc/source/code_points.h"
#include "velc/tool_error.h"

namespace velc {

namespace {

struct rewrite {
    std::u32string_view written;
    std::u32string_view library;
};

// Where the letters differ. The sources write for strftime; here %F is a fraction of a second, %u
// and %w have two digits unless told otherwise, and a precision says the least number of digits.
constexpr rewrite rewrites[] = {
    {U"-d", U"%.1d"}, {U"-e", U"%.1d"}, {U"-m", U"%.1m"}, {U"-H", U"%.1H"}, {U"-I", U"%.1I"},
    {U"-k", U"%.1H"}, {U"-l", U"%.1I"}, {U"-M", U"%.1M"}, {U"-S", U"%.1S"}, {U"-y", U"%.1y"},
    {U"-j", U"%.1j"}, {U"k", U"%2.1H"}, {U"l", U"%2.1I"}, {U"P", U"%p"},    {U"Op", U"%p"},
    {U"OP", U"%p"},   {U"OB", U"%B"},   {U"Ob", U"%b"},   {U"Oh", U"%b"},   {U"F", U"%Y-%m-%d"},
    {U"u", U"%.1u"},  {U"w", U"%.1w"},  {U"Ok", U"%OH"},  {U"Ol", U"%OI"},
};

// The same in both languages.
constexpr std::u32string_view plain_letters = U"%aAbBhcCdDeHIjmMnprRStTxXyY";
constexpr std::u32string_view era_letters = U"cCxXyY";
constexpr std::u32string_view alternative_letters = U"deHImMSuwyjCDRT";

constexpr bool is_blank(char32_t c) {
    return c == U' ' || c == 0xA0 || c == 0x202F;
}

// The characters of a conversion behind its '%': flag or modifier, then the letter.
std::u32string_view conversion_at(std::u32string_view rest) {
    const std::size_t letter = rest.find_first_not_of(U"-_0^#+EO");
    return rest.substr(0, letter == rest.npos ? rest.size() : letter + 1);
}

bool is_plain(std::u32string_view conversion) {
    const auto among = [&](std::u32string_view letters) {
        return letters.find(conversion.back()) != letters.npos;
    };
    if (conversion.size() == 1) return among(plain_letters);
    if (conversion.size() != 2) return false;
    return (conversion[0] == U'E' && among(era_letters)) ||
           (conversion[0] == U'O' && among(alternative_letters));
}

bool is_time_zone(std::u32string_view conversion) {
    return !conversion.empty() && (conversion.back() == U'Z' || conversion.back() == U'z');
}

// A time zone is left out with one blank beside it, the one before it rather than the one behind.
void leave_out(std::u32string &made, std::u32string_view &rest) {
    if (!made.empty() && is_blank(made.back()))
        made.pop_back();
    else if (!rest.empty() && is_blank(rest.front()))
        rest.remove_prefix(1);
}

} // namespace

std::u32string library_time_format(std::string_view keyword, std::u32string_view written) {
    std::u32string made;
    std::u32string_view rest = written;
    while (!rest.empty()) {
        const char32_t c = rest.front();
        rest.remove_prefix(1);
        if (c != U'%') {
            made += c;
            continue;
        }
        const std::u32string_view conversion = conversion_at(rest);
        rest.remove_prefix(conversion.size());
        if (is_time_zone(conversion)) {
            leave_out(made, rest);
            continue;
        }
        const auto *known = std::ranges::find(rewrites, conversion, &rewrite::written);
        if (known != std::end(rewrites))
            made += known->library;
        else if (!conversion.empty() && is_plain(conversion))
            made.append(1, U'%').append(conversion);
        else
            throw tool_error("{}: found %{} in \"{}\", expected a conversion that the library's "
                             "time functions know",
                             keyword, to_utf8(conversion), to_utf8(written));
    }
    return made;
}

} // namespace velc

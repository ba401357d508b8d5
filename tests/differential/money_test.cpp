// Amounts that both write, and what is read back.
#include <monetary.h>

#include "differential/conventions.h"

namespace differential {
namespace {

constexpr known_tally known[] = {{"%i", 25, 1858, "layout of international amounts"},
                                 {"%!n", 4, 64, "a blank without a symbol"},
                                 {"%#n", 5, 104, "room for the other sign"}};

constexpr double amounts[] = {
    0.0,     1.0,   -1.0,   0.5,     -0.005,     0.125,       99.995,
    -123.45, 999.0, 1234.5, -1234.5, -12345.678, 1234567.891, -123456789012.25};

constexpr const char *formats[] = {
    "%n",      "%^n",   "%!n",  "%(n",  "%+n",  "%#8n",   "%=*#8n",   "%=0#8n",    "%(#8n",
    "%^=*#8n", "%!#8n", "%.0n", "%.3n", "%20n", "%-20n|", "%=f#9.1n", "%!^(#6.1n", "%(!n",
    "%i",      "%^i",   "%!i",  "%(i",  "%#8i", "%.1i",   "%24i",     "[%n]%% "};

// Whether the source lays international amounts out in another way.
bool has_international_layout() {
    const lconv &of = *localeconv();
    return std::tie(of.p_cs_precedes, of.p_sep_by_space, of.n_cs_precedes, of.n_sep_by_space,
                    of.p_sign_posn, of.n_sign_posn) !=
           std::tie(of.int_p_cs_precedes, of.int_p_sep_by_space, of.int_n_cs_precedes,
                    of.int_n_sep_by_space, of.int_p_sign_posn, of.int_n_sign_posn);
}

std::string aspect_of(std::string_view format) {
    if (format.find('i') != format.npos && has_international_layout()) return "%i";
    if (format.find('#') != format.npos) return "%#n";
    if (format.find('!') != format.npos) return "%!n";
    return std::string(format);
}

// A width counts bytes on the host: where that makes a difference only the text counts.
bool has_width(const char *format) {
    return format[1] == '-' || (format[1] >= '0' && format[1] <= '9');
}
bool is_ascii(const std::string &text) {
    return std::ranges::all_of(text, [](char c) { return c > 0; });
}
std::string without_blanks(std::string text) {
    std::erase(text, ' ');
    return text;
}

using money_against_host = conventions;

TEST_F(money_against_host, written_and_read_back) {
    tally written, read;
    for_each_locale([&](const both &locale) {
        for (const char *format : formats)
            for (double amount : amounts) {
                char text[512];
                const ssize_t length = strfmon_l(text, sizeof text, locale.host(), format, amount);
                const std::string host(text, static_cast<size_t>(length));
                const std::string ours = locale.written(vel_mbsfmon, format, amount);
                read.compare(format, locale.name(), ours,
                             locale.again(vel_mbsfmon, vel_mbspmon, format, ours, amount), ours);
                const bool same_padding = !has_width(format) || is_ascii(host);
                written.compare(aspect_of(format), locale.name(), format,
                                same_padding ? ours : without_blanks(ours),
                                same_padding ? host : without_blanks(host));
            }
    });
    written.settle(known);
    read.settle({});
}

} // namespace
} // namespace differential

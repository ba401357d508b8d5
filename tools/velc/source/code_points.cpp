#include "velc/source/code_points.h"

#include <algorithm>

#include <fmt/format.h>

namespace velc {

code_ranges normalised(code_ranges ranges) {
    std::ranges::sort(ranges, {}, &code_range::first);
    code_ranges joined;
    for (const code_range &r : ranges) {
        if (joined.empty() || r.first > joined.back().last + 1)
            joined.push_back(r);
        else
            joined.back().last = std::max(joined.back().last, r.last);
    }
    return joined;
}

code_ranges united(const code_ranges &a, const code_ranges &b) {
    code_ranges both = a;
    both.insert(both.end(), b.begin(), b.end());
    return normalised(std::move(both));
}

bool contains(const code_ranges &ranges, char32_t code) {
    auto behind = std::ranges::upper_bound(ranges, code, {}, &code_range::first);
    return behind != ranges.begin() && code <= std::prev(behind)->last;
}

std::size_t count_of(const code_ranges &ranges) {
    std::size_t n = 0;
    for (const code_range &r : ranges) n += r.last - r.first + 1;
    return n;
}

namespace {

std::optional<unsigned> hex_value(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return std::nullopt;
}

} // namespace

std::optional<char32_t> code_point_of_name(std::string_view name) {
    if (name.size() < 5 || name.size() > 9 || name[0] != 'U') return std::nullopt;
    char32_t code = 0;
    for (char c : name.substr(1)) {
        auto digit = hex_value(c);
        if (!digit) return std::nullopt;
        code = code << 4 | *digit;
    }
    return code;
}

std::string code_point_name(char32_t code) {
    const auto number = static_cast<std::uint32_t>(code);
    return number > 0xFFFF ? fmt::format("<U{:08X}>", number) : fmt::format("<U{:04X}>", number);
}

std::optional<char32_t> decode_utf8(std::string_view text, std::size_t &at) {
    const auto lead = static_cast<unsigned char>(text[at]);
    if (lead < 0x80) return text[at++];
    const int length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() - at < static_cast<std::size_t>(length))
        return std::nullopt;
    char32_t code = lead & (0x7F >> length);
    for (int i = 1; i < length; ++i) {
        const auto trail = static_cast<unsigned char>(text[at + i]);
        if ((trail & 0xC0) != 0x80) return std::nullopt;
        code = code << 6 | (trail & 0x3F);
    }
    static constexpr char32_t least[] = {0, 0, 0x80, 0x800, 0x10000};
    if (code < least[length] || !is_scalar_value(code)) return std::nullopt;
    at += length;
    return code;
}

std::string to_utf8(std::u32string_view text) {
    std::string out;
    for (char32_t c : text) {
        if (c < 0x80) {
            out += static_cast<char>(c);
            continue;
        }
        const int trails = c < 0x800 ? 1 : c < 0x10000 ? 2 : 3;
        out += static_cast<char>((0xFF00 >> (trails + 1) & 0xFF) | c >> (6 * trails));
        for (int i = trails - 1; i >= 0; --i)
            out += static_cast<char>(0x80 | (c >> (6 * i) & 0x3F));
    }
    return out;
}

} // namespace velc

#include <algorithm>

#include "velc/source/ctype_parts.h"

namespace velc {

namespace {

struct implied_class {
    std::string_view name;
    code_range ranges[2];        // members in any locale
    std::string_view sources[6]; // classes that belong to it, complete before it
};

constexpr code_range nothing{1, 0};

// In an order that completes each class before those that are made of it.
constexpr implied_class implied[] = {
    {"upper", {{'A', 'Z'}, nothing}, {}},
    {"lower", {{'a', 'z'}, nothing}, {}},
    {"digit", {{'0', '9'}, nothing}, {}},
    {"alpha", {nothing, nothing}, {"upper", "lower"}},
    {"blank", {{'\t', '\t'}, {' ', ' '}}, {}},
    {"space", {{'\t', '\r'}, {' ', ' '}}, {"blank"}},
    {"graph", {nothing, nothing}, {"upper", "lower", "alpha", "digit", "xdigit", "punct"}},
    {"print", {{' ', ' '}, nothing}, {"graph"}},
};

void imply(ctype &in, const implied_class &rule) {
    code_ranges all = class_named(in, rule.name).ranges;
    for (const code_range &r : rule.ranges)
        if (r.first <= r.last) all.push_back(r);
    for (std::string_view source : rule.sources) {
        if (const char_class *other = in.find_class(source))
            all.insert(all.end(), other->ranges.begin(), other->ranges.end());
    }
    class_named(in, rule.name).ranges = normalised(std::move(all));
}

void imply_hex_digits(ctype &in) {
    code_ranges &hex = class_named(in, "xdigit").ranges;
    if (hex.empty()) hex = {{'A', 'F'}, {'a', 'f'}};
    hex = united(hex, {{'0', '9'}});
}

// The letters of the portable set are mapped in any locale; tolower, when it is not given, is
// toupper the other way round.
void imply_case(ctype &in) {
    const bool has_lower = in.find_map("tolower") != nullptr;
    char_map &upper = map_named(in, "toupper");
    for (char32_t c = 'a'; c <= 'z'; ++c) upper.pairs.push_back({c, c - 32});
    const std::vector<code_pair> uppers = upper.pairs;
    char_map &lower = map_named(in, "tolower");
    for (char32_t c = 'A'; c <= 'Z'; ++c) lower.pairs.push_back({c, c + 32});
    if (has_lower) return;
    for (const code_pair &p : uppers) lower.pairs.push_back({p.to, p.from});
}

} // namespace

ctype with_implied_classes(const ctype &written) {
    ctype full = written;
    imply_hex_digits(full);
    for (const implied_class &rule : implied) imply(full, rule);
    imply_case(full);
    settle(full);
    return full;
}

} // namespace velc

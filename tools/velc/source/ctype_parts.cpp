#include "velc/source/ctype_parts.h"

#include <algorithm>
#include <array>

namespace velc {

namespace {

constexpr auto order_of_names =
    std::to_array<std::string_view>({"upper", "lower", "alpha", "digit", "space", "cntrl", "punct",
                                     "graph", "print", "xdigit", "blank", "toupper", "tolower"});

// Own names share the last place; a stable sort keeps them as they came.
std::size_t place_of(std::string_view name) {
    return std::ranges::find(order_of_names, name) - order_of_names.begin();
}

template <typename T> auto *named(T &list, std::string_view name) {
    auto found = std::ranges::find_if(list, [&](const auto &one) { return one.name == name; });
    return found == list.end() ? nullptr : &*found;
}

template <typename T, typename Key> void sort_keeping_first(std::vector<T> &list, Key T::*key) {
    std::ranges::stable_sort(list, {}, key);
    const auto same = [&](const T &a, const T &b) { return a.*key == b.*key; };
    list.erase(std::unique(list.begin(), list.end(), same), list.end());
}

template <typename T> void append(std::vector<T> &to, const std::vector<T> &more) {
    to.insert(to.end(), more.begin(), more.end());
}

} // namespace

const char_class *ctype::find_class(std::string_view name) const {
    return named(classes, name);
}
const char_map *ctype::find_map(std::string_view name) const {
    return named(maps, name);
}

char_class &class_named(ctype &in, std::string_view name) {
    if (auto *known = named(in.classes, name)) return *known;
    return in.classes.emplace_back(char_class{std::string(name), {}});
}

char_map &map_named(ctype &in, std::string_view name) {
    if (auto *known = named(in.maps, name)) return *known;
    return in.maps.emplace_back(char_map{std::string(name), {}});
}

void settle(ctype &one) {
    std::ranges::stable_sort(one.classes, {}, [](const char_class &c) { return place_of(c.name); });
    std::ranges::stable_sort(one.maps, {}, [](const char_map &m) { return place_of(m.name); });
    for (char_class &c : one.classes) c.ranges = normalised(std::move(c.ranges));
    for (char_map &m : one.maps) sort_keeping_first(m.pairs, &code_pair::from);
    sort_keeping_first(one.translit.rules, &translit_rule::from);
}

ctype overlaid(const ctype &copied, const ctype &own) {
    ctype both = copied;
    for (const char_class &c : own.classes) append(class_named(both, c.name).ranges, c.ranges);
    for (const char_map &m : own.maps) {
        char_map &to = map_named(both, m.name);
        to.pairs.insert(to.pairs.begin(), m.pairs.begin(), m.pairs.end());
    }
    if (!own.outdigits.empty()) both.outdigits = own.outdigits;
    translit_source &to = both.translit;
    to.rules.insert(to.rules.begin(), own.translit.rules.begin(), own.translit.rules.end());
    append(to.includes, own.translit.includes);
    if (!own.translit.default_missing.empty()) to.default_missing = own.translit.default_missing;
    settle(both);
    return both;
}

} // namespace velc

#include "velc/ctype_section.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <unordered_map>

#include <fmt/format.h>

#include "velc/byte_table.h"
#include "velc/object_text.h"
#include "velc/tool_error.h"

namespace velc {

namespace {

constexpr std::size_t own_class_limit = 5;
constexpr int first_own_bit = 11;
constexpr std::size_t pair_limit = 65535;

constexpr std::string_view standard_classes[] = {"upper", "lower",  "alpha", "digit",
                                                 "space", "cntrl",  "punct", "graph",
                                                 "print", "xdigit", "blank"};
constexpr std::string_view last_classes[] = {"combining", "combining_level3"};

template <typename Range> bool holds(const Range &names, std::string_view name) {
    return std::ranges::find(names, name) != std::end(names);
}

// The class mask of every code point.
class mask_map {
public:
    mask_map(const ctype &from, const std::vector<std::string> &own, const charmap &codeset)
        : masks_(last_code_point + 1) {
        for (std::size_t bit = 0; bit < std::size(standard_classes); ++bit)
            add(from.find_class(standard_classes[bit]), bit);
        for (std::size_t i = 0; i < own.size(); ++i)
            add(from.find_class(own[i]), first_own_bit + i);
        for (const width_run &run : codeset.widths())
            if (run.width == 2) add(run.range, first_own_bit);
        add_letters();
    }
    std::uint16_t operator[](char32_t code) const { return masks_[code]; }

private:
    void add(const char_class *members, std::size_t bit) {
        if (!members) return;
        for (const code_range &range : members->ranges) add(range, bit);
    }
    void add(const code_range &range, std::size_t bit) {
        for (char32_t code = range.first; code <= range.last; ++code)
            masks_[code] = static_cast<std::uint16_t>(masks_[code] | 1u << bit);
    }
    // Upper and lower case letters are letters.
    void add_letters() {
        for (std::uint16_t &mask : masks_)
            if (mask & 3) mask |= 4;
    }

    std::vector<std::uint16_t> masks_;
};

// Where one of the two case maps leads, for the characters that the code set can write.
std::unordered_map<char32_t, byte_sequence> case_targets(const char_map *map,
                                                         const charmap &codeset) {
    std::unordered_map<char32_t, byte_sequence> targets;
    if (!map) return targets;
    for (const code_pair &pair : map->pairs) {
        if (pair.from == pair.to) continue;
        if (auto bytes = codeset.encode(pair.to)) targets.emplace(pair.from, *bytes);
    }
    return targets;
}

// The case pairs of a code set, each stored once, numbered from 1 in the order of the bytes.
class case_pairs {
public:
    case_pairs(const ctype &from, const charmap &codeset)
        : upper_(case_targets(from.find_map("toupper"), codeset)),
          lower_(case_targets(from.find_map("tolower"), codeset)) {}

    std::uint16_t index_of(const charmap_entry &entry) {
        const byte_sequence upper = target(upper_, entry), lower = target(lower_, entry);
        if (upper == entry.bytes && lower == entry.bytes) return 0;
        note_growth(entry.bytes, upper);
        note_growth(entry.bytes, lower);
        const auto [known, is_new] =
            numbers_.emplace(std::pair(upper.value, lower.value), pairs_.size() + 1);
        if (is_new) pairs_.push_back(known->first);
        if (pairs_.size() > pair_limit)
            throw tool_error("found more than {} case pairs, expected at most that", pair_limit);
        return static_cast<std::uint16_t>(known->second);
    }

    const std::vector<std::pair<std::uint32_t, std::uint32_t>> &all() const { return pairs_; }
    // The largest ratio of bytes written to bytes read that a conversion can have.
    double growth() const { return growth_; }

private:
    using target_map = std::unordered_map<char32_t, byte_sequence>;

    static byte_sequence target(const target_map &targets, const charmap_entry &entry) {
        const auto found = targets.find(entry.code);
        return found == targets.end() ? entry.bytes : found->second;
    }
    void note_growth(const byte_sequence &from, const byte_sequence &to) {
        growth_ = std::max(growth_, static_cast<double>(to.length) / from.length);
    }

    target_map upper_, lower_;
    std::map<std::pair<std::uint32_t, std::uint32_t>, std::size_t> numbers_;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> pairs_;
    double growth_ = 1.0;
};

// Up to four decimals, rounded up: "1.5", "1.3334".
std::string growth_text(double growth) {
    std::string text = fmt::format("{:.4f}", std::ceil(growth * 1e4) / 1e4);
    while (text.ends_with("00") || (text.ends_with('0') && !text.ends_with(".0"))) text.pop_back();
    return text;
}

void append_classes(std::string &text, const own_classes &own) {
    text += fmt::format("{}\n", own.kept.size());
    for (std::size_t i = 0; i < own.kept.size(); ++i)
        text += fmt::format("{} {}\n", i, own.kept[i]);
}

// The growth factor has to follow the last pair on its line: some readers take the rest of that
// line for the line of the factor.
void append_pairs(std::string &text, const case_pairs &pairs) {
    text += fmt::format("{}", pairs.all().size());
    std::size_t column = 0;
    for (const auto &[upper, lower] : pairs.all()) {
        text += column++ % 4 == 0 ? '\n' : ' ';
        append_wide(text, upper);
        append_wide(text, lower);
    }
    text += fmt::format(" {}\n", growth_text(pairs.growth()));
}

} // namespace

own_classes number_classes(const ctype &from) {
    own_classes own{{double_width_class}, {}};
    std::vector<const char_class *> wanted;
    for (const char_class &one : from.classes)
        if (!holds(standard_classes, one.name) && !holds(last_classes, one.name) &&
            one.name != double_width_class)
            wanted.push_back(&one);
    while (own.kept.size() + wanted.size() > own_class_limit) {
        const auto smallest = std::ranges::min_element(
            wanted, {}, [](const char_class *one) { return count_of(one->ranges); });
        own.dropped.push_back((*smallest)->name);
        wanted.erase(smallest);
    }
    for (const char_class *one : wanted) own.kept.push_back(one->name);
    for (std::string_view name : last_classes)
        if (from.find_class(name))
            (own.kept.size() < own_class_limit ? own.kept : own.dropped).emplace_back(name);
    return own;
}

ctype_section write_ctype(const ctype &written, const charmap &codeset) {
    const ctype full = with_implied_classes(written);
    own_classes own = number_classes(full);
    const mask_map masks(full, own.kept, codeset);
    case_pairs pairs(full, codeset);

    ctype_section section;
    byte_table classes(0), cases(0);
    insert_all(classes, codeset, [&](const charmap_entry &entry) { return masks[entry.code]; });
    insert_all(cases, codeset, [&](const charmap_entry &entry) { return pairs.index_of(entry); });
    classes.append_to(section.text);
    append_classes(section.text, own);
    cases.append_to(section.text);
    append_pairs(section.text, pairs);
    section.dropped_classes = std::move(own.dropped);
    return section;
}

} // namespace velc

#include "velc/source/charmap.h"

#include <algorithm>
#include <numeric>

#include <fmt/format.h>

namespace velc {

std::string byte_sequence::text() const {
    std::string bytes;
    for (int i = 0; i < length; ++i) bytes += static_cast<char>((*this)[i]);
    return bytes;
}

namespace {

// Bytes moved to the left: compares as memcmp does, the shorter one first among equals.
constexpr std::uint64_t sort_key(const byte_sequence &b) {
    return static_cast<std::uint64_t>(b.value) << (8 * (4 - b.length)) << 8 | b.length;
}

bool begins_with(const byte_sequence &whole, const byte_sequence &prefix) {
    return prefix.length < whole.length &&
           whole.value >> (8 * (whole.length - prefix.length)) == prefix.value;
}

std::string spelled(const byte_sequence &b) {
    std::string text;
    for (int i = 0; i < b.length; ++i) text += fmt::format("{}{:02X}", i ? " " : "", b[i]);
    return text;
}

} // namespace

std::strong_ordering operator<=>(const byte_sequence &a, const byte_sequence &b) {
    return sort_key(a) <=> sort_key(b);
}

byte_sequence utf8_bytes(char32_t code) {
    const std::uint32_t c = code;
    if (c < 0x80) return {c, 1};
    if (c < 0x800) return {0xC080 | (c & 0x7C0) << 2 | (c & 0x3F), 2};
    if (c < 0x10000) return {0xE08080 | (c & 0xF000) << 4 | (c & 0xFC0) << 2 | (c & 0x3F), 3};
    return {0xF0808080 | (c & 0x1C0000) << 6 | (c & 0x3F000) << 4 | (c & 0xFC0) << 2 | (c & 0x3F),
            4};
}

charmap::charmap(parts from)
    : name_(std::move(from.name)), file_(std::move(from.file)), aliases_(std::move(from.aliases)),
      names_(std::move(from.names)), warnings_(std::move(from.warnings)),
      width_default_(from.width_default) {
    // Indexes of the entries by code point, those of one code point in the order of the file.
    std::vector<std::uint32_t> order(from.entries.size());
    std::iota(order.begin(), order.end(), 0u);
    std::ranges::stable_sort(order, {}, [&](auto i) { return from.entries[i].code; });
    every_scalar_ = name_ == "UTF-8";
    const std::vector<byte_range> widths = width_ranges(from, order);
    keep_first_of_each(from, order);
    drop_prefixed(from);
    index_codes();
    resolve_widths(widths);
}

// Entries in order of their bytes. Of equal bytes the first line counts; of equal code points the
// first reversible line is the one that is written, the others can only be read.
void charmap::keep_first_of_each(parts &from, std::vector<std::uint32_t> order) {
    std::size_t repeated = 0;
    std::uint32_t line = 0;
    const auto repeats = [&](std::uint32_t i) {
        ++repeated;
        line = line == 0 ? from.lines[i] : std::min(line, from.lines[i]);
    };
    char32_t written = last_code_point + 1;
    for (std::uint32_t i : order) {
        charmap_entry &e = from.entries[i];
        if (!e.reversible) continue;
        if (e.code == written) {
            e.reversible = false;
            repeats(i);
        }
        written = e.code;
    }
    std::ranges::stable_sort(order, {},
                             [&](auto i) { return std::pair(sort_key(from.entries[i].bytes), i); });
    for (std::uint32_t i : order) {
        const charmap_entry &e = from.entries[i];
        if (entries_.empty() || entries_.back().bytes != e.bytes)
            entries_.push_back(e);
        else if (entries_.back().code != e.code)
            repeats(i);
    }
    if (repeated > 0)
        warnings_.push_back({warning_kind::duplicate,
                             {file_, line},
                             fmt::format("{} characters or bytes are given again, the first line "
                                         "of each is kept",
                                         repeated)});
}

void charmap::drop_prefixed(parts &from) {
    std::vector<byte_sequence> whole;
    for (const charmap_entry &e : entries_) whole.push_back(e.bytes);
    for (const charmap_sequence &s : from.sequences) whole.push_back(s.bytes);
    std::ranges::sort(whole);
    std::vector<byte_sequence> dropped;
    byte_sequence kept;
    for (const byte_sequence &b : whole) {
        if (kept.length != 0 && begins_with(b, kept))
            dropped.push_back(b);
        else
            kept = b;
    }
    const auto is_dropped = [&](const auto &one) {
        return std::ranges::binary_search(dropped, one.bytes);
    };
    std::ranges::copy_if(entries_, std::back_inserter(dropped_), is_dropped);
    std::erase_if(entries_, is_dropped);
    sequences_ = std::move(from.sequences);
    std::erase_if(sequences_, is_dropped);
    if (dropped.empty()) return;
    warnings_.push_back(
        {warning_kind::prefix_dropped,
         {file_, 0},
         fmt::format("{} characters are left out because their first byte is a character of its "
                     "own, the first of them is {}",
                     dropped.size(), spelled(dropped[0]))});
}

void charmap::index_codes() {
    page_.assign((last_code_point >> 8) + 1, 0);
    slots_.assign(256, 0);
    min_length_ = 4;
    for (std::uint32_t i = 0; i < entries_.size(); ++i) {
        const charmap_entry &e = entries_[i];
        min_length_ = std::min<int>(min_length_, e.bytes.length);
        max_length_ = std::max<int>(max_length_, e.bytes.length);
        if (!e.reversible) continue;
        std::uint32_t &page = page_[e.code >> 8];
        if (page == 0) {
            page = static_cast<std::uint32_t>(slots_.size());
            slots_.resize(slots_.size() + 256);
        }
        slots_[page + (e.code & 0xFF)] = i + 1;
    }
    for (std::uint32_t page : page_)
        for (std::uint32_t i = 0; page != 0 && i < 256; ++i)
            if (slots_[page + i] != 0) by_code_.push_back(slots_[page + i] - 1);
}

const charmap_entry *charmap::find(char32_t code) const {
    if (code > last_code_point) return nullptr;
    const std::uint32_t slot = slots_[page_[code >> 8] + (code & 0xFF)];
    return slot == 0 ? nullptr : &entries_[slot - 1];
}

const charmap_entry *charmap::find(byte_sequence bytes) const {
    auto found = std::ranges::lower_bound(entries_, bytes, {}, &charmap_entry::bytes);
    return found != entries_.end() && found->bytes == bytes ? &*found : nullptr;
}

std::optional<byte_sequence> charmap::encode(char32_t code) const {
    if (every_scalar_ && is_scalar_value(code)) return utf8_bytes(code);
    const charmap_entry *known = find(code);
    return known ? std::optional(known->bytes) : std::nullopt;
}

std::optional<char32_t> charmap::decode(byte_sequence bytes) const {
    if (every_scalar_) {
        const std::string text = bytes.text();
        std::size_t at = 0;
        auto code = text.empty() ? std::nullopt : decode_utf8(text, at);
        return at == text.size() ? code : std::nullopt;
    }
    const charmap_entry *known = find(bytes);
    return known ? std::optional(known->code) : std::nullopt;
}

bool charmap::has_all(std::u32string_view text) const {
    return std::ranges::all_of(text, [&](char32_t c) { return has(c); });
}

std::optional<std::string> charmap::encode_text(std::u32string_view text) const {
    std::string bytes;
    for (char32_t c : text) {
        auto one = encode(c);
        if (!one) return std::nullopt;
        bytes += one->text();
    }
    return bytes;
}

// The ends of width ranges stand for bytes: for those that are written where that makes a range,
// else for those that the file gives first.
std::vector<charmap::byte_range> charmap::width_ranges(const parts &from,
                                                       const std::vector<std::uint32_t> &order) {
    const auto code_at = [&](std::uint32_t i) { return from.entries[i].code; };
    const auto bytes_of = [&](char32_t code, bool written) {
        auto at = std::ranges::lower_bound(order, code, {}, code_at);
        for (; at != order.end() && code_at(*at) == code; ++at)
            if (from.entries[*at].reversible || !written) return from.entries[*at].bytes;
        return every_scalar_ ? utf8_bytes(code) : byte_sequence{};
    };
    std::vector<byte_range> ranges;
    for (const parts::width_rule &rule : from.widths) {
        bool found = false;
        for (bool written : {true, false}) {
            const byte_sequence first = bytes_of(rule.first, written);
            const byte_sequence last = bytes_of(rule.last, written);
            found = first.length != 0 && first.length == last.length && first <= last;
            if (!found) continue;
            ranges.push_back({first, last, rule.width});
            break;
        }
        if (found) continue;
        if (rule.width == width_default_) continue;
        warnings_.push_back(
            {warning_kind::unmapped,
             {file_, rule.line},
             fmt::format("the width of {}...{} is left out: they are not the ends of a range of "
                         "equally long characters",
                         code_point_name(rule.first), code_point_name(rule.last))});
    }
    return ranges;
}

// The ranges of a WIDTH section run in the order of the bytes, not of the code points. A range
// covers the characters between its ends that are as long as they are.
void charmap::resolve_widths(const std::vector<byte_range> &ranges) {
    std::vector<std::pair<char32_t, int>> found;
    for (const byte_range &r : ranges) {
        auto at = std::ranges::lower_bound(entries_, r.first, {}, &charmap_entry::bytes);
        for (; at != entries_.end() && at->bytes <= r.last; ++at)
            if (at->reversible && at->bytes.length == r.first.length)
                found.emplace_back(at->code, r.width);
    }
    std::ranges::stable_sort(found, {}, &std::pair<char32_t, int>::first);
    for (std::size_t i = 0; i < found.size(); ++i) {
        const auto [code, width] = found[i];
        if (i + 1 < found.size() && found[i + 1].first == code) continue; // a later rule prevails
        if (width == width_default_) continue;
        if (!widths_.empty() && widths_.back().range.last + 1 == code &&
            widths_.back().width == width)
            widths_.back().range.last = code;
        else
            widths_.push_back({{code, code}, width});
    }
}

int charmap::width(char32_t code) const {
    auto behind = std::ranges::upper_bound(widths_, code, {},
                                           [](const width_run &r) { return r.range.first; });
    if (behind == widths_.begin() || code > std::prev(behind)->range.last) return width_default_;
    return std::prev(behind)->width;
}

} // namespace velc

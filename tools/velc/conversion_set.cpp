#include "velc/conversion_set.h"

#include <algorithm>
#include <filesystem>
#include <iterator>

#include "velc/shifted_sets.h"

namespace velc {

namespace {

const charmap_sequence *find_sequence(const charmap &in, std::u32string_view codes) {
    const auto found = std::ranges::find(in.sequences(), codes, &charmap_sequence::codes);
    return found == in.sequences().end() ? nullptr : &*found;
}

bool has_source(const source_library &sources, const std::string &name) {
    const std::filesystem::path plain = sources.root() / "charmaps" / name;
    return std::filesystem::exists(plain) || std::filesystem::exists(plain.string() + ".gz");
}

// GB18030 counts up the code points beyond the basic plane.
constexpr std::string_view counted_name = "GB18030";
byte_sequence counted_bytes(char32_t code) {
    const std::uint32_t n = static_cast<std::uint32_t>(code) - 0x10000;
    return {(0x90 + n / 12600) << 24 | (0x30 + n / 1260 % 10) << 16 | (0x81 + n / 10 % 126) << 8 |
                (0x30 + n % 10),
            4};
}

std::shared_ptr<const charmap> remade(const charmap &listed, std::vector<charmap_entry> entries) {
    charmap::parts parts;
    parts.name = listed.name();
    parts.file = listed.file();
    parts.sequences = listed.sequences();
    parts.lines.assign(entries.size(), 0);
    parts.entries = std::move(entries);
    return std::make_shared<const charmap>(std::move(parts));
}

// Its charmap has those that were assigned when it was made.
std::shared_ptr<const charmap> with_all_planes(const charmap &listed) {
    std::vector<charmap_entry> entries(listed.by_bytes().begin(), listed.by_bytes().end());
    for (const code_range &range : unicode_repertoire())
        for (char32_t code = std::max(range.first, U'\x10000'); code <= range.last; ++code)
            if (!listed.has(code)) entries.push_back({code, counted_bytes(code), true});
    return remade(listed, std::move(entries));
}

constexpr bool is_private_use(char32_t code) {
    return code >= 0xE000 && code < 0xF900;
}

// Accents in front of their letters: a charmap has them as characters for private use as well, and
// an object of the charmap has them alone. In conversions they give way to the letters.
std::shared_ptr<const charmap> with_accented_letters(const charmap &listed) {
    std::vector<charmap_entry> entries = listed.dropped();
    const auto is_accent = [&](const charmap_entry &one) {
        return is_private_use(one.code) && std::ranges::any_of(entries, [&](const auto &longer) {
                   return longer.bytes[0] == one.bytes.value;
               });
    };
    std::vector<charmap_entry> others;
    std::ranges::remove_copy_if(listed.by_bytes(), std::back_inserter(others), is_accent);
    entries.insert(entries.end(), others.begin(), others.end());
    return remade(listed, std::move(entries));
}

} // namespace

int conversion_set::min_length() const {
    if (form) return form->bytes(0).length;
    const int least = initial->min_length();
    return shifted ? std::min(least, shifted->min_length()) : least;
}

std::optional<coded_character> conversion_set::encode(char32_t code) const {
    if (form) {
        const byte_sequence bytes = form->bytes(code);
        return bytes.length > 0 ? std::optional(coded_character{bytes}) : std::nullopt;
    }
    if (const auto *known = initial->find(code)) return coded_character{known->bytes, false};
    if (const auto *known = shifted ? shifted->find(code) : nullptr)
        return coded_character{known->bytes, true};
    const auto found = written_only.find(code);
    return found == written_only.end() ? std::nullopt : std::optional(found->second);
}

std::optional<coded_character> conversion_set::encode(std::u32string_view codes) const {
    if (codes.size() == 1) return encode(codes[0]);
    if (initial)
        if (const charmap_sequence *known = find_sequence(*initial, codes))
            return coded_character{known->bytes, false};
    coded_character joined;
    for (char32_t code : codes) {
        const auto one = encode(code);
        const bool first = joined.bytes.length == 0;
        if (!one || has_units() || (!first && one->shifted != joined.shifted)) return std::nullopt;
        if (joined.bytes.length + one->bytes.length > 4) return std::nullopt;
        joined.bytes.value = joined.bytes.value << (8 * one->bytes.length) | one->bytes.value;
        joined.bytes.length = static_cast<std::uint8_t>(joined.bytes.length + one->bytes.length);
        joined.shifted = one->shifted;
    }
    return joined;
}

coded_character conversion_set::substitute() const {
    if (form) return {form->bytes(U'\xFFFD')};
    for (char32_t code : {U'?', U'\x1A', U' '})
        if (const auto coded = encode(code)) return *coded;
    const auto printed = [](const charmap_entry &one) { return one.reversible && one.code > U' '; };
    const auto found = std::ranges::find_if(initial->by_bytes(), printed);
    return {found != initial->by_bytes().end() ? found->bytes : initial->by_bytes().front().bytes};
}

conversion_decoder::conversion_decoder(const conversion_set &of) {
    if (of.form)
        for (char32_t code = 0; code <= last_code_point; ++code)
            if (const auto bytes = of.form->bytes(code); is_scalar_value(code) && bytes.length > 0)
                states_[0].push_back({bytes, {code}});
    for (bool shifted : {false, true}) {
        const auto &characters = shifted ? of.shifted : of.initial;
        if (!characters) continue;
        for (const charmap_entry &one : characters->by_bytes())
            states_[shifted].push_back({one.bytes, {one.code}});
        for (const charmap_sequence &one : characters->sequences())
            states_[shifted].push_back({one.bytes, one.codes});
    }
    for (const control_bytes &one : of.controls)
        if (one.code) states_[one.in_shifted].push_back({one.bytes, {*one.code}});
    for (auto &state : states_) std::ranges::sort(state, {}, &meaning::bytes);
}

std::string conversion_decoder::text(const byte_sequence &bytes, bool shifted) const {
    const auto &state = states_[shifted];
    const auto found = std::ranges::lower_bound(state, bytes, {}, &meaning::bytes);
    std::string text;
    if (found == state.end() || found->bytes != bytes) return text;
    for (char32_t code : found->codes)
        text +=
            fmt::format("{}U+{:04X}", text.empty() ? "" : " ", static_cast<std::uint32_t>(code));
    return text;
}

conversion_set_pointer conversion_sets::get(const std::string &name) {
    std::shared_ptr<slot> one;
    {
        std::lock_guard lock(mutex_);
        auto &kept = slots_[name];
        if (!kept) kept = std::make_shared<slot>();
        one = kept;
    }
    std::call_once(one->once, [&] { one->made = make(name); });
    return one->made;
}

conversion_set_pointer conversion_sets::make(const std::string &name) {
    conversion_set made;
    if (const unicode_form *form = find_unicode_form(name)) {
        made.source = "computed";
        made.form = form;
    } else if (has_source(sources_, name)) {
        made.source = "charmap " + name;
        made.initial = sources_.charmap(name);
        if (name == counted_name) made.initial = with_all_planes(*made.initial);
        if (!made.initial->dropped().empty()) made.initial = with_accented_letters(*made.initial);
        // Bytes that are read as several characters.
        for (const charmap_entry &one : made.initial->dropped())
            if (one.reversible && !made.initial->has(one.code))
                made.written_only.emplace(one.code, coded_character{one.bytes});
    } else {
        made = name == hz_name ? make_hz(sources_) : ask_host(name);
    }
    made.name = name;
    if (!made.form && made.initial->by_bytes().empty())
        throw tool_error("{}: found no characters, expected some", name);
    return std::make_shared<const conversion_set>(std::move(made));
}

} // namespace velc

#include "velc/shifted_sets.h"

#include <algorithm>

#include "velc/host_converter.h"

namespace velc {

namespace {

constexpr const char *plain_form = "UTF-32BE";
constexpr byte_sequence shift_out{0x0E, 1}, shift_in{0x0F, 1};
// Beyond it the mixed sets have no characters.
constexpr char32_t last_asked = 0x2FFFF;

std::string plain_text(char32_t code) {
    return byte_sequence{static_cast<std::uint32_t>(code), 4}.text();
}

std::optional<char32_t> one_code(const std::optional<std::string> &text) {
    if (!text || text->size() != 4) return std::nullopt;
    char32_t code = 0;
    for (char c : *text) code = code << 8 | static_cast<unsigned char>(c);
    return code;
}

std::shared_ptr<const charmap> charmap_of_state(const std::string &name,
                                                std::vector<charmap_entry> entries) {
    charmap::parts parts;
    parts.name = parts.file = name;
    parts.lines.assign(entries.size(), 0);
    parts.entries = std::move(entries);
    return std::make_shared<const charmap>(std::move(parts));
}

// The bytes of what the host wrote for one character: with SO in front in the shifted state.
std::optional<coded_character> coded_in(const std::optional<std::string> &text) {
    if (!text || text->empty()) return std::nullopt;
    coded_character coded;
    coded.shifted = text->front() == '\x0E' && text->size() > 1;
    for (char c : text->substr(coded.shifted ? 1 : 0))
        coded.bytes = {coded.bytes.value << 8 | static_cast<unsigned char>(c),
                       static_cast<std::uint8_t>(coded.bytes.length + 1)};
    return coded.bytes.length == (coded.shifted ? 2 : 1) ? std::optional(coded) : std::nullopt;
}

class host_survey {
public:
    explicit host_survey(const std::string &name)
        : name_(name), decode_(plain_form, name.c_str()), encode_(name.c_str(), plain_form) {}

    bool fits() {
        return decode_.is_open() && encode_.is_open() && decode_.convert("\x0E") == "" &&
               decode_.convert("\x0F") == "";
    }

    conversion_set make() {
        read();
        write();
        conversion_set made;
        made.source = "host converter, " + host_converter_name();
        made.initial = charmap_of_state(name_, std::move(entries_[0]));
        made.shifted = charmap_of_state(name_, std::move(entries_[1]));
        made.to_shifted = shift_out;
        made.to_initial = shift_in;
        made.controls = {{shift_out, false, true},
                         {shift_in, false, false},
                         {shift_in, true, true},
                         {shift_out, true, false}};
        made.written_only = std::move(written_only_);
        return made;
    }

private:
    void read() {
        for (std::uint32_t value = 0; value < 0x100; ++value) note({value, 1}, false);
        for (std::uint32_t value = 0; value < 0x10000; ++value)
            if (value >> 8 != shift_out.value && value >> 8 != shift_in.value)
                note({value, 2}, true);
    }
    void note(byte_sequence bytes, bool shifted) {
        if (bytes == shift_out || bytes == shift_in) return;
        const std::string text = (shifted ? shift_out.text() : "") + bytes.text();
        if (const auto code = one_code(decode_.convert(text)))
            entries_[shifted].push_back({*code, bytes, false});
    }

    void write() {
        for (char32_t code = 0; code <= last_asked; ++code) {
            if (!is_scalar_value(code)) continue;
            const auto coded = coded_in(encode_.convert(plain_text(code)));
            if (!coded) continue;
            charmap_entry *entry = entry_of(*coded);
            // The host writes a few characters that the set has as bytes that mean others.
            if (!entry || entry->code != code) entry = entry_for(code);
            if (entry)
                entry->reversible = true;
            else
                written_only_.emplace(code, *coded);
        }
    }
    charmap_entry *entry_of(const coded_character &coded) {
        auto &entries = entries_[coded.shifted];
        const auto found =
            std::ranges::lower_bound(entries, coded.bytes, {}, &charmap_entry::bytes);
        return found != entries.end() && found->bytes == coded.bytes ? &*found : nullptr;
    }
    charmap_entry *entry_for(char32_t code) {
        for (auto &entries : entries_) {
            const auto found = std::ranges::find(entries, code, &charmap_entry::code);
            if (found != entries.end()) return &*found;
        }
        return nullptr;
    }

    std::string name_;
    host_converter decode_, encode_;
    std::vector<charmap_entry> entries_[2]; // of the initial and of the shifted state, by bytes
    std::map<char32_t, coded_character> written_only_;
};

constexpr byte_sequence hz_out{0x7E7B, 2}, hz_in{0x7E7D, 2}, hz_tilde{0x7E7E, 2},
    hz_joined_line{0x7E0A, 2}, line_feed{0x0A, 1};

} // namespace

conversion_set ask_host(const std::string &name) {
    host_survey survey(name);
    if (!survey.fits())
        throw missing_set("{}: has no charmap and is no set with shift states that the host's "
                          "converter knows, expected one of these",
                          name);
    return survey.make();
}

conversion_set make_hz(source_library &sources) {
    std::vector<charmap_entry> single, two;
    for (charmap_entry entry : sources.charmap("GB2312")->by_bytes()) {
        const bool is_two = entry.bytes.length == 2;
        if (is_two) entry.bytes.value &= 0x7F7F;
        if (entry.code == U'~') entry.bytes = hz_tilde;
        if (is_two || entry.code < 0x80) (is_two ? two : single).push_back(entry);
    }
    const std::string name(hz_name);
    conversion_set made;
    made.source = "charmap GB2312";
    made.initial = charmap_of_state(name, std::move(single));
    made.shifted = charmap_of_state(name, std::move(two));
    made.to_shifted = hz_out;
    made.to_initial = hz_in;
    // A line ends the shifted state, whether it was led back or not.
    made.controls = {{hz_out, false, true},
                     {hz_joined_line, false, false},
                     {hz_in, true, true},
                     {line_feed, true, true, U'\n'}};
    return made;
}

} // namespace velc

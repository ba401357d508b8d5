// The body of a conversion object is made from the source's characters by way of their code points.
// What the tables really hold is measured on the way.
#include "velc/conversion_writer.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <fmt/format.h>

#include "velc/entry_table.h"
#include "velc/object_text.h"

namespace velc {

namespace {

constexpr int conversion_object_version = 9;
constexpr conversion_entry illegal{};

byte_sequence reversed(const byte_sequence &bytes) {
    byte_sequence turned{0, bytes.length};
    for (int i = bytes.length - 1; i >= 0; --i) turned.value = turned.value << 8 | bytes[i];
    return turned;
}

// Lengths and ratios of everything that a table holds.
class extent {
public:
    // `around` is what the shift states of the target may add to a character.
    explicit extent(int around) : around_(around) {}

    void note(int source, const conversion_entry &entry) {
        shortest_source_ = std::min(shortest_source_, source);
        longest_source_ = std::max(longest_source_, source);
        longest_target_ = std::max<int>(longest_target_, entry.bytes.length);
        const int out = entry.bytes.length + (entry.flags & entry_in_shifted ? around_ : 0);
        if (out * most_source_ <= most_target_ * source) return;
        most_target_ = out;
        most_source_ = source;
    }

    int shortest_source() const { return shortest_source_; }
    int longest_source() const { return longest_source_; }
    int longest_target() const { return longest_target_; }

    // The ratio as the nearest float that is not below it.
    std::string expansion() const {
        const float source = static_cast<float>(most_source_);
        const float target = static_cast<float>(most_target_);
        float ratio = target / source;
        if (static_cast<double>(ratio) * most_source_ < most_target_)
            ratio = std::nextafter(ratio, target);
        std::string text = fmt::format("{}", ratio);
        return text.find('.') == text.npos ? text + ".0" : text;
    }

private:
    int around_;
    int shortest_source_ = 4, longest_source_ = 1, longest_target_ = 1;
    int most_target_ = 0, most_source_ = 1;
};

class conversion_body {
public:
    conversion_body(const conversion_set &from, const conversion_set &to)
        : from_(from), to_(to), extent_(to.to_shifted.length + to.to_initial.length),
          turned_(from.has_units() && to.has_units()) {
        const coded_character coded = to.substitute();
        substitute_ = entry_of(coded, entry_ordinary | entry_substitute);
    }

    std::string write() {
        std::string tables;
        table_of(false).append_to(tables);
        if (from_.has_shifts()) table_of(true).append_to(tables);
        return parameters() + tables;
    }

    std::size_t substituted() const { return substituted_; }

private:
    // Units of the source are looked up by a routine of its own, which writes entries as they
    // stand: units of the target are then turned here instead.
    conversion_entry entry_of(const coded_character &coded, int flags) const {
        const int state = coded.shifted ? entry_in_shifted : 0;
        return {static_cast<std::uint8_t>(flags | state),
                turned_ ? reversed(coded.bytes) : coded.bytes};
    }
    conversion_entry entry_for(std::u32string_view codes) {
        const int ends = codes[0] == 0 ? entry_ends_text : 0;
        if (const auto coded = to_.encode(codes)) return entry_of(*coded, entry_ordinary | ends);
        ++substituted_;
        conversion_entry entry = substitute_;
        entry.flags = static_cast<std::uint8_t>(entry.flags | ends);
        return entry;
    }
    void put(entry_table &table, const byte_sequence &source, const conversion_entry &entry) {
        extent_.note(source.length, entry);
        table.put(source, entry);
    }

    // Tables of single bytes accept every byte, and those that are no characters have to be told
    // from those that the target lacks.
    entry_table table_of(bool shifted) {
        const bool single_bytes = !from_.form && longest_of(shifted) == 1;
        entry_table table(single_bytes ? illegal : substitute_);
        if (from_.form)
            put_computed(table, *from_.form);
        else
            put_listed(table, shifted ? *from_.shifted : *from_.initial);
        for (const control_bytes &control : from_.controls)
            if (control.in_shifted == shifted) put_control(table, control);
        return table;
    }
    int longest_of(bool shifted) const {
        const charmap &characters = shifted ? *from_.shifted : *from_.initial;
        int longest = characters.max_length();
        for (const charmap_sequence &one : characters.sequences())
            longest = std::max<int>(longest, one.bytes.length);
        for (const control_bytes &one : from_.controls)
            if (one.in_shifted == shifted) longest = std::max<int>(longest, one.bytes.length);
        return longest;
    }

    void put_listed(entry_table &table, const charmap &characters) {
        for (const charmap_entry &one : characters.by_bytes())
            put(table, one.bytes, entry_for({&one.code, 1}));
        for (const charmap_sequence &one : characters.sequences())
            put(table, one.bytes, entry_for(one.codes));
    }
    void put_control(entry_table &table, const control_bytes &control) {
        conversion_entry entry{entry_ordinary, {}};
        if (control.code) entry = entry_for({&*control.code, 1});
        if (control.switches) entry.flags = static_cast<std::uint8_t>(entry.flags | entry_switches);
        put(table, control.bytes, entry);
    }

    // All that the form can write is accepted; what the target has is put over that.
    void put_computed(entry_table &table, const unicode_form &form) {
        std::array<std::size_t, 5> left{}; // characters of each length without an entry
        for (char32_t code = 0; code <= last_code_point; code += form.run) {
            const byte_sequence bytes = is_scalar_value(code) ? form.bytes(code) : byte_sequence{};
            if (bytes.length == 0) continue;
            table.accept(bytes, form.run);
            left[bytes.length] += form.run;
        }
        const auto put_code = [&](char32_t code) {
            const byte_sequence bytes = form.bytes(code);
            if (bytes.length == 0) return;
            put(table, bytes, entry_for({&code, 1}));
            --left[bytes.length];
        };
        if (!to_.encode(0)) put_code(0);
        to_.each_code(put_code);
        for (int length = 1; length <= 4; ++length)
            if (left[static_cast<std::size_t>(length)] > 0) extent_.note(length, substitute_);
    }

    static std::string lengths(int least, int most, bool units) {
        // Equal lengths of 2 or 4 choose the routines for units in the order of the host.
        if (least == most && least % 2 == 0 && !units) least = 1;
        return fmt::format("{} {}", least, most);
    }
    static std::string sequence(const byte_sequence &bytes) {
        std::string text = fmt::format("{}", bytes.length);
        for (int i = 0; i < bytes.length; ++i) text += fmt::format("{:02x}", bytes[i]);
        return text;
    }
    std::string parameters() const {
        return fmt::format(
            "{} {}\n{}{}00\n{} 0 0 {} 0\n{}\n", from_.has_shifts() ? 1 : 0,
            to_.has_shifts() ? 1 : 0, sequence(to_.to_shifted), sequence(to_.to_initial),
            lengths(std::min(to_.min_length(), extent_.longest_target()), extent_.longest_target(),
                    to_.has_units()),
            lengths(extent_.shortest_source(), extent_.longest_source(), from_.has_units()),
            extent_.expansion());
    }

    const conversion_set &from_, &to_;
    extent extent_;
    bool turned_;
    conversion_entry substitute_;
    std::size_t substituted_ = 0;
};

} // namespace

conversion_object write_conversion(const conversion_side &from, const conversion_side &to) {
    conversion_body body(*from.set, *to.set);
    conversion_object made{body.write(), body.substituted()};
    const object_header header{
        "codeset_conversion_object",
        conversion_object_version,
        {"FROM=" + from.set->name, fmt::format("FROM_NUMBER={}", from.number),
         "FROM_SOURCE=" + from.set->source, "TO=" + to.set->name,
         fmt::format("TO_NUMBER={}", to.number), "TO_SOURCE=" + to.set->source}};
    made.text = with_header(header, made.text);
    return made;
}

std::string conversion_file_name(std::uint16_t from, std::uint16_t to) {
    return fmt::format("{:04x}{:04x}.cvo", from, to);
}

} // namespace velc

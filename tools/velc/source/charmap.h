#pragma once

#include <compare>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "velc/source/code_points.h"
#include "velc/source/diagnostics.h"

namespace velc {

// The bytes of one character, most significant first: the two bytes A4 62 are value 0xA462.
struct byte_sequence {
    std::uint32_t value = 0;
    std::uint8_t length = 0; // 1 to 4

    std::uint8_t operator[](int i) const {
        return static_cast<std::uint8_t>(value >> (8 * (length - 1 - i)));
    }
    std::string text() const;
    bool operator==(const byte_sequence &) const = default;
};

// Order of the bytes themselves, as memcmp would have it; a prefix stands before what it begins.
std::strong_ordering operator<=>(const byte_sequence &a, const byte_sequence &b);

struct charmap_entry {
    char32_t code = 0;
    byte_sequence bytes;
    bool reversible = true; // false: bytes may be read as this character but are never written
};

// Bytes that stand for several code points at once (TSCII has a few).
struct charmap_sequence {
    std::u32string codes;
    byte_sequence bytes;
};

struct charmap_alias {
    std::string name; // a further spelling of the code set's name
    std::uint32_t line;
};

// Symbolic names other than <Uxxxx> (mnemonic charmaps), in order of the file.
struct charmap_name {
    std::string name;
    char32_t code = 0;
};

struct width_run {
    code_range range;
    int width = 1;
};

// A code set. Immutable once made; safe to share between threads.
class charmap {
public:
    // What a reader collects. Duplicates, order and prefixes are settled by the constructor.
    struct parts {
        std::string name, file;
        std::vector<charmap_alias> aliases;
        std::vector<charmap_entry> entries; // in order of the file
        std::vector<std::uint32_t> lines;   // line of each entry
        std::vector<charmap_sequence> sequences;
        std::vector<charmap_name> names;
        struct width_rule {
            char32_t first, last;
            int width;
            std::uint32_t line;
        };
        std::vector<width_rule> widths; // the last one that covers a character prevails
        int width_default = 1;
        warning_list warnings;
    };
    explicit charmap(parts from);

    const std::string &name() const { return name_; }
    const std::string &file() const { return file_; }
    const std::vector<charmap_alias> &aliases() const { return aliases_; }
    const warning_list &warnings() const { return warnings_; }
    int min_length() const { return min_length_; }
    int max_length() const { return max_length_; }

    // How a character is written; null when the code set lacks it.
    const charmap_entry *find(char32_t code) const;
    // What the bytes mean; null when they are no character. Not for the added scalars of UTF-8.
    const charmap_entry *find(byte_sequence bytes) const;
    bool has(char32_t code) const { return encode(code).has_value(); }
    bool has_all(std::u32string_view text) const;

    // find() in values; for UTF-8 with every scalar value these know them all.
    std::optional<byte_sequence> encode(char32_t code) const;
    std::optional<char32_t> decode(byte_sequence bytes) const;
    // The bytes of a whole text; nothing when a character is missing.
    std::optional<std::string> encode_text(std::u32string_view text) const;

    // All characters, rising by bytes. One entry for each byte sequence; a code point may have
    // several, of which exactly one is reversible.
    std::span<const charmap_entry> by_bytes() const { return entries_; }
    // All code points that can be written, rising; indexes into by_bytes().
    std::span<const std::uint32_t> by_code() const { return by_code_; }
    const std::vector<charmap_sequence> &sequences() const { return sequences_; }
    // Characters that are left out because their first byte is a character of its own.
    const std::vector<charmap_entry> &dropped() const { return dropped_; }
    const std::vector<charmap_name> &names() const { return names_; }

    // Columns of a character: the default unless the WIDTH section says otherwise.
    int width(char32_t code) const;
    // Characters of the charmap whose width is not the default, rising, runs of equal width joined.
    const std::vector<width_run> &widths() const { return widths_; }
    int default_width() const { return width_default_; } // 1 in practice

    // True for UTF-8, which holds all 1 112 064 scalar values and not only those that are listed.
    bool every_scalar_value() const { return every_scalar_; }

private:
    struct byte_range {
        byte_sequence first, last;
        int width;
    };
    std::vector<byte_range> width_ranges(const parts &from,
                                         const std::vector<std::uint32_t> &order);
    void keep_first_of_each(parts &from, std::vector<std::uint32_t> order);
    void drop_prefixed(parts &from);
    void index_codes();
    void resolve_widths(const std::vector<byte_range> &ranges);

    std::string name_, file_;
    std::vector<charmap_alias> aliases_;
    std::vector<charmap_entry> entries_;
    std::vector<std::uint32_t> by_code_;
    std::vector<std::uint32_t> page_;  // two-level index: code >> 8 -> page of 256 slots
    std::vector<std::uint32_t> slots_; // slot: index into entries_, plus one
    std::vector<charmap_sequence> sequences_;
    std::vector<charmap_name> names_;
    std::vector<width_run> widths_;
    warning_list warnings_;
    int min_length_ = 0, max_length_ = 0, width_default_ = 1;
    bool every_scalar_ = false;
    std::vector<charmap_entry> dropped_;
};

// The UTF-8 form of a scalar value.
byte_sequence utf8_bytes(char32_t code);

// Throw source_error. The first reads plain and gzip files, the second is told the path for its
// messages and for files that do not name their code set.
charmap read_charmap(const std::string &path);
charmap parse_charmap(const std::string &path, std::string_view text);

} // namespace velc

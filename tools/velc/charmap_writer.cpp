// The body is one line a character or range:
//
//   s <code point> <name> <length> <bytes>
//   r <code point> u0000000 <first index> <count> <length> <bytes>
//
// The code point is that of the (first) character, in decimal. A character may have several names:
// of equal bytes the last line is the one whose name is written, of equal names the last line is
// the one that is read.
#include "velc/charmap_writer.h"

#include <algorithm>

#include <fmt/format.h>

#include "velc/object_text.h"
#include "velc/portable_symbols.h"
#include "velc/tool_error.h"

namespace velc {

namespace {

constexpr int charmap_object_version = 3;
// Code sets with more characters get ranges: a line for each would cost megabytes.
constexpr std::size_t single_limit = 65536;
// Names of ranges are decimal: <u0000233> is U+00E9. The digits of the key are all zero.
constexpr const char *range_name = "u0000000";
constexpr std::size_t longest_name = 127;

std::string code_name(char32_t code) {
    std::string name = code_point_name(code);
    return name.substr(1, name.size() - 2);
}

class charmap_text {
public:
    explicit charmap_text(const charmap &from) : from_(from) {}

    std::string write() {
        text_ = "### CHARMAP\n";
        const bool large = from_.every_scalar_value() || from_.by_bytes().size() > single_limit;
        if (large)
            ranges();
        else
            singles();
        sequences();
        further_names();
        portable_names(large);
        return std::move(text_);
    }

private:
    void bytes(const byte_sequence &of) {
        text_ += fmt::format(" {}", of.length);
        for (int i = 0; i < of.length; ++i) text_ += fmt::format(" {:02x}", of[i]);
        text_ += '\n';
    }
    void single(char32_t code, std::string_view name, const byte_sequence &of) {
        if (name.size() > longest_name || name.find_first_of(" \t>") != name.npos) return;
        text_ += fmt::format("s {} {}", static_cast<std::uint32_t>(code), name);
        bytes(of);
    }

    // Those that are never written come first, so that the name leads to the other bytes.
    void singles() {
        for (bool reversible : {false, true})
            for (const charmap_entry &entry : from_.by_bytes())
                if (entry.reversible == reversible)
                    single(entry.code, code_name(entry.code), entry.bytes);
    }

    // Runs of characters whose code points and whose last bytes both go up by one.
    void ranges() {
        if (from_.every_scalar_value()) {
            for (char32_t code = 0; code <= last_code_point; ++code)
                if (is_scalar_value(code)) extend(code, utf8_bytes(code));
        } else {
            for (const charmap_entry &entry : from_.by_bytes()) extend(entry.code, entry.bytes);
        }
        end_range();
    }
    void extend(char32_t code, const byte_sequence &next) {
        const bool goes_on = count_ > 0 && code == first_code_ + count_ &&
                             next.length == first_.length && next.value == first_.value + count_ &&
                             next.value >> 8 == first_.value >> 8;
        if (!goes_on) {
            end_range();
            first_code_ = code;
            first_ = next;
        }
        ++count_;
    }
    void end_range() {
        if (count_ > 0) {
            const auto code = static_cast<std::uint32_t>(first_code_);
            text_ += fmt::format("r {} {} {} {}", code, range_name, code, count_);
            bytes(first_);
        }
        count_ = 0;
    }

    // Bytes that stand for several code points are named after all of them.
    void sequences() {
        for (const charmap_sequence &sequence : from_.sequences()) {
            std::string name;
            for (char32_t code : sequence.codes) name += code_name(code);
            single(sequence.codes.front(), name, sequence.bytes);
        }
    }

    void further_names() {
        for (const charmap_name &one : from_.names())
            if (auto encoded = from_.encode(one.code)) single(one.code, one.name, *encoded);
    }

    // Last, because <A> and <space> are what people expect to read. Where ranges stand for the
    // characters, the ASCII ones have both kinds of names.
    void portable_names(bool large) {
        for (char32_t code = 0; code < 0x80; ++code) {
            const auto encoded = from_.encode(code);
            if (!encoded) continue;
            if (large) single(code, code_name(code), *encoded);
            for (const std::string_view name : names_of_portable_character(code))
                single(code, name, *encoded);
        }
    }

    const charmap &from_;
    std::string text_;
    char32_t first_code_ = 0;
    byte_sequence first_;
    std::uint32_t count_ = 0;
};

} // namespace

std::string write_charmap(const charmap &codeset, std::string_view name, std::uint16_t number) {
    if (codeset.by_bytes().empty())
        throw tool_error("{}: found no characters, expected some", codeset.file());
    object_header header{"charmap_object", charmap_object_version, {}};
    header.lines = {fmt::format("CODESET={}", name), fmt::format("CODESET_NUMBER={}", number),
                    fmt::format("CHARMAP={}", codeset.name())};
    return with_header(header, charmap_text(codeset).write());
}

} // namespace velc

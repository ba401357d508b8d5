#include "vel/symbols_text.h"

#include <algorithm>

#include <fmt/format.h>

#include "vel/display.h"
#include "vel/failure.h"

namespace vel_tool {
namespace {

constexpr size_t most_characters = 512; // named in one call
constexpr size_t longest_item = 259;    // 127 characters with a \ each, brackets, terminator
constexpr size_t longest_character = 8;

size_t shortest_of(vel_charmap *charmap) {
    return static_cast<size_t>(std::max(vel_mb_cm_min(charmap), 1));
}

std::string place(const symbols_source &source, uint64_t offset) {
    return fmt::format("{}{}byte {}", source.file, source.file.empty() ? "" : ": ", offset);
}

// Below 1 when no whole character is in front.
int32_t character_bytes(vel_charmap *charmap, std::string_view text) {
    return vel_cm_mblen(charmap, text.data(), static_cast<int32_t>(text.size()));
}

// The end of an item that begins with '<', behind its '>'; npos when it has none.
size_t item_end(std::string_view text) {
    for (size_t at = 1; at < text.size(); ++at) {
        if (text[at] == '\\')
            ++at;
        else if (text[at] == '>')
            return at + 1;
    }
    return std::string_view::npos;
}

} // namespace

std::string newline_of(vel_charmap *charmap) {
    for (const char *name : {"<newline>", "<LF>", "<U000A>"}) {
        char bytes[16];
        int32_t size = vel_symstombs(charmap, bytes, sizeof bytes, &name);
        if (size > 0) return {bytes, static_cast<size_t>(size) - shortest_of(charmap)};
    }
    return "";
}

name_writer::name_writer(const symbols_source &source, bool all)
    : source_(source), all_(all), newline_(newline_of(source.charmap)) {}

size_t name_writer::take(std::string_view text, bool at_end) {
    size_t done = 0;
    while (done < text.size()) {
        std::string_view rest = text.substr(done);
        size_t bytes = line_bytes(rest);
        if (bytes == 0) {
            bool is_cut_off = error_of(source_.charmap) == VEL_EINVAL;
            if (is_cut_off && !at_end) break;
            refuse(rest, is_cut_off);
        }
        all_ ? write_list(rest.substr(0, bytes)) : write_names(rest.substr(0, bytes));
        done += bytes;
    }
    if (at_end && in_line_) source_.out.write("\n");
    return done;
}

// Whole characters up to the end of the line, not too many of them.
size_t name_writer::line_bytes(std::string_view text) const {
    size_t size = 0;
    for (size_t n = 0; n < most_characters && size < text.size(); ++n) {
        int32_t length = character_bytes(source_.charmap, text.substr(size));
        if (length < 1) break;
        std::string_view one = text.substr(size, static_cast<size_t>(length));
        size += one.size();
        if (one == newline_) break;
    }
    return size;
}

void name_writer::write_names(std::string_view characters) {
    static char items[most_characters * longest_item];
    const char *position = characters.data();
    int32_t size = vel_mbstosyms(source_.charmap, items, sizeof items, &position,
                                 static_cast<int32_t>(characters.size()));
    if (size < 0) {
        auto good = static_cast<size_t>(position - characters.data());
        if (good > 0) write_names(characters.substr(0, good));
        refuse(characters.substr(good), false);
    }
    source_.out.write({items, static_cast<size_t>(size) - 1});
    offset_ += characters.size();
    in_line_ = newline_.empty() || !characters.ends_with(newline_);
    if (!in_line_) source_.out.write("\n");
}

void name_writer::write_list(std::string_view characters) {
    while (!characters.empty()) {
        auto length = static_cast<size_t>(character_bytes(source_.charmap, characters));
        std::string line = hex_bytes(characters.substr(0, length)) + '\t';
        character_names all = names_of(source_.charmap, characters.substr(0, length));
        if (all.names.empty()) refuse(characters, false);
        for (const std::string &name : all.names) {
            line += (line.back() == '\t' ? "" : " ") + name;
        }
        source_.out.write(line + '\n');
        characters.remove_prefix(length);
        offset_ += length;
    }
}

void name_writer::refuse(std::string_view rest, bool is_cut_off) const {
    int32_t length = character_bytes(source_.charmap, rest);
    std::string where = place(source_, offset_);
    if (length > 0) {
        throw failure(fmt::format("{}: {} has no name in the charmap of {}", where,
                                  hex_bytes(rest.substr(0, static_cast<size_t>(length))),
                                  source_.codeset));
    }
    if (is_cut_off) {
        throw failure(fmt::format("{}: {} begins a character of {} that the end of the text cuts "
                                  "off",
                                  where, hex_bytes(rest), source_.codeset));
    }
    size_t bad = 1;
    while (bad < std::min(rest.size(), longest_character) &&
           character_bytes(source_.charmap, rest.substr(0, bad)) < 1 &&
           error_of(source_.charmap) == VEL_EINVAL) {
        ++bad;
    }
    throw failure(fmt::format("{}: {} is no character of {}", where, hex_bytes(rest.substr(0, bad)),
                              source_.codeset));
}

name_reader::name_reader(const symbols_source &source)
    : source_(source), terminator_bytes_(shortest_of(source.charmap)) {}

size_t name_reader::take(std::string_view text, bool at_end) {
    constexpr std::string_view between = " \t\r\n";
    size_t done = 0;
    while (done < text.size()) {
        std::string_view rest = text.substr(done);
        size_t bytes = std::min(rest.find_first_not_of(between), rest.size());
        if (bytes == 0) {
            if (rest[0] != '<') refuse(fmt::format("'{}' stands where '<' should", rest[0]));
            bytes = item_end(rest);
            if (bytes > longest_item) {
                if (!at_end && rest.size() < longest_item) break;
                refuse(fmt::format("'{}' has no '>'", rest.substr(0, 20)));
            }
            write_character(std::string(rest.substr(0, bytes)));
        }
        done += bytes;
        offset_ += bytes;
    }
    return done;
}

void name_reader::write_character(const std::string &item) {
    char bytes[longest_character * 2];
    const char *position = item.c_str();
    int32_t size = vel_symstombs(source_.charmap, bytes, sizeof bytes, &position);
    if (size < 0 || *position) {
        refuse(fmt::format("'{}' is no name in the charmap of {}", item, source_.codeset));
    }
    source_.out.write({bytes, static_cast<size_t>(size) - terminator_bytes_});
}

void name_reader::refuse(const std::string &what) const {
    throw failure(fmt::format("{}: {}", place(source_, offset_), what));
}

} // namespace vel_tool

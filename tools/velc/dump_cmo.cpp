#include <algorithm>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "velc/dump.h"

namespace velc {

namespace {

std::string row(std::string_view name, std::string_view value) {
    return fmt::format("  {:<20} {}\n", name, value);
}

std::string hex_text(std::string_view bytes) {
    std::string text;
    for (char c : bytes)
        text += fmt::format("{}{:02x}", text.empty() ? "" : " ", static_cast<unsigned char>(c));
    return text.empty() ? "none" : text;
}

// What the flag byte of a conversion entry says.
std::string entry_text(const unsigned char *value) {
    std::string text = fmt::format("{:02x}", value[0]);
    for (int i = 1; i <= (value[0] & 7); ++i) text += fmt::format(" {:02x}", value[i]);
    if (!(value[0] >> 3)) return text + " illegal";
    if (value[0] & 0x80) text += " toggles";
    if (value[0] & 0x40) text += " shifted";
    if (value[0] & 0x20) text += " substitute";
    if (value[0] & 0x08) text += " terminator";
    return text;
}

void append_entries(std::string &out, const vel::vel_trie &table, const conversion_decoder *source,
                    bool shifted) {
    for_each_character(table, [&](const byte_sequence &bytes, const unsigned char *value) {
        out += fmt::format("  {:<12} {:<10} {}\n", hex_bytes(bytes),
                           source ? source->text(bytes, shifted) : "", entry_text(value));
    });
}

} // namespace

std::string dump_cmo(const cmo_file &file, bool tables) {
    const auto ranges = std::ranges::count_if(file.rows, &cmo_row::range);
    std::string out = dump_head(file.head) + "\ncharacters\n";
    out += row("character table", table_summary(*file.characters));
    out +=
        row("single names", std::to_string(static_cast<std::ptrdiff_t>(file.rows.size()) - ranges));
    out += row("ranges", std::to_string(ranges));
    if (!tables) return out;
    for (const cmo_row &one : file.rows)
        out += fmt::format("  {:<12} U+{:04X} <{}>{}\n", hex_bytes(one.bytes), one.code, one.name,
                           one.range ? fmt::format(" {} from {}", one.count, one.first_index) : "");
    return out;
}

std::string dump_cvo(const cvo_file &file, const conversion_decoder *source, bool tables) {
    std::string out = dump_head(file.head) + "\nparameters\n";
    out +=
        row("shift states", fmt::format("source {}, target {}", file.source_shifted ? "yes" : "no",
                                        file.target_shifted ? "yes" : "no"));
    out += row("to shifted state", hex_text(file.sequences[0]));
    out += row("to initial state", hex_text(file.sequences[1]));
    out += row("source bytes", fmt::format("{} to {}", file.source_min, file.source_max));
    out += row("target bytes", fmt::format("{} to {}", file.target_min, file.target_max));
    out += row("byte map", file.byte_map_given ? "not wanted" : "made when loaded");
    out += row("expansion", fmt::format("{}", file.expansion));
    out += row("default entry", entry_text(file.table->default_value));
    out += row("table", table_summary(*file.table));
    if (file.shift_table) out += row("shifted table", table_summary(*file.shift_table));
    if (!tables) return out;
    out += "\nsource characters, their code points, flags and target bytes\n";
    append_entries(out, *file.table, source, false);
    if (file.shift_table) {
        out += "\nshifted state\n";
        append_entries(out, *file.shift_table, source, true);
    }
    return out;
}

} // namespace velc

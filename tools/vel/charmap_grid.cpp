#include "vel/charmap_grid.h"

#include <algorithm>

#include <fmt/format.h>

#include "vel/display.h"

namespace vel_tool {
namespace {

constexpr int cell_columns = 3;
constexpr char none_mark[] = "···";
constexpr char lead_mark[] = "»»»";
constexpr char unseen_mark[] = "□";

vel_wchar packed(std::string_view bytes) {
    vel_wchar value = 0;
    for (char c : bytes) value = value << 8 | static_cast<unsigned char>(c);
    return value;
}

} // namespace

cell grid_printer::glyph(const chart_cell &one) {
    const std::u32string &codes = one.what.code_points;
    if (codes.size() == 1) {
        if (const char *text = abbreviation_of(codes[0])) {
            return cell(look_.in(paint::dim, std::string(text).substr(0, cell_columns)),
                        std::min(cell::columns(text), cell_columns));
        }
    }
    std::string first = utf8_text(codes.substr(0, 1));
    if (utf8_.character(first.empty() ? "\xFF" : first) < 1) { // not assigned, or unknown
        any_unseen_ = true;
        return cell(look_.in(paint::dim, unseen_mark), 1);
    }
    cell result = printable_character(utf8_, first, packed(first));
    if (result.text.starts_with("<U+")) {
        any_unseen_ = true;
        return cell(look_.in(paint::dim, unseen_mark), 1);
    }
    if (result.text == "\\\\") return "\\";
    result.text += utf8_text(codes.substr(1));
    return result;
}

std::string grid_printer::shown(const chart_cell &one) {
    if (one.kind == chart_cell::none) {
        any_none_ = true;
        return look_.in(paint::dim, none_mark);
    }
    if (one.kind == chart_cell::lead) {
        any_lead_ = true;
        return look_.in(paint::good, lead_mark);
    }
    cell content = glyph(one);
    int free = std::max(cell_columns - content.width, 0);
    return fmt::format("{:{}}{}{:{}}", "", free / 2, content.text, "", free - free / 2);
}

void grid_printer::print(const chart_grid &grid) {
    std::string lead = hex_bytes(grid.lead);
    if (!lead.empty()) lead += ' ';
    std::string head = fmt::format("{:{}}", "", lead.size() + 2);
    for (int column = 0; column < 16; ++column) head += fmt::format("  _{:X}", column);
    out_.write(look_.in(paint::title, head) + "\n");
    for (size_t row = 0; row < 16; ++row) {
        if (!lead.empty() && !grid.has_row(row)) continue;
        std::string line = look_.in(paint::title, fmt::format("{}{:X}_", lead, row));
        for (size_t column = 0; column < 16; ++column) {
            line += ' ' + shown(grid.cells[row * 16 + column]);
        }
        if (!look_.colour) line.erase(line.find_last_not_of(' ') + 1);
        out_.write(line + "\n");
    }
}

void grid_printer::print_legend() {
    struct {
        bool is_needed;
        const char *mark, *meaning;
    } marks[] = {
        {any_none_, none_mark, "no character"},
        {any_lead_, lead_mark, "longer characters begin so"},
        {any_unseen_, unseen_mark, "a character that cannot be shown"},
    };
    std::string line;
    for (const auto &one : marks) {
        if (one.is_needed)
            line += fmt::format("{}{} {}", line.empty() ? "" : "   ", one.mark, one.meaning);
    }
    if (!line.empty()) out_.write("\n" + look_.in(paint::dim, line) + "\n");
}

} // namespace vel_tool

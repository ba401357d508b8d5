#include "vel/style.h"

#include <algorithm>
#include <cstdlib>
#include <strings.h>
#include <unistd.h>

#include <fmt/format.h>

namespace vel_tool {
namespace {

constexpr size_t name_column = 20;

bool is_set(const char *name) {
    const char *value = getenv(name);
    return value && *value;
}

bool terminal_is_utf8() {
    for (const char *name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        if (!is_set(name)) continue;
        std::string value = getenv(name);
        std::transform(value.begin(), value.end(), value.begin(),
                       [](char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; });
        return value.find("utf-8") != std::string::npos || value.find("utf8") != std::string::npos;
    }
    return false;
}

bool colour_wanted(bool terminal, std::string_view choice) {
    if (choice != "auto") return choice == "always";
    const char *kind = getenv("TERM");
    return terminal && !is_set("NO_COLOR") && !(kind && std::string_view(kind) == "dumb");
}

// The strokes of a frame: left end, line, crossing, right end.
struct strokes {
    const char *top[4];
    const char *middle[4];
    const char *bottom[4];
    const char *bar;
};

constexpr strokes drawn = {{"┌", "─", "┬", "┐"}, {"├", "─", "┼", "┤"}, {"└", "─", "┴", "┘"}, "│"};
constexpr strokes typed = {{"+", "-", "+", "+"}, {"+", "-", "+", "+"}, {"+", "-", "+", "+"}, "|"};

std::string rule(const char *const (&stroke)[4], const std::vector<int> &widths) {
    std::string line = stroke[0];
    for (size_t i = 0; i < widths.size(); ++i) {
        if (i > 0) line += stroke[2];
        for (int n = 0; n < widths[i] + 2; ++n) line += stroke[1];
    }
    return line + stroke[3] + "\n";
}

std::string blanks(int count) {
    return std::string(static_cast<size_t>(std::max(count, 0)), ' ');
}

std::string padded(const cell &content, int width, bool right) {
    std::string space = blanks(width - content.width);
    return right ? space + content.text : content.text + space;
}

} // namespace

std::string style::in(paint how, std::string_view text) const {
    constexpr const char *codes[] = {"1", "32", "1;31", "2"};
    if (!colour) return std::string(text);
    return fmt::format("\x1b[{}m{}\x1b[0m", codes[static_cast<size_t>(how)], text);
}

style style_for(int descriptor, std::string_view choice) {
    bool terminal = isatty(descriptor);
    return {colour_wanted(terminal, choice), terminal, terminal && terminal_is_utf8()};
}

int cell::columns(std::string_view text) {
    return static_cast<int>(
        std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

std::vector<int> table::widths() const {
    std::vector<int> result;
    for (const column &c : columns_) result.push_back(cell::columns(c.title));
    for (const auto &row : rows_) {
        for (size_t i = 0; i < row.size(); ++i) result[i] = std::max(result[i], row[i].width);
    }
    return result;
}

std::string table::plain_line(const std::vector<cell> &row) const {
    std::string line;
    for (const cell &content : row) {
        if (&content != &row.front()) line += '\t';
        line += content.text;
    }
    return line + '\n';
}

void table::print(output &out, const style &look) const {
    if (!look.frames) {
        for (const auto &row : rows_) out.write(plain_line(row));
        return;
    }
    const strokes &pen = look.box_lines ? drawn : typed;
    std::vector<int> wide = widths();
    out.write(rule(pen.top, wide));
    std::string titles = pen.bar;
    for (size_t i = 0; i < columns_.size(); ++i) {
        cell title(columns_[i].title);
        title.text = look.in(paint::title, title.text);
        titles += fmt::format(" {} {}", padded(title, wide[i], columns_[i].right_aligned), pen.bar);
    }
    out.write(titles + "\n");
    out.write(rule(pen.middle, wide));
    for (const auto &row : rows_) {
        std::string line = pen.bar;
        for (size_t i = 0; i < row.size(); ++i) {
            line +=
                fmt::format(" {} {}", padded(row[i], wide[i], columns_[i].right_aligned), pen.bar);
        }
        out.write(line + "\n");
    }
    out.write(rule(pen.bottom, wide));
}

void listing::section(std::string name) {
    if (look_.frames) {
        out_.write(
            fmt::format("{}{}\n", section_.empty() ? "" : "\n", look_.in(paint::title, name)));
    }
    section_ = std::move(name);
}

void listing::item(std::string_view name, std::string_view value) {
    if (!look_.frames) return out_.write(fmt::format("{}.{}\t{}\n", section_, name, value));
    std::string label = fmt::format("{:<{}}", name, name_column);
    out_.write(fmt::format("  {} {}\n", look_.in(paint::dim, label), value));
}

} // namespace vel_tool

// How output looks: colours, frames, or plain columns for other programs.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "vel/output.h"

namespace vel_tool {

enum class paint { title, good, bad, dim };

struct style {
    bool colour = false;
    bool frames = false;    // standard output is a terminal: aligned columns, titles
    bool box_lines = false; // and it shows UTF-8: lines drawn with box characters

    std::string in(paint how, std::string_view text) const;
};

// `choice` is "auto", "always" or "never".
style style_for(int descriptor, std::string_view choice);

struct cell {
    cell(std::string content) : text(std::move(content)), width(columns(text)) {}
    cell(const char *content) : cell(std::string(content)) {}
    cell(std::string content, int content_width) : text(std::move(content)), width(content_width) {}

    std::string text;
    int width; // columns on a terminal

    // One column for every character of UTF-8 text.
    static int columns(std::string_view text);
};

struct column {
    const char *title;
    bool right_aligned = false;
};

// Rows of cells. On a terminal they stand in a frame under their titles; elsewhere they are lines
// of cells separated by TAB, without titles.
class table {
public:
    explicit table(std::vector<column> columns) : columns_(std::move(columns)) {}

    void add(std::vector<cell> row) { rows_.push_back(std::move(row)); }
    bool empty() const { return rows_.empty(); }
    void print(output &out, const style &look) const;

private:
    std::string plain_line(const std::vector<cell> &row) const;
    std::vector<int> widths() const;

    std::vector<column> columns_;
    std::vector<std::vector<cell>> rows_;
};

// Named values in sections. On a terminal each section has a title; elsewhere every line is
// "section.name", TAB, value.
class listing {
public:
    listing(output &out, const style &look) : out_(out), look_(look) {}

    void section(std::string name);
    void item(std::string_view name, std::string_view value);

private:
    output &out_;
    const style &look_;
    std::string section_;
};

} // namespace vel_tool

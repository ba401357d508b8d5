// Grids of characters for a terminal.
#pragma once

#include "vel/charmap_chart.h"
#include "vel/code_set.h"
#include "vel/output.h"
#include "vel/style.h"

namespace vel_tool {

class grid_printer {
public:
    // `utf8` knows the width of characters.
    grid_printer(output &out, const style &look, const code_set &utf8)
        : out_(out), look_(look), utf8_(utf8) {}

    void print(const chart_grid &grid);
    // What the marks in the grids so far mean.
    void print_legend();

private:
    std::string shown(const chart_cell &one);
    cell glyph(const chart_cell &one);

    output &out_;
    const style &look_;
    const code_set &utf8_;
    bool any_none_ = false, any_lead_ = false, any_unseen_ = false;
};

} // namespace vel_tool

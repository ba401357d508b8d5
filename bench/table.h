// The report as people or programs read it.
#pragma once

#include "row.h"

#include <map>
#include <string>
#include <vector>

namespace bench {

enum class table_form { aligned, csv };

class table {
public:
    // `rows` are those that will be shown, `libraries` ours, the host's and the peers in order.
    table(table_form form, const std::vector<row> &rows, std::vector<std::string> libraries);

    void print_head() const;
    // `medians` as measured, by library, for passes of this much work.
    void print(const row &of, double work, const std::map<std::string, double> &medians) const;

private:
    void print_line(const std::vector<std::string> &cells) const;

    table_form form_;
    std::vector<std::string> libraries_;
    std::vector<int> widths_;
};

} // namespace bench

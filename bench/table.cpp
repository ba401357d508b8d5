#include "table.h"

#include <algorithm>
#include <cstdio>

namespace bench {
namespace {

std::string formatted(const char *format, double value) {
    char text[32];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

// Three significant digits or so.
std::string number(double value) {
    return formatted(value < 10 ? "%.2f" : value < 100 ? "%.1f" : "%.0f", value);
}

const char *name_of(unit shown) {
    constexpr const char *names[] = {"GB/s", "ns", "us", "MB"};
    return names[static_cast<int>(shown)];
}

std::string number_or_dash(double value, const char *unit = "") {
    return value > 0 ? number(value) + unit : "-";
}

// How many times better our value is; 0 when one is missing.
double ratio_of(unit shown, double ours, double peers) {
    if (ours <= 0 || peers <= 0) return 0;
    return shown == unit::gigabytes_per_second ? ours / peers : peers / ours;
}

std::string text_of(const aim &wanted) {
    if (wanted.what == aim::kind::none) return "-";
    std::string value = formatted("%g", wanted.value);
    return wanted.what == aim::kind::times_host ? value + "x" : "<= " + value;
}

std::string verdict_of(const aim &wanted, double ours, double host_ratio) {
    if (wanted.what == aim::kind::none || ours <= 0) return "-";
    bool is_ratio = wanted.what == aim::kind::times_host;
    if (is_ratio && host_ratio <= 0) return "-";
    return (is_ratio ? host_ratio >= wanted.value : ours <= wanted.value) ? "reached" : "missed";
}

std::string quoted(const std::string &cell) {
    return cell.find(',') == std::string::npos ? cell : '"' + cell + '"';
}

} // namespace

table::table(table_form form, const std::vector<row> &rows, std::vector<std::string> libraries)
    : form_(form), libraries_(std::move(libraries)) {
    std::size_t longest = 0;
    for (const row &of : rows) longest = std::max(longest, of.name.size());
    widths_ = {-static_cast<int>(longest), -4, 7, 7};
    for (std::size_t i = 1; i < libraries_.size(); ++i) widths_.push_back(10);
    widths_.insert(widths_.end(), {8, -7});
}

void table::print_line(const std::vector<std::string> &cells) const {
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (form_ == table_form::csv)
            std::printf("%s%s", i ? "," : "", quoted(cells[i]).c_str());
        else
            std::printf("%s%*s", i ? "  " : "", widths_[i], cells[i].c_str());
    }
    std::printf("\n");
    std::fflush(stdout);
}

void table::print_head() const {
    std::vector<std::string> cells = {"row", "unit", libraries_[0], libraries_[1]};
    for (std::size_t i = 1; i < libraries_.size(); ++i) cells.push_back("/" + libraries_[i]);
    cells.insert(cells.end(), {"aim", "verdict"});
    print_line(cells);
}

void table::print(const row &of, double work, const std::map<std::string, double> &medians) const {
    std::vector<double> values;
    for (const std::string &library : libraries_) {
        auto found = medians.find(library);
        bool is_there = found != medians.end();
        values.push_back(is_there ? shown_value(of.shown, work, found->second) : 0);
    }
    std::vector<std::string> cells = {of.name, name_of(of.shown), number_or_dash(values[0]),
                                      number_or_dash(values[1])};
    for (std::size_t i = 1; i < values.size(); ++i) {
        double ratio = ratio_of(of.shown, values[0], values[i]);
        cells.push_back(number_or_dash(ratio, form_ == table_form::aligned ? "x" : ""));
    }
    double host_ratio = ratio_of(of.shown, values[0], values[1]);
    cells.insert(cells.end(), {text_of(of.wanted), verdict_of(of.wanted, values[0], host_ratio)});
    print_line(cells);
}

} // namespace bench

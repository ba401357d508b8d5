#include "options.h"

#include <functional>
#include <map>
#include <stdexcept>

namespace bench {

const char *const usage =
    "usage: report [--data DIR] [--rows REGEX] [--quick] [--csv] [--rung RUNG] [--alone] [--list]\n"
    "\n"
    "Measures the library and its peers side by side and prints ratios: 3x means that the library\n"
    "is three times as fast as that peer, or takes a third of its memory.\n"
    "\n"
    "  --data DIR    installation directory of the data files (else CORVANEDIR)\n"
    "  --rows REGEX  only the rows whose name the expression is found in\n"
    "  --quick       fewer and shorter rounds\n"
    "  --csv         comma-separated values, ratios without the x\n"
    "  --alone       only the library itself, for profilers\n"
    "  --list        only the names of the rows\n"
    "  --rung RUNG   with the kernels of this rung: scalar, sse, avx2, avx512\n";

options parse(const std::vector<std::string> &words) {
    options read;
    const std::map<std::string, std::string *> valued = {
        {"--data", &read.data}, {"--rows", &read.rows}, {"--rung", &read.rung}};
    const std::map<std::string, std::function<void()>> plain = {
        {"--quick", [&] { read.is_quick = true; }},
        {"--csv", [&] { read.form = table_form::csv; }},
        {"--alone", [&] { read.is_alone = true; }},
        {"--list", [&] { read.is_list = true; }},
        {"--help", [&] { read.is_help = true; }}};
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (words[i] == "--fresh") {
            read.fresh.assign(words.begin() + static_cast<std::ptrdiff_t>(i) + 1, words.end());
            break;
        }
        if (auto found = plain.find(words[i]); found != plain.end()) {
            found->second();
        } else if (auto value = valued.find(words[i]); value != valued.end()) {
            if (++i == words.size()) throw std::invalid_argument(words[i - 1] + " needs a value");
            *value->second = words[i];
        } else {
            throw std::invalid_argument("unknown option " + words[i]);
        }
    }
    return read;
}

} // namespace bench

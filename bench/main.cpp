#include "host_locales.h"
#include "library.h"
#include "measure.h"
#include "options.h"
#include "row.h"
#include "rung.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <regex>

namespace bench {
namespace {

constexpr effort thorough = {11, 0.03, 31};
constexpr effort quick = {3, 0.01, 7};

std::vector<row> chosen_rows(const std::string &expression) {
    std::vector<row> rows;
    // Dates and conversions come behind the locales: what their rows have cached stays so.
    for (auto make : {text_rows, width_rows, collate_rows, number_rows, locale_rows, date_rows,
                      conversion_rows}) {
        for (row &more : make()) rows.push_back(std::move(more));
    }
    std::regex wanted(expression);
    std::erase_if(rows, [&](const row &of) { return !std::regex_search(of.name, wanted); });
    return rows;
}

std::vector<std::string> library_names() {
    std::vector<std::string> names;
    for (const library &who : libraries()) names.push_back(who.name);
    return names;
}

int report(const options &wanted) {
    std::vector<row> rows = chosen_rows(wanted.rows);
    if (wanted.is_list) {
        for (const row &of : rows) std::printf("%s\n", of.name.c_str());
        return 0;
    }
    set_effort(wanted.is_quick ? quick : thorough);
    table shown(wanted.form, rows, library_names());
    shown.print_head();
    for (const row &of : rows) {
        prepared_row ready = of.prepare();
        if (wanted.is_alone) {
            std::erase_if(ready.contenders,
                          [](const contender &one) { return one.library != ours().name; });
        }
        shown.print(of, ready.work, measure(ready.contenders));
    }
    return 0;
}

int run(char **arguments, const std::vector<std::string> &words) {
    options wanted = parse(words);
    if (wanted.is_help) {
        std::fputs(usage, stdout);
        return 0;
    }
    if (!wanted.data.empty()) setenv("CORVANEDIR", wanted.data.c_str(), 1);
    use_host_locale_folder();
    if (!wanted.fresh.empty()) {
        if (auto taken = nanoseconds_to_open_converter(wanted.fresh)) {
            std::printf("%.0f\n", *taken);
            return 0;
        }
        return answer_as_fresh_process(wanted.fresh);
    }
    if (!wanted.rung.empty()) use_rung(wanted.rung, arguments);
    return report(wanted);
}

} // namespace
} // namespace bench

int main(int count, char **arguments) {
    try {
        return bench::run(arguments, {arguments + 1, arguments + count});
    } catch (const std::exception &failure) {
        std::fprintf(stderr, "report: %s\n", failure.what());
        return 1;
    }
}

// vel charmap: a chart of a code set.
#include <algorithm>
#include <memory>

#include <fmt/format.h>

#include "vel/charmap_grid.h"
#include "vel/charmap_page.h"
#include "vel/display.h"
#include "vel/failure.h"
#include "vel/invocation.h"
#include "vel/locale_handle.h"

namespace vel_tool {
namespace {

struct charmap_options {
    std::string code_set;
    std::string lead;
    std::string page;
};

constexpr char all_leads[] = "all";
// Of characters with longer leads a page would become too large: they are asked for by --lead.
constexpr size_t most_lead_bytes_of_page = 2;

// "81-9F E0-FC"
std::string ranges_of(const std::vector<std::string> &leads) {
    std::string text;
    for (size_t i = 0; i < leads.size(); ++i) {
        if (leads[i].empty()) continue;
        size_t last = i;
        auto follows = [&](size_t next) {
            return leads[next].back() == static_cast<char>(leads[next - 1].back() + 1);
        };
        while (last + 1 < leads.size() && follows(last + 1)) ++last;
        text += (text.empty() ? "" : " ") + hex_bytes(leads[i]);
        if (last > i) text += "-" + hex_bytes(leads[last]);
        i = last;
    }
    return text;
}

std::string bytes_of_lead(const code_chart &chart, const std::string &text) {
    std::string bytes;
    bool is_hex = !text.empty() && text.size() % 2 == 0 &&
                  text.find_first_not_of("0123456789abcdefABCDEF") == text.npos;
    if (!is_hex) {
        throw failure(fmt::format("'{}' is no lead: give two hexadecimal digits a byte, as in 81 "
                                  "or 8FA2, or 'all'",
                                  text),
                      exit_usage);
    }
    for (size_t at = 0; at < text.size(); at += 2) {
        bytes += static_cast<char>(std::stoul(text.substr(at, 2), nullptr, 16));
    }
    if (chart.is_lead(bytes)) return bytes;
    std::string leads = ranges_of(chart.leads(1));
    throw failure(fmt::format("no longer character of {} begins with {}: {}", chart.title(),
                              hex_bytes(bytes),
                              leads.empty() ? "all have one byte" : "lead bytes are " + leads));
}

int write_page(const charmap_options &options, code_chart &chart) {
    std::vector<std::string> leads;
    if (options.lead.empty() || options.lead == all_leads) {
        leads = chart.leads(most_lead_bytes_of_page);
    } else {
        std::string lead = bytes_of_lead(chart, options.lead);
        leads = chart.leads(std::max(lead.size() + 1, most_lead_bytes_of_page));
        std::erase_if(leads, [&](const std::string &one) { return !one.starts_with(lead); });
    }
    replacement_file file(options.page);
    write_chart_page(file.stream(), chart, leads);
    file.commit();
    return exit_success;
}

int print_chart(invocation &run, const charmap_options &options, code_chart &chart) {
    locale_handle locale = load_locale("C.UTF-8");
    code_set utf8(locale.get());
    grid_printer printer(run.out, run.look, utf8);
    std::vector<std::string> leads;
    if (options.lead == all_leads)
        leads = chart.leads(chart.longest() - 1);
    else
        leads = {options.lead.empty() ? "" : bytes_of_lead(chart, options.lead)};
    for (const std::string &lead : leads) {
        if (lead != leads.front()) run.out.write("\n");
        printer.print(chart.grid(lead));
    }
    printer.print_legend();
    std::string longer = ranges_of(chart.leads(1));
    if (options.lead.empty() && !longer.empty()) {
        run.out.write(fmt::format("Longer characters begin with {}: see --lead.\n", longer));
    }
    return exit_success;
}

int show_charmap(invocation &run, const charmap_options &options) {
    code_chart chart(options.code_set);
    return options.page.empty() ? print_chart(run, options, chart) : write_page(options, chart);
}

} // namespace

void add_charmap_command(CLI::App &app, invocation &run) {
    CLI::App *command = app.add_subcommand("charmap", "draw the characters of a code set");
    auto options = std::make_shared<charmap_options>();
    command->add_option("CODESET", options->code_set, "the code set, by any of its names")
        ->type_name("")
        ->required();
    command
        ->add_option("--lead", options->lead,
                     "the characters of several bytes that begin with these, as\n"
                     "in 81 or 8FA2; 'all' for all of them")
        ->type_name("BYTES");
    command
        ->add_option("--html", options->page,
                     "write one HTML page with everything in it; it shows bytes, code\n"
                     "points and all names")
        ->type_name("FILE");
    command->footer(
        "The chart has a line for each high half of the last byte, a column for each low half. It\n"
        "is UTF-8, whatever the code set.\n\n"
        "A page holds characters with up to two bytes in front of the last one; of longer ones\n"
        "those that --lead names.");
    command->callback(
        [&run, options] { run.action = [&run, options] { return show_charmap(run, *options); }; });
}

} // namespace vel_tool

#include "vel/charmap_page.h"

#include <fmt/format.h>

#include "vel/charmap_page_parts.h"
#include "vel/installation.h"

namespace vel_tool {
namespace {

std::string escaped_html(std::string_view text) {
    std::string result;
    for (char c : text) {
        if (c == '<')
            result += "&lt;";
        else if (c == '&')
            result += "&amp;";
        else
            result += c;
    }
    return result;
}

// A string literal that may stand in a script of a page.
std::string literal(std::string_view text) {
    std::string result = "\"";
    for (char c : text) {
        auto byte = static_cast<unsigned char>(c);
        bool is_special = byte < 0x20 || byte > 0x7E || c == '"' || c == '\\' || c == '<';
        result += is_special ? fmt::format("\\u{:04x}", byte) : std::string(1, c);
    }
    return result + '"';
}

std::string hex_digits(std::string_view bytes) {
    std::string text;
    for (char c : bytes) text += fmt::format("{:02X}", static_cast<unsigned char>(c));
    return text;
}

std::string joined(const std::vector<std::string> &words) {
    std::string text;
    for (const std::string &word : words) text += (text.empty() ? "" : " ") + word;
    return text;
}

std::string cell_literal(size_t byte, const chart_cell &one) {
    if (one.kind == chart_cell::lead) return fmt::format("[{}]", byte);
    std::string codes;
    for (char32_t code : one.what.code_points) {
        codes += fmt::format("{}{}", codes.empty() ? "" : ",", static_cast<uint32_t>(code));
    }
    return fmt::format("[{},[{}],{}]", byte, codes, literal(joined(one.what.names)));
}

void write_grid(output &out, const chart_grid &grid) {
    std::string line = literal(hex_digits(grid.lead)) + ":[";
    for (size_t byte = 0; byte < grid.cells.size(); ++byte) {
        if (grid.cells[byte].kind == chart_cell::none) continue;
        if (line.back() != '[') line += ',';
        line += cell_literal(byte, grid.cells[byte]);
    }
    out.write(line + "],\n");
}

void write_data(output &out, code_chart &chart, const std::vector<std::string> &leads) {
    out.write("const chart = {\nabbreviations: {");
    for (const abbreviation &one : abbreviations()) {
        out.write(fmt::format("{}:{},", one.code_point, literal(one.text)));
    }
    out.write(fmt::format("}},\nstart: {},\nleads: [", literal(chart.title())));
    for (const std::string &lead : leads) out.write(literal(hex_digits(lead)) + ",");
    out.write("],\ngrids: {\n");
    for (const std::string &lead : leads) write_grid(out, chart.grid(lead));
    out.write("}};\n");
}

std::string summary(const code_chart &chart) {
    std::string bytes = chart.shortest() == chart.longest()
                            ? std::to_string(chart.longest())
                            : fmt::format("{} to {}", chart.shortest(), chart.longest());
    std::string text = fmt::format("Code set {}, {} byte{} a character.", chart.code_set().number,
                                   bytes, bytes == "1" ? "" : "s");
    std::string names;
    for (const codeset_name &entry : installed_registry().names) {
        if (entry.number != chart.code_set().number) continue;
        names += (names.empty() ? "" : ", ") + entry.name;
    }
    return names.empty() ? text : text + " Names: " + names + ".";
}

} // namespace

void write_chart_page(output &out, code_chart &chart, const std::vector<std::string> &leads) {
    std::string title = escaped_html(chart.title());
    out.write("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
              "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n");
    out.write(
        fmt::format("<title>{}</title>\n<style>{}</style>\n</head>\n<body>\n", title, page_style));
    out.write(fmt::format("<header>\n<h1>{}</h1>\n<p>{}</p>\n</header>\n", title,
                          escaped_html(summary(chart))));
    out.write("<nav id=\"leads\" aria-label=\"Lead bytes\"></nav>\n<main>\n<h2 id=\"path\"></h2>\n"
              "<div class=\"scroll\"><table id=\"grid\"></table></div>\n"
              "<noscript><p>The chart is drawn by a script in this page.</p></noscript>\n</main>\n"
              "<footer><span><i></i>character, with its code point</span>"
              "<span><i class=\"lead\"></i>longer characters begin so</span>"
              "<span><i class=\"none\"></i>no character</span></footer>\n"
              "<div id=\"tip\" role=\"tooltip\" hidden></div>\n<script>\n");
    write_data(out, chart, leads);
    out.write(page_script);
    out.write("</script>\n</body>\n</html>\n");
}

} // namespace vel_tool

#include "vel/charmap_chart.h"

#include <algorithm>

namespace vel_tool {
namespace {

constexpr abbreviation abbreviation_list[] = {
    {0x00, "NUL"},    {0x01, "SOH"},    {0x02, "STX"},   {0x03, "ETX"},    {0x04, "EOT"},
    {0x05, "ENQ"},    {0x06, "ACK"},    {0x07, "BEL"},   {0x08, "BS"},     {0x09, "HT"},
    {0x0A, "LF"},     {0x0B, "VT"},     {0x0C, "FF"},    {0x0D, "CR"},     {0x0E, "SO"},
    {0x0F, "SI"},     {0x10, "DLE"},    {0x11, "DC1"},   {0x12, "DC2"},    {0x13, "DC3"},
    {0x14, "DC4"},    {0x15, "NAK"},    {0x16, "SYN"},   {0x17, "ETB"},    {0x18, "CAN"},
    {0x19, "EM"},     {0x1A, "SUB"},    {0x1B, "ESC"},   {0x1C, "FS"},     {0x1D, "GS"},
    {0x1E, "RS"},     {0x1F, "US"},     {0x20, "SP"},    {0x7F, "DEL"},    {0x80, "PAD"},
    {0x81, "HOP"},    {0x82, "BPH"},    {0x83, "NBH"},   {0x84, "IND"},    {0x85, "NEL"},
    {0x86, "SSA"},    {0x87, "ESA"},    {0x88, "HTS"},   {0x89, "HTJ"},    {0x8A, "VTS"},
    {0x8B, "PLD"},    {0x8C, "PLU"},    {0x8D, "RI"},    {0x8E, "SS2"},    {0x8F, "SS3"},
    {0x90, "DCS"},    {0x91, "PU1"},    {0x92, "PU2"},   {0x93, "STS"},    {0x94, "CCH"},
    {0x95, "MW"},     {0x96, "SPA"},    {0x97, "EPA"},   {0x98, "SOS"},    {0x99, "SGC"},
    {0x9A, "SCI"},    {0x9B, "CSI"},    {0x9C, "ST"},    {0x9D, "OSC"},    {0x9E, "PM"},
    {0x9F, "APC"},    {0xA0, "NBSP"},   {0xAD, "SHY"},   {0x200B, "ZWSP"}, {0x200C, "ZWNJ"},
    {0x200D, "ZWJ"},  {0x200E, "LRM"},  {0x200F, "RLM"}, {0x2028, "LSEP"}, {0x2029, "PSEP"},
    {0x202F, "NNBS"}, {0x3000, "IDSP"}, {0xFEFF, "BOM"},
};

void append_utf8(std::string &text, uint32_t code) {
    constexpr struct {
        uint32_t end;
        unsigned char mark;
    } forms[] = {{0x80, 0}, {0x800, 0xC0}, {0x10000, 0xE0}, {0x110000, 0xF0}};
    int more = 0;
    while (more < 3 && code >= forms[more].end) ++more;
    text += static_cast<char>(forms[more].mark | code >> 6 * more);
    while (more-- > 0) text += static_cast<char>(0x80 | (code >> 6 * more & 0x3F));
}

} // namespace

std::span<const abbreviation> abbreviations() {
    return abbreviation_list;
}

const char *abbreviation_of(uint32_t code_point) {
    for (const abbreviation &one : abbreviation_list) {
        if (one.code_point == code_point) return one.text;
    }
    return nullptr;
}

std::string utf8_text(std::u32string_view code_points) {
    std::string text;
    for (char32_t code : code_points) append_utf8(text, code);
    return text;
}

bool chart_grid::has_row(size_t row) const {
    auto first = cells.begin() + static_cast<std::ptrdiff_t>(row * 16);
    return std::any_of(first, first + 16,
                       [](const chart_cell &one) { return one.kind != chart_cell::none; });
}

code_chart::code_chart(const std::string &name)
    : code_set_(find_code_set(name)), charmap_(load_charmap(name)) {}

std::string code_chart::title() const {
    std::string name = vel_cm_csname(charmap_.get());
    return name.empty() ? code_set_.name : name;
}

size_t code_chart::shortest() const {
    return static_cast<size_t>(vel_mb_cm_min(charmap_.get()));
}

size_t code_chart::longest() const {
    return static_cast<size_t>(vel_mb_cm_max(charmap_.get()));
}

int32_t code_chart::length_of(std::string_view bytes) const {
    return vel_cm_mblen(charmap_.get(), bytes.data(), static_cast<int32_t>(bytes.size()));
}

bool code_chart::is_lead(std::string_view bytes) const {
    return bytes.empty() || (length_of(bytes) < 1 && error_of(charmap_.get()) == VEL_EINVAL);
}

std::vector<std::string> code_chart::leads(size_t most) const {
    std::vector<std::string> found;
    add_leads("", most, found);
    return found;
}

void code_chart::add_leads(const std::string &lead, size_t most,
                           std::vector<std::string> &found) const {
    found.push_back(lead);
    if (lead.size() == most) return;
    for (int byte = 0; byte < 256; ++byte) {
        std::string longer = lead + static_cast<char>(byte);
        if (is_lead(longer)) add_leads(longer, most, found);
    }
}

chart_grid code_chart::grid(const std::string &lead) {
    chart_grid result;
    result.lead = lead;
    for (size_t byte = 0; byte < result.cells.size(); ++byte) {
        std::string bytes = lead + static_cast<char>(byte);
        if (length_of(bytes) == static_cast<int32_t>(bytes.size())) {
            result.cells[byte] = character(bytes);
        } else if (is_lead(bytes)) {
            result.cells[byte].kind = chart_cell::lead;
        }
    }
    return result;
}

chart_cell code_chart::character(std::string_view bytes) {
    chart_cell cell{chart_cell::character, names_of(charmap_.get(), bytes)};
    if (cell.what.code_points.empty()) cell.what.code_points = converted_to_utf8(bytes);
    return cell;
}

std::u32string code_chart::converted_to_utf8(std::string_view bytes) {
    if (!conversion_was_tried_ && !code_set_.is_utf8()) {
        conversion_handle cv = open_conversion(code_set_, utf8_code_set());
        if (cv) to_utf8_.emplace(std::move(cv));
    }
    conversion_was_tried_ = true;
    if (!to_utf8_) return {};
    to_utf8_->state = {};
    converted result = to_utf8_->convert(bytes);
    if (result.error != 0 || result.is_lacking) return {};
    std::u32string codes;
    for (char c : result.output) {
        auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80)
            codes += byte;
        else if (byte < 0xC0)
            codes.back() = codes.back() << 6 | (byte & 0x3F);
        else
            codes += byte < 0xE0 ? byte & 0x1F : byte < 0xF0 ? byte & 0xF : byte & 7;
    }
    return codes;
}

} // namespace vel_tool

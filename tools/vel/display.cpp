#include "vel/display.h"

#include <fmt/format.h>

namespace vel_tool {
namespace {

struct code_range {
    uint32_t first;
    uint32_t last;
};

// What has a meaning but no look of its own, or changes the look of what follows.
constexpr code_range invisible[] = {
    {0x00, 0x1F},     {0x7F, 0xA0},     {0xAD, 0xAD},      {0x61C, 0x61C},   {0x180E, 0x180E},
    {0x2000, 0x200F}, {0x2028, 0x202F}, {0x205F, 0x206F},  {0x3000, 0x3000}, {0xFE00, 0xFE0F},
    {0xFEFF, 0xFEFF}, {0xFFF0, 0xFFFB}, {0xE0000, 0xE0FFF}};

bool is_invisible(uint32_t code) {
    for (const code_range &range : invisible) {
        if (code >= range.first && code <= range.last) return true;
    }
    return false;
}

// The code point of a valid UTF-8 sequence.
uint32_t code_point(std::string_view bytes) {
    auto first = static_cast<unsigned char>(bytes[0]);
    if (bytes.size() == 1) return first;
    uint32_t code = first & (0x7Fu >> bytes.size());
    for (char c : bytes.substr(1)) code = code << 6 | (c & 0x3Fu);
    return code;
}

std::string escaped(std::string_view bytes) {
    std::string text;
    for (char c : bytes) text += fmt::format("\\x{:02X}", static_cast<unsigned char>(c));
    return text;
}

std::string shown(const code_set &codes, std::string_view character) {
    if (codes.is_utf8()) {
        uint32_t code = code_point(character);
        if (is_invisible(code)) return fmt::format("<U+{:04X}>", code);
        return character == "\\" ? "\\\\" : std::string(character);
    }
    char c = character[0];
    bool plain = codes.has_ascii() && character.size() == 1 && c >= 0x20 && c < 0x7F && c != '\\';
    return plain ? std::string(character) : escaped(character);
}

bool is_in(const code_set &codes, vel_wchar value, const char *class_name) {
    int32_t mask = vel_ctype(codes.locale(), class_name);
    return mask && vel_im_iswctype(codes.locale(), value, mask);
}

} // namespace

std::string hex_bytes(std::string_view bytes) {
    std::string text;
    for (char c : bytes) {
        text += fmt::format("{}{:02X}", text.empty() ? "" : " ", static_cast<unsigned char>(c));
    }
    return text;
}

std::string printable(const code_set &codes, std::string_view text) {
    std::string result;
    while (!text.empty()) {
        int length = codes.character(text);
        size_t bytes = length < 1 ? codes.invalid_bytes(text) : static_cast<size_t>(length);
        result += length < 1 ? escaped(text.substr(0, bytes)) : shown(codes, text.substr(0, bytes));
        text.remove_prefix(bytes);
    }
    return result;
}

cell printable_character(const code_set &codes, std::string_view bytes, vel_wchar value) {
    std::string text = shown(codes, bytes);
    if (text != bytes || !codes.is_utf8()) return cell(std::move(text));
    // A combining mark needs something to stand on.
    if (is_in(codes, value, "combining")) return cell("\u25CC" + text, 1);
    return cell(std::move(text), is_in(codes, value, "full_width") ? 2 : 1);
}

} // namespace vel_tool

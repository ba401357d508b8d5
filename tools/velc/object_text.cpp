#include "velc/object_text.h"

#include <fmt/format.h>

namespace velc {

namespace {

constexpr char digits[] = "0123456789abcdef";

} // namespace

void append_wide(std::string &text, std::uint32_t value) {
    for (int shift = 28; shift >= 0; shift -= 4) text += digits[value >> shift & 15];
}

void append_hex16(std::string &text, std::uint16_t value) {
    for (int shift = 12; shift >= 0; shift -= 4) text += digits[value >> shift & 15];
}

void append_string(std::string &text, std::string_view bytes) {
    text += std::to_string(bytes.size());
    if (!bytes.empty()) text += ' ';
    for (char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text += digits[byte >> 4];
        text += digits[byte & 15];
    }
    text += '\n';
}

void append_grouping(std::string &text, const std::vector<int> &sizes) {
    text += std::to_string(sizes.size());
    for (int size : sizes) text += ' ' + std::to_string(size);
    text += '\n';
}

// FNV-1a, 64 bits.
std::string content_hash(std::string_view body) {
    std::uint64_t hash = 0xCBF29CE484222325;
    for (char c : body) {
        hash ^= static_cast<unsigned char>(c);
        hash *= 0x100000001B3;
    }
    return fmt::format("{:016x}", hash);
}

std::string with_header(const object_header &header, std::string_view body) {
    std::string text = fmt::format("FILE_TYPE={}\nCOMPILER_VERSION={}\nHEADER_LENGTH={}\n",
                                   header.type, header.version, header.lines.size() + 4);
    for (const std::string &line : header.lines)
        text.append(line, 0, longest_header_line).append("\n");
    text.append("CONTENT_HASH=").append(content_hash(body)).append("\n");
    return text.append(body);
}

} // namespace velc

#include "velc/unicode_forms.h"

#include <algorithm>

#include "velc/tool_error.h"

namespace velc {

namespace {

constexpr byte_sequence none{};

byte_sequence two_bytes(char32_t code) {
    return code < 0x10000 ? byte_sequence{static_cast<std::uint32_t>(code), 2} : none;
}

byte_sequence four_bytes(char32_t code) {
    return {static_cast<std::uint32_t>(code), 4};
}

constexpr std::uint32_t swapped(std::uint32_t unit) {
    return (unit & 0xFF) << 8 | unit >> 8;
}

std::uint32_t high_surrogate(char32_t code) {
    return 0xD7C0 + (static_cast<std::uint32_t>(code) >> 10);
}
std::uint32_t low_surrogate(char32_t code) {
    return 0xDC00 | (static_cast<std::uint32_t>(code) & 0x3FF);
}

byte_sequence utf16_big(char32_t code) {
    if (code < 0x10000) return two_bytes(code);
    return {high_surrogate(code) << 16 | low_surrogate(code), 4};
}

byte_sequence utf16_little(char32_t code) {
    if (code < 0x10000) return {swapped(static_cast<std::uint32_t>(code)), 2};
    return {swapped(high_surrogate(code)) << 16 | swapped(low_surrogate(code)), 4};
}

constexpr unicode_form forms[] = {
    {"UTF-8", utf8_bytes, 64, false, false},    {"UCS-2", two_bytes, 256, true, true},
    {"UCS-2BE", two_bytes, 256, false, true},   {"UTF-16LE", utf16_little, 1, false, false},
    {"UTF-16BE", utf16_big, 256, false, true},  {"UTF-32", four_bytes, 256, true, true},
    {"UTF-32BE", four_bytes, 256, false, true},
};

constexpr code_range repertoire[] = {{0, 0xD7FF}, {0xE000, 0x33FFF}, {0xE0000, 0xE0FFF}};

charmap charmap_of(const unicode_form &form) {
    if (!form.has_charmap)
        throw tool_error("{}: has no charmap object, expected a form whose characters are bytes "
                         "that count up",
                         form.name);
    charmap::parts parts;
    parts.name = parts.file = form.name;
    for (char32_t code = 0; code <= last_code_point; ++code) {
        const byte_sequence bytes = is_scalar_value(code) ? form.bytes(code) : none;
        if (bytes.length > 0) parts.entries.push_back({code, bytes, true});
    }
    parts.lines.assign(parts.entries.size(), 0);
    return charmap(std::move(parts));
}

} // namespace

const unicode_form *find_unicode_form(std::string_view name) {
    const auto *found = std::ranges::find(forms, name, &unicode_form::name);
    return found == std::end(forms) ? nullptr : found;
}

std::span<const code_range> unicode_repertoire() {
    return repertoire;
}

std::shared_ptr<const charmap> charmap_named(source_library &sources, const std::string &name) {
    const unicode_form *form = find_unicode_form(name);
    if (!form || form->bytes == utf8_bytes) return sources.charmap(name);
    return std::make_shared<const charmap>(charmap_of(*form));
}

} // namespace velc

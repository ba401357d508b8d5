#include "velc/text_decoder.h"

#include <fmt/format.h>

namespace velc {

namespace {

constexpr bool prints(char32_t code) {
    return code >= 0x20 && !(code >= 0x7F && code < 0xA0) && code != 0xAD &&
           !(code >= 0x200B && code <= 0x200F) && !(code >= 0x2028 && code <= 0x202E) &&
           !(code >= 0x2060 && code <= 0x2069) && !(code >= 0xE000 && code <= 0xF8FF) &&
           is_scalar_value(code);
}

std::string shown(char32_t code) {
    if (code == U'\\') return "\\\\";
    if (code == U'"') return "\\\"";
    if (prints(code)) return to_utf8(std::u32string_view(&code, 1));
    return fmt::format("\\u{{{:x}}}", static_cast<std::uint32_t>(code));
}

std::shared_ptr<const charmap> find_charmap(const codeset *known, const std::string &source_root) {
    if (!known) return nullptr;
    try {
        return source_library(source_root).charmap(known->charmap);
    } catch (const source_error &) {
        return nullptr; // shown as escapes then
    }
}

} // namespace

std::string hex_bytes(const byte_sequence &bytes) {
    std::string text;
    for (int i = 0; i < bytes.length; ++i) text += fmt::format("{}{:02x}", i ? " " : "", bytes[i]);
    return text;
}

text_decoder::text_decoder(std::string_view codeset_name, const codeset_table &codesets,
                           const std::string &source_root) {
    const auto number = codesets.names().find(codeset_name);
    const codeset *known = number ? codesets.find(*number) : nullptr;
    utf8_ = known && known->charmap == "UTF-8";
    if (!utf8_) charmap_ = find_charmap(known, source_root);
}

std::string text_decoder::decode_next(std::string_view &rest) const {
    std::size_t at = 0;
    if (utf8_)
        if (auto code = decode_utf8(rest, at)) {
            rest.remove_prefix(at);
            return shown(*code);
        }
    byte_sequence bytes;
    for (std::size_t length = 1; charmap_ && length <= 4 && length <= rest.size(); ++length) {
        bytes.value = bytes.value << 8 | static_cast<unsigned char>(rest[length - 1]);
        bytes.length = static_cast<std::uint8_t>(length);
        if (auto code = charmap_->decode(bytes)) {
            rest.remove_prefix(length);
            return shown(*code);
        }
    }
    const auto byte = static_cast<unsigned char>(rest.front());
    rest.remove_prefix(1);
    const bool ascii = !charmap_ && !utf8_ && byte >= 0x20 && byte < 0x7F;
    return ascii ? shown(byte) : fmt::format("\\x{:02x}", byte);
}

std::string text_decoder::decode(std::string_view bytes) const {
    std::string text;
    while (!bytes.empty()) text += decode_next(bytes);
    return text;
}

std::string text_decoder::describe(const byte_sequence &bytes) const {
    const std::string raw = bytes.text();
    std::size_t at = 0;
    const auto code = utf8_      ? decode_utf8(raw, at)
                      : charmap_ ? charmap_->decode(bytes)
                                 : std::nullopt;
    if (!code) return {};
    return fmt::format("U+{:04X}{}", static_cast<std::uint32_t>(*code),
                       prints(*code) ? " " + to_utf8(std::u32string_view(&*code, 1)) : "");
}

} // namespace velc

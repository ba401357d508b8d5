#include "velc/collate_spares.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "velc/tool_error.h"

namespace velc {

namespace {

constexpr std::uint8_t preferred_leads[] = {0xFE, 0xFF, 0x80};
constexpr std::u32string_view layout_controls = U"\r\n\t\v\f\u0085";

std::array<bool, 256> first_bytes(const charmap &codeset) {
    std::array<bool, 256> used{};
    for (const charmap_entry &entry : codeset.by_bytes()) used[entry.bytes[0]] = true;
    for (const charmap_sequence &one : codeset.sequences()) used[one.bytes[0]] = true;
    return used;
}

// The less often texts hold it, the less: controls from U+0080 up, then those of ASCII, then what
// lays out lines, to which the line end of EBCDIC belongs.
int rarity_rank(char32_t code) {
    if (layout_controls.find(code) != layout_controls.npos) return 2;
    return code >= 0x80 ? 0 : 1;
}

std::vector<byte_sequence> single_bytes(const charmap &codeset) {
    const std::array<bool, 256> used = first_bytes(codeset);
    std::vector<byte_sequence> spare;
    for (std::uint32_t byte = 1; byte < 256; ++byte)
        if (!used[byte]) spare.push_back({byte, 1});
    std::vector<charmap_entry> controls;
    for (const charmap_entry &entry : codeset.by_bytes())
        if (may_be_borrowed(entry.code) && entry.bytes.value != 0) controls.push_back(entry);
    std::ranges::stable_sort(controls, {},
                             [](const charmap_entry &entry) { return rarity_rank(entry.code); });
    for (const charmap_entry &entry : controls) spare.push_back(entry.bytes);
    return spare;
}

// A lead byte and one or two bytes behind it, counted from 0.
std::vector<byte_sequence> behind_lead(std::uint32_t lead, int length, std::size_t count) {
    std::vector<byte_sequence> spare;
    for (std::uint32_t i = 0; i < count; ++i)
        spare.push_back({lead << 8 * (length - 1) | i, static_cast<std::uint8_t>(length)});
    return spare;
}

std::uint32_t free_lead(const charmap &codeset) {
    const std::array<bool, 256> used = first_bytes(codeset);
    for (const std::uint8_t lead : preferred_leads)
        if (!used[lead]) return lead;
    for (std::uint32_t lead = 0xFF; lead >= 0x80; --lead)
        if (!used[lead]) return lead;
    throw tool_error("{}: found characters behind every byte from 80 up, expected a byte that "
                     "begins none",
                     codeset.name());
}

} // namespace

bool may_be_borrowed(char32_t code) {
    return code < 0x20 || (code >= 0x7F && code < 0xA0);
}

std::vector<byte_sequence> spare_bytes(const charmap &codeset, std::size_t count) {
    if (count == 0) return {};
    if (codeset.max_length() == 1) {
        std::vector<byte_sequence> spare = single_bytes(codeset);
        if (spare.size() < count)
            throw tool_error("{}: found {} bytes to spare for weights of several symbols, expected "
                             "{}",
                             codeset.name(), spare.size(), count);
        spare.resize(count);
        return spare;
    }
    const bool utf8 = codeset.every_scalar_value();
    if (count > 0x10000)
        throw tool_error("{}: found {} different parts of weights, expected at most 65536",
                         codeset.name(), count);
    return behind_lead(free_lead(codeset), utf8 || count > 0x100 ? 3 : 2, count);
}

} // namespace velc

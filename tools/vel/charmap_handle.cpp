#include "vel/charmap_handle.h"

#include <charconv>

#include <fmt/format.h>

#include "vel/conversion.h"
#include "vel/failure.h"
#include "vel/installation.h"
#include "vel/search_log.h"

namespace vel_tool {
namespace {

bool read_number(std::string_view digits, int base, uint32_t &number) {
    auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number, base);
    return error == std::errc() && end == digits.data() + digits.size() && number <= 0x10FFFF;
}

// The code points of names like <U00E4>, <u0000228> and <U304BU309A>; none of other names.
std::u32string code_points_of(std::string_view name) {
    name = name.substr(1, name.size() - 2);
    uint32_t code = 0;
    if (name.size() == 8 && name[0] == 'u' && read_number(name.substr(1), 10, code)) {
        return {code};
    }
    std::u32string codes;
    while (!name.empty()) {
        size_t end = std::min(name.find('U', 1), name.size());
        bool is_code = name[0] == 'U' && (end == 5 || end == 9) &&
                       read_number(name.substr(1, end - 1), 16, code);
        if (!is_code) return {};
        codes += static_cast<char32_t>(code);
        name.remove_prefix(end);
    }
    return codes;
}

} // namespace

charmap_handle try_load_charmap(uint16_t number) {
    vel_charmap *raw = nullptr;
    bool is_loaded = vel_cm_load(&raw, std::to_string(number).c_str(), 0, nullptr) == 0;
    return charmap_handle(is_loaded ? raw : nullptr); // after a failure it is not ours
}

charmap_handle load_charmap(const std::string &name) {
    named_code_set codes = find_code_set(name);
    search_log::clear();
    vel_charmap *raw = nullptr;
    if (vel_cm_load(&raw, std::to_string(codes.number).c_str(), 0, nullptr) == 0) {
        return charmap_handle(raw);
    }
    int32_t error = raw ? error_of(raw) : VEL_ENOMEM;
    if (error != VEL_ENOFILE || data_file_was_read()) {
        throw failure(data_file_failure("the charmap of " + name, error));
    }
    throw failure(
        fmt::format("there is no charmap of {}: tried {}; {}", name, search_log::failed_paths(),
                    advice_on_missing_data("'vel codesets' lists which code sets have one")));
}

character_names names_of(vel_charmap *charmap, std::string_view character) {
    auto length = static_cast<int32_t>(character.size());
    int32_t count = vel_mbtosymlist(charmap, nullptr, 0, character.data(), length);
    character_names result;
    if (count < 1) return result;
    auto slots = std::make_unique<char[][VEL_SYMBOL_SLOT]>(static_cast<size_t>(count));
    vel_mbtosymlist(charmap, slots.get(), count, character.data(), length);
    for (int32_t i = 0; i < count; ++i) {
        if (!*slots[i]) continue; // too long for its slot
        result.names.emplace_back(slots[i]);
        if (result.code_points.empty()) result.code_points = code_points_of(slots[i]);
    }
    return result;
}

std::string code_point_text(std::u32string_view code_points) {
    std::string text;
    for (char32_t code : code_points) {
        text += fmt::format("{}U+{:04X}", text.empty() ? "" : " ", static_cast<uint32_t>(code));
    }
    return text;
}

std::string character_names::description() const {
    std::string text = code_point_text(code_points);
    for (const std::string &name : names) {
        if (!code_points_of(name).empty()) continue;
        return text + (text.empty() ? "" : " ") + name;
    }
    return text;
}

} // namespace vel_tool

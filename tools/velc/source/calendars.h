#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace velc {

// In the order of the library's calendar numbers.
enum class calendar_system : std::uint8_t { gregorian, hebrew, islamic, arabic };

struct calendar_row {
    std::string_view name;
    std::size_t months; // names that a locale of this calendar lists
};

// The Hebrew list goes from Tishri to Elul with Adar of a common year as its sixth name; Adar I and
// Adar II of a leap year stand behind these.
inline constexpr std::array<calendar_row, 4> calendar_rows = {{
    {"gregorian", 12},
    {"hebrew", 14},
    {"islamic", 12},
    {"arabic", 12},
}};

constexpr const calendar_row &row_of(calendar_system calendar) {
    return calendar_rows[static_cast<std::size_t>(calendar)];
}

constexpr std::optional<calendar_system> find_calendar(std::string_view name) {
    const auto found = std::ranges::find(calendar_rows, name, &calendar_row::name);
    if (found == calendar_rows.end()) return std::nullopt;
    return static_cast<calendar_system>(found - calendar_rows.begin());
}

} // namespace velc

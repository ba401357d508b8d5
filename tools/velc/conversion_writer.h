#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "velc/conversion_set.h"

namespace velc {

// One side of a conversion.
struct conversion_side {
    conversion_set_pointer set;
    std::uint16_t number = 0;
};

struct conversion_object {
    std::string text;
    std::size_t substituted = 0; // source characters, beside those that only a computed set has
};

// A conversion object (.cvo): every character of the source with its bytes in the target.
conversion_object write_conversion(const conversion_side &from, const conversion_side &to);

// "033301b5.cvo"
std::string conversion_file_name(std::uint16_t from, std::uint16_t to);

} // namespace velc

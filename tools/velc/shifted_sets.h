#pragma once

// Code sets with two shift states.

#include <optional>
#include <string>

#include "velc/conversion_set.h"

namespace velc {

// A mixed set of single and double bytes, between which the bytes SO and SI switch, as the
// converter of the host knows it: it is asked for every character of both states, and for the bytes
// of every code point. Throws missing_set when the host has no such set.
conversion_set ask_host(const std::string &name);

// HZ: ASCII and, between "~{" and "~}", the characters of GB 2312 in seven bits.
inline constexpr std::string_view hz_name = "HZ";
conversion_set make_hz(source_library &sources);

} // namespace velc

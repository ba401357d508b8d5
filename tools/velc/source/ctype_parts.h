#pragma once

#include <memory>
#include <string_view>

#include "velc/source/model.h"

namespace velc {

// The class or map of that name, made when there is none.
char_class &class_named(ctype &in, std::string_view name);
char_map &map_named(ctype &in, std::string_view name);

// Brings lists into the order that the model promises: standard names first, ranges joined, pairs
// and rules sorted and unique.
void settle(ctype &one);

// What a file says itself on top of what it copies.
ctype overlaid(const ctype &copied, const ctype &own);

} // namespace velc

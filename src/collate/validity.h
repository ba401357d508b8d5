// Finding text that is weighed as it stands, and whether it is valid.
#pragma once

#include "collate/text.h"

namespace vel {

// The text in a terminated (length -1) or counted string.
template <typename Text> Text text_in(const char *string, int32_t length) {
    const unsigned char *at = as_bytes(string);
    return {at, at + (length == -1 ? strlen(string) : static_cast<size_t>(length))};
}

// Whether all of the text is valid.
bool is_valid(const vel_locale *locale, utf8_text text);

} // namespace vel

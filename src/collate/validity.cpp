#include "collate/validity.h"

#include "charmap/spans.h"

namespace vel {

bool is_valid(const vel_locale *locale, utf8_text text) {
    size_t size = static_cast<size_t>(text.end - text.at);
    span_state state(characters_of(locale));
    return kernels().of(state.table).count(state, text.at, size).read == size;
}

} // namespace vel

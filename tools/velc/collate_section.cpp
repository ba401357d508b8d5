#include "velc/collate_section.h"

#include "velc/byte_table.h"

namespace velc {

namespace {

// No characters, no passes, no elements, no expansions, and the flag that says: by value.
std::string code_order() {
    std::string text = "as_specified\n";
    byte_table(0).append_to(text);
    return text + "0 0 0 0 0 1\n";
}

} // namespace

std::string write_collate(const collation *, const charmap &) {
    return code_order();
}

} // namespace velc

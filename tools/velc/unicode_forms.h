#pragma once

// The forms in which Unicode text is stored. They are computed; no source lists them.

#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "velc/source/source_library.h"

namespace velc {

struct unicode_form {
    std::string_view name; // of the code set in the recipe
    // How the form writes a scalar value; length 0 when it cannot.
    byte_sequence (*bytes)(char32_t code);
    // So many code points, from a multiple of it on, differ in their last byte only.
    char32_t run;
    // Every character is one unit in the byte order of the host: 2 or 4 bytes that tables hold most
    // significant first.
    bool units;
    // The bytes of successive characters count up, so that a charmap object can list them.
    bool has_charmap;
};

// Null for code sets that come from elsewhere.
const unicode_form *find_unicode_form(std::string_view name);

// The characters that one form passes on to another: what has characters or may get some soon.
// Rising.
std::span<const code_range> unicode_repertoire();

// What a charmap object is made from: a source, or a computed form. Throws source_error, and
// tool_error for forms that have no charmap object.
std::shared_ptr<const charmap> charmap_named(source_library &sources, const std::string &name);

} // namespace velc

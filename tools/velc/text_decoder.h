#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "velc/codesets.h"
#include "velc/source/source_library.h"

namespace velc {

// Bytes of a code set as UTF-8 text for people. UTF-8 is shown as it stands; other code sets need
// their charmap among the sources, without it everything but ASCII is shown as \xHH.
class text_decoder {
public:
    text_decoder(std::string_view codeset_name, const codeset_table &codesets,
                 const std::string &source_root);

    // Characters that do not print are written as escapes.
    std::string decode(std::string_view bytes) const;
    // One character: "U+00E9 é"; empty when it is not known.
    std::string describe(const byte_sequence &bytes) const;

private:
    std::string decode_next(std::string_view &rest) const;

    bool utf8_ = false;
    std::shared_ptr<const charmap> charmap_;
};

// "c3 a9"
std::string hex_bytes(const byte_sequence &bytes);

} // namespace velc

#pragma once

// Texts of a locale in the bytes of a code set. A character that the code set lacks is written by
// what the locale's own substitutions offer, and remembered.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "velc/source/charmap.h"
#include "velc/source/translit.h"

namespace velc {

struct substitution {
    std::string keyword;    // "currency_symbol"
    char32_t code = 0;      // the character that is missing
    std::u32string written; // what stands for it; empty when nothing does
    bool lossy = false;     // no substitution was known: it is a question mark, or left out
};

class text_encoder {
public:
    // A null table knows no substitutions.
    text_encoder(const charmap &codeset, const translit_table *substitutes)
        : codeset_(codeset), substitutes_(substitutes) {}

    std::string encode(std::string_view keyword, std::u32string_view text);

    const charmap &codeset() const { return codeset_; }
    // Each character once for each keyword, in the order of the object.
    const std::vector<substitution> &substitutions() const { return substitutions_; }

private:
    substitution replace(std::string_view keyword, char32_t code) const;
    std::optional<std::u32string> known_substitute(char32_t code) const;

    const charmap &codeset_;
    const translit_table *substitutes_;
    std::vector<substitution> substitutions_;
};

// "currency_symbol: U+20AC is written as \"EUR\""
std::string to_string(const substitution &one);

} // namespace velc

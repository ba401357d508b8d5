#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "velc/source/charmap.h"
#include "velc/source/model.h"

namespace velc {

// The substitutions of a locale: its own rules, then those of the files it includes, each before
// the files that it includes in turn.
class translit_table {
public:
    struct layer {
        std::shared_ptr<const ctype> rules;
    };
    explicit translit_table(std::vector<layer> layers);

    // What may stand for the character, best first, over all layers; without default_missing.
    text_list candidates(char32_t code) const;

    // The first candidate that the code set holds completely; else, when the locale names one, its
    // default_missing; else nothing. A character that the code set has is not asked for.
    std::optional<std::u32string> substitute(char32_t code, const charmap &target) const;

    // The text with every missing character replaced; nothing when one has no replacement.
    std::optional<std::u32string> fit(std::u32string_view text, const charmap &target) const;

private:
    std::vector<layer> layers_;
};

} // namespace velc

#include "velc/text_encoder.h"

#include <algorithm>

#include <fmt/format.h>

namespace velc {

namespace {

// What is put in the place of characters for which a locale's own substitutions know nothing that
// the code set has: quotation marks, dashes and spaces that mean what their plain forms mean.
struct plain_form {
    char32_t first, last;
    char32_t plain;
};
constexpr plain_form plain_forms[] = {
    {0x00A0, 0x00A0, U' '}, {0x02B9, 0x02BC, U'\''}, {0x02BF, 0x02BF, U'\''},
    {0x2000, 0x200A, U' '}, {0x2010, 0x2015, U'-'},  {0x2018, 0x201B, U'\''},
    {0x201C, 0x201F, U'"'}, {0x202F, 0x202F, U' '},  {0x205F, 0x205F, U' '},
    {0x2212, 0x2212, U'-'},
};

// Characters without a shape of their own: nothing is lost when they are left out.
constexpr bool is_invisible(char32_t code) {
    return (code >= 0x200B && code <= 0x200F) || (code >= 0x202A && code <= 0x202E) ||
           (code >= 0x2060 && code <= 0x2064) || (code >= 0x2066 && code <= 0x2069);
}

const plain_form *plain_form_of(char32_t code) {
    const auto *found = std::ranges::find_if(
        plain_forms, [&](const plain_form &f) { return code >= f.first && code <= f.last; });
    return found == std::end(plain_forms) ? nullptr : found;
}

} // namespace

substitution text_encoder::replace(std::string_view keyword, char32_t code) const {
    substitution made{std::string(keyword), code, {}, false};
    if (const auto known = known_substitute(code)) {
        made.written = *known;
        return made;
    }
    if (is_invisible(code)) return made;
    const plain_form *plain = plain_form_of(code);
    made.lossy = !plain || !codeset_.has(plain->plain);
    if (!made.lossy)
        made.written = plain->plain;
    else if (substitutes_)
        made.written = substitutes_->substitute(code, codeset_).value_or(U"");
    if (made.lossy && made.written.empty() && codeset_.has(U'?')) made.written = U'?';
    return made;
}

// The first that the code set has. What the locale writes for want of anything better is none.
std::optional<std::u32string> text_encoder::known_substitute(char32_t code) const {
    if (!substitutes_) return std::nullopt;
    for (std::u32string &candidate : substitutes_->candidates(code))
        if (codeset_.has_all(candidate)) return std::move(candidate);
    return std::nullopt;
}

std::string text_encoder::encode(std::string_view keyword, std::u32string_view text) {
    std::string bytes;
    for (char32_t code : text) {
        if (auto known = codeset_.encode(code)) {
            bytes += known->text();
            continue;
        }
        substitution made = replace(keyword, code);
        bytes += codeset_.encode_text(made.written).value_or("");
        const bool repeated = std::ranges::any_of(substitutions_, [&](const substitution &s) {
            return s.code == made.code && s.keyword == made.keyword;
        });
        if (!repeated) substitutions_.push_back(std::move(made));
    }
    return bytes;
}

std::string to_string(const substitution &one) {
    const std::string result =
        one.written.empty() ? "left out" : fmt::format("written as \"{}\"", to_utf8(one.written));
    return fmt::format("{}: U+{:04X} is not in the code set and is {}{}", one.keyword,
                       static_cast<std::uint32_t>(one.code), result,
                       one.lossy ? ", no substitution is known" : "");
}

} // namespace velc

// A text as a row uses it: its bytes in the row's code set, and the characters they make.
#pragma once

#include "texts.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

enum class code_set { utf8, euc_jp, shift_jis };

// The name that iconv, ICU and localedef all know.
const char *name_of(code_set set);

struct sample {
    language spoken;
    code_set set;
    std::string text;                    // in the code set
    std::vector<std::string> characters; // in the code set
    std::u32string code_points;
};
using sample_ptr = std::shared_ptr<const sample>;

// By iconv. Throws when a character has no counterpart.
std::string convert(const std::string &in, const char *from, const char *to);

// `bytes` counts those of the UTF-8 form.
sample_ptr make_sample(language spoken, code_set set, std::size_t bytes);

// The bytes of a character, packed big-endian.
std::uint32_t packed(std::string_view character);

// The reverse, appended to `out`.
void append_packed(std::string &out, std::uint32_t value);

// Characters in a form that all libraries can be compared in: UTF-8, each followed by this byte.
inline constexpr char separator = '\x1f';
std::string to_utf8(const std::string &separated, code_set set);
void append_utf8(std::string &out, char32_t code_point);

} // namespace bench

// Natural text in several languages, of any size, the same on every run.
#pragma once

#include <cstddef>
#include <string>

namespace bench {

enum class language { english, german, russian, japanese, mixed };

// UTF-8 text of at most `bytes` bytes (less the rest of a character). English is all ASCII;
// Japanese keeps to characters that EUC-JP and SHIFT_JIS have; mixed has eight scripts and emoji.
std::string make_text(language what, std::size_t bytes);

} // namespace bench

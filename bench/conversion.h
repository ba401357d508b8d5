// Texts to be converted: what the rows of conversion give the libraries.
#pragma once

#include "texts.h"

#include <memory>
#include <string>
#include <vector>

namespace bench {

// A code set by the name that ours know it by and by the one that iconv and ICU know.
struct code_set_names {
    const char *ours;
    const char *peers;
};

struct conversion {
    code_set_names from, to;
    std::vector<std::string> texts; // in the code set `from`; each is given in a call of its own
};
using conversion_ptr = std::shared_ptr<const conversion>;

// A text of a megabyte. Quotes and dashes that only some code sets have are written as in ASCII.
conversion_ptr long_text(language spoken, code_set_names from, code_set_names to);

// A few thousand words from all over the dictionary, those that both code sets can write.
conversion_ptr single_words(language spoken, code_set_names from, code_set_names to);

} // namespace bench

// Lists of words as dictionaries have them, for the rows about order.
#pragma once

#include "texts.h"

#include <memory>
#include <string>
#include <vector>

namespace bench {

struct word_list {
    language spoken;
    std::vector<std::string> words; // UTF-8
};
using word_list_ptr = std::shared_ptr<const word_list>;

// Whether the Debian package with the words of a language is there: wngerman, hunspell-ru, skkdic.
bool has_words(language spoken);

// `count` different words from all over the dictionary, in the order of their bytes.
word_list_ptr make_word_list(language spoken, std::size_t count);

// The words in an order that is always the same and none.
word_list_ptr shuffled(const word_list_ptr &list);

} // namespace bench

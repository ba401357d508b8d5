#include "word_list.h"

#include "sample.h"

#include <algorithm>
#include <fstream>
#include <random>
#include <stdexcept>

namespace bench {
namespace {

using words = std::vector<std::string>;

void add_whole(words &to, const std::string &line) {
    to.push_back(line);
}

// "слово/ABC": behind the slash is how it is inflected.
void add_stem(words &to, const std::string &line) {
    to.push_back(line.substr(0, line.find('/')));
}

// "reading /word;note/word/". Words that are formulas or list further words are left out.
void add_writings(words &to, const std::string &line) {
    if (line.empty() || line[0] == ';') return;
    std::size_t from = line.find(" /") + 2;
    for (std::size_t end; (end = line.find('/', from)) != std::string::npos; from = end + 1) {
        std::string word = line.substr(from, end - from);
        word.resize(std::min(word.find(';'), word.size()));
        if (word.find_first_of("([\"# ") == std::string::npos) to.push_back(word);
    }
}

struct dictionary {
    language spoken;
    const char *file;
    code_set set;
    void (*add)(words &to, const std::string &line);
};

const dictionary dictionaries[] = {
    {language::german, "/usr/share/dict/ngerman", code_set::utf8, add_whole},
    {language::russian, "/usr/share/hunspell/ru_RU.dic", code_set::utf8, add_stem},
    {language::japanese, "/usr/share/skk/SKK-JISYO.L", code_set::euc_jp, add_writings},
};

const dictionary &dictionary_of(language spoken) {
    for (const dictionary &of : dictionaries) {
        if (of.spoken == spoken) return of;
    }
    throw std::runtime_error("no dictionary of this language");
}

words all_words(const dictionary &of) {
    std::ifstream file(of.file);
    std::string content{std::istreambuf_iterator<char>(file), {}};
    content = to_utf8(content, of.set);
    words all;
    for (std::size_t from = 0, end; (end = content.find('\n', from)) != std::string::npos;
         from = end + 1)
        of.add(all, content.substr(from, end - from));
    std::erase(all, "");
    std::sort(all.begin(), all.end());
    all.erase(std::unique(all.begin(), all.end()), all.end());
    return all;
}

} // namespace

bool has_words(language spoken) {
    return std::ifstream(dictionary_of(spoken).file).good();
}

word_list_ptr make_word_list(language spoken, std::size_t count) {
    const words all = all_words(dictionary_of(spoken));
    if (all.size() < count) throw std::runtime_error("a dictionary with too few words");
    auto made = std::make_shared<word_list>();
    made->spoken = spoken;
    for (std::size_t i = 0; i < count; ++i) made->words.push_back(all[i * all.size() / count]);
    return made;
}

word_list_ptr shuffled(const word_list_ptr &list) {
    auto made = std::make_shared<word_list>(*list);
    std::mt19937 random(20232);
    for (std::size_t i = made->words.size() - 1; i > 0; --i)
        std::swap(made->words[i], made->words[random() % (i + 1)]);
    return made;
}

} // namespace bench

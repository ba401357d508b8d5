#include "conversion.h"

#include "sample.h"
#include "word_list.h"

#include <stdexcept>

namespace bench {
namespace {

constexpr std::size_t mib = 1 << 20;
constexpr std::size_t word_count = 4000;

std::string in_ascii_quotes(std::string text) {
    constexpr std::pair<std::string_view, std::string_view> simpler[] = {
        {"„", "\""}, {"“", "\""}, {"–", "-"}, {"«", "\""}, {"»", "\""}, {"—", "-"}};
    for (auto [fine, plain] : simpler) {
        for (std::size_t at = 0; (at = text.find(fine, at)) != std::string::npos;)
            text.replace(at, fine.size(), plain);
    }
    return text;
}

bool can_write(const std::string &text, const char *set) {
    try {
        convert(text, "UTF-8", set);
        return true;
    } catch (const std::runtime_error &) {
        return false;
    }
}

} // namespace

conversion_ptr long_text(language spoken, code_set_names from, code_set_names to) {
    std::string text = in_ascii_quotes(make_text(spoken, mib));
    return std::make_shared<conversion>(conversion{from, to, {convert(text, "UTF-8", from.peers)}});
}

conversion_ptr single_words(language spoken, code_set_names from, code_set_names to) {
    auto made = std::make_shared<conversion>(conversion{from, to, {}});
    word_list_ptr list = shuffled(make_word_list(spoken, word_count));
    for (const std::string &word : list->words) {
        if (can_write(word, from.peers) && can_write(word, to.peers))
            made->texts.push_back(convert(word, "UTF-8", from.peers));
    }
    return made;
}

} // namespace bench

// Rows about order: what the libraries do with a list of words.
#include "library.h"
#include "row.h"

#include <cstdio>
#include <stdexcept>

namespace bench {
namespace {

constexpr std::size_t list_size = 100000;
constexpr std::size_t mib = 1 << 20;

// Neighbours in a dictionary begin alike.
word_list_ptr dictionary(language spoken) {
    return make_word_list(spoken, list_size);
}

word_list_ptr no_order(language spoken) {
    return shuffled(dictionary(spoken));
}

// Fewer words, so that all of them stay in the cache.
word_list_ptr behind_100_characters(language spoken) {
    constexpr std::size_t equal = 100;
    auto made = std::make_shared<word_list>(*make_word_list(spoken, 1000));
    sample_ptr text = make_sample(spoken, code_set::utf8, 4 * equal);
    std::string beginning;
    for (std::size_t i = 0; i < equal; ++i) beginning += text->characters[i];
    for (std::string &word : made->words) word.insert(0, beginning);
    return made;
}

word_list_ptr equal_texts(language spoken) {
    const std::string text = make_text(spoken, mib);
    return std::make_shared<word_list>(word_list{spoken, {text, text}});
}

struct order_row {
    const char *name;
    call ordering::*what;
    word_list_ptr (*make_list)(language);
    language spoken;
    unit shown;
    aim wanted;
};

using enum language;

const order_row order_rows[] = {
    {"compare words, German", &ordering::neighbours, dictionary, german, unit::nanoseconds,
     aim::times_host(5)},
    {"compare words, Russian", &ordering::neighbours, dictionary, russian, unit::nanoseconds,
     aim::times_host(6)},
    {"compare words, Japanese", &ordering::neighbours, dictionary, japanese, unit::nanoseconds,
     aim::times_host(70)},
    {"compare behind 100 equal characters, German", &ordering::neighbours, behind_100_characters,
     german, unit::nanoseconds, aim::times_host(30)},
    {"compare behind 100 equal characters, Japanese", &ordering::neighbours, behind_100_characters,
     japanese, unit::nanoseconds, aim::times_host(800)},
    {"compare equal texts of 1 MiB, German",
     &ordering::neighbours,
     equal_texts,
     german,
     unit::gigabytes_per_second,
     {}},
    {"compare equal texts of 1 MiB, Japanese",
     &ordering::neighbours,
     equal_texts,
     japanese,
     unit::gigabytes_per_second,
     {}},
    {"sort key, German", &ordering::keys, dictionary, german, unit::nanoseconds,
     aim::times_host(4)},
    {"sort key, Russian", &ordering::keys, dictionary, russian, unit::nanoseconds,
     aim::times_host(5)},
    {"sort key, Japanese", &ordering::keys, dictionary, japanese, unit::nanoseconds,
     aim::times_host(55)},
    {"sort 100 000 words by comparing, German",
     &ordering::sort,
     no_order,
     german,
     unit::nanoseconds,
     {}},
    {"sort 100 000 words by comparing, Japanese",
     &ordering::sort,
     no_order,
     japanese,
     unit::nanoseconds,
     {}},
    {"sort 100 000 words by keys, German",
     &ordering::sort_by_keys,
     no_order,
     german,
     unit::nanoseconds,
     {}},
    {"sort 100 000 words by keys, Japanese",
     &ordering::sort_by_keys,
     no_order,
     japanese,
     unit::nanoseconds,
     {}},
};

// Ours gives what the host does, to the last word. The others mean an order of their own.
std::vector<contender> contenders_in(const order_row &of, const word_list_ptr &list) {
    std::vector<contender> made;
    std::string ours_result;
    for (const library &who : libraries()) {
        if (!who.order) continue;
        const call work = who.order(list).*of.what;
        if (!work.pass) continue;
        const std::string result = work.result(work.pass());
        if (made.empty()) ours_result = result;
        if (who.name == std::string("host") && result != ours_result)
            throw std::runtime_error(std::string(of.name) + ": the host has another order");
        if (result.size() != ours_result.size())
            throw std::runtime_error(std::string(of.name) + ": " + who.name + " fails");
        made.push_back({who.name, work.pass, nullptr});
    }
    return made;
}

} // namespace

std::vector<row> collate_rows() {
    std::vector<row> rows;
    for (const order_row &of : order_rows) {
        if (!has_words(of.spoken)) {
            std::fprintf(stderr, "report: no dictionary for \"%s\"\n", of.name);
            continue;
        }
        auto prepare = [&of] {
            const word_list_ptr list = of.make_list(of.spoken);
            const double work = of.shown == unit::gigabytes_per_second
                                    ? static_cast<double>(mib)
                                    : static_cast<double>(list->words.size());
            return prepared_row{work, contenders_in(of, list)};
        };
        rows.push_back({of.name, of.shown, of.wanted, prepare});
    }
    return rows;
}

} // namespace bench

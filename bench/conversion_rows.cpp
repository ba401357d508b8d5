// Rows about conversion: a text or single words from one code set to another, and opening a
// converter.
#include "conversion.h"
#include "fresh_process.h"
#include "library.h"
#include "our_locale.h"
#include "row.h"
#include "scratch.h"
#include "word_list.h"

#include <chrono>
#include <cstdio>
#include <stdexcept>

namespace bench {
namespace {

constexpr code_set_names utf8 = {"utf-8", "UTF-8"};
constexpr code_set_names latin1 = {"iso-8859-1", "ISO-8859-1"};
constexpr code_set_names koi8r = {"koi8-r", "KOI8-R"};
constexpr code_set_names cp437 = {"cp437", "CP437"};
constexpr code_set_names cp1252 = {"cp1252", "CP1252"};
constexpr code_set_names ibm037 = {"ibm037", "IBM037"};
constexpr code_set_names sjis = {"shift_jis", "SHIFT_JIS"};
constexpr code_set_names euc_jp = {"euc-jp", "EUC-JP"};
constexpr code_set_names gb18030 = {"gb18030", "GB18030"};
constexpr code_set_names unicode = {"unicode", "UTF-16LE"}; // units of two bytes

using enum language;

struct conversion_row {
    const char *name;
    language spoken;
    code_set_names from, to;
    aim wanted;
};

const conversion_row long_texts[] = {
    {"ISO-8859-1 to UTF-8, German", german, latin1, utf8, aim::times_host(10)},
    {"UTF-8 to ISO-8859-1, German", german, utf8, latin1, aim::times_host(5)},
    {"UTF-8 to KOI8-R, Russian", russian, utf8, koi8r, {}},
    {"KOI8-R to UTF-8, Russian", russian, koi8r, utf8, {}},
    {"SJIS to UTF-8", japanese, sjis, utf8, aim::times_host(3.5)},
    {"UTF-8 to SJIS", japanese, utf8, sjis, aim::times_host(3)},
    {"EUC-JP to SJIS", japanese, euc_jp, sjis, aim::times_host(3)},
    {"UTF-8 to EUC-JP", japanese, utf8, euc_jp, {}},
    {"GB18030 to UTF-8", japanese, gb18030, utf8, aim::times_host(3)},
    {"CP437 to CP1252, German", german, cp437, cp1252, aim::times_host(20)},
    {"IBM037 to ISO-8859-1, German", german, ibm037, latin1, aim::times_host(20)},
    {"UTF-8 to UTF-16LE, Russian", russian, utf8, unicode, {}},
    {"UTF-8 to UTF-16LE, Japanese", japanese, utf8, unicode, {}},
};

const conversion_row words[] = {
    {"ISO-8859-1 to UTF-8, a German word a call", german, latin1, utf8, {}},
    {"UTF-8 to ISO-8859-1, a German word a call", german, utf8, latin1, {}},
    {"SJIS to UTF-8, a Japanese word a call", japanese, sjis, utf8, {}},
    {"UTF-8 to SJIS, a Japanese word a call", japanese, utf8, sjis, {}},
    {"CP437 to CP1252, a German word a call", german, cp437, cp1252, {}},
};

// Everyone gives what the host does, except who only copies.
std::vector<contender> contenders_in(const conversion_row &of, const conversion_ptr &in) {
    std::vector<contender> made;
    auto result_of = [](const call &work) {
        spoil_scratch();
        return work.result(0);
    };
    const std::string expected = result_of(host().convert(in));
    if (expected.find("failed") == 0)
        throw std::runtime_error(std::string(of.name) + ": the host fails");
    for (const library &who : libraries()) {
        if (!who.convert) continue;
        const call work = who.convert(in);
        if (who.name != bytes().name && result_of(work) != expected)
            throw std::runtime_error(std::string(of.name) + ": " + who.name + " differs");
        made.push_back({who.name, work.pass, nullptr});
    }
    return made;
}

prepared_row prepare_text(const conversion_row &of) {
    conversion_ptr in = long_text(of.spoken, of.from, of.to);
    return {static_cast<double>(in->texts.front().size()), contenders_in(of, in)};
}

prepared_row prepare_words(const conversion_row &of) {
    conversion_ptr in = single_words(of.spoken, of.from, of.to);
    return {static_cast<double>(in->texts.size()), contenders_in(of, in)};
}

// Opening.

const conversion opened_pairs[] = {{cp437, cp1252, {}}, {sjis, utf8, {}}, {utf8, sjis, {}}};

constexpr const char *question = "open converter";

std::string names_of(const conversion &pair) {
    return std::string(pair.from.peers) + " to " + pair.to.peers;
}

void *opened(const library &who, const conversion &pair) {
    void *converter = who.open_converter(pair);
    if (converter) return converter;
    throw std::runtime_error(std::string(who.name) + " does not open " + names_of(pair));
}

prepared_row prepare_fresh(const conversion &pair) {
    std::vector<contender> made;
    for (const library &who : libraries()) {
        if (!who.open_converter) continue;
        std::vector<std::string> arguments = {question, who.name, names_of(pair)};
        ask_fresh_process(arguments); // throws when it does not open; warms the page cache
        made.push_back({who.name, nullptr, [=] { return ask_fresh_process(arguments); }});
    }
    return {1, made};
}

prepared_row prepare_again(const conversion &pair) {
    std::vector<contender> made;
    cache_code_set_names();
    for (const library &who : libraries()) {
        if (!who.open_converter) continue;
        opened(who, pair); // held for the rest of the run
        auto pass = [&who, &pair] {
            who.close_converter(opened(who, pair));
            return std::int64_t{1};
        };
        made.push_back({who.name, pass, nullptr});
    }
    return {1, made};
}

} // namespace

std::vector<row> conversion_rows() {
    std::vector<row> rows;
    for (const conversion_row &of : long_texts) {
        rows.push_back(
            {of.name, unit::gigabytes_per_second, of.wanted, [&of] { return prepare_text(of); }});
    }
    for (const conversion_row &of : words) {
        if (!has_words(of.spoken)) {
            std::fprintf(stderr, "report: no dictionary for \"%s\"\n", of.name);
            continue;
        }
        rows.push_back(
            {of.name, unit::nanoseconds, of.wanted, [&of] { return prepare_words(of); }});
    }
    for (const conversion &pair : opened_pairs) {
        rows.push_back({"open a converter, " + names_of(pair) + ", fresh process",
                        unit::microseconds,
                        {},
                        [&pair] { return prepare_fresh(pair); }});
        rows.push_back({"open a converter, " + names_of(pair) + ", again while held",
                        unit::microseconds,
                        {},
                        [&pair] { return prepare_again(pair); }});
    }
    return rows;
}

std::optional<double> nanoseconds_to_open_converter(const std::vector<std::string> &arguments) {
    if (arguments.size() != 3 || arguments[0] != question) return {};
    for (const library &who : libraries()) {
        for (const conversion &pair : opened_pairs) {
            if (who.name != arguments[1] || names_of(pair) != arguments[2]) continue;
            auto start = std::chrono::steady_clock::now();
            opened(who, pair);
            std::chrono::duration<double, std::nano> taken =
                std::chrono::steady_clock::now() - start;
            return taken.count();
        }
    }
    return {};
}

} // namespace bench
